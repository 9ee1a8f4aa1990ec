#include "script/widgetsearch.h"

#include <QApplication>
#include <QVariant>
#include <QWidget>

namespace tavro::playout {

namespace {

QString nameOf(const QWidget &widget)
{
    if (!widget.objectName().isEmpty())
        return widget.objectName();
    return QString::fromLatin1(widget.metaObject()->className()).section(QStringLiteral("::"), -1);
}

} // namespace

QList<QWidget *> allWidgets(const QString &name)
{
    QList<QWidget *> found;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *const window : windows) {
        const QWidgetList widgets = QWidgetList{window} + window->findChildren<QWidget *>();
        for (QWidget *const widget : widgets) {
            // A dialog is a window of its own and a child of another.
            if (nameOf(*widget) == name && !found.contains(widget))
                found.append(widget);
        }
    }
    return found;
}

QList<QWidget *> visibleWidgets(const QString &name)
{
    QList<QWidget *> visible;
    const QList<QWidget *> all = allWidgets(name);
    for (QWidget *const widget : all) {
        if (widget->isVisible())
            visible.append(widget);
    }
    return visible;
}

QString shownText(const QWidget &widget)
{
    const QVariant text = widget.property("text");
    return (text.isValid() ? text : widget.property("plainText")).toString();
}

} // namespace tavro::playout
