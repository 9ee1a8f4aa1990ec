#pragma once

#include <QList>
#include <QString>

class QWidget;

namespace tavro::playout {

/// All visible widgets of the program that have the name @p name, in the order of their making. The name of a widget is
/// its object name, or where it has none its class without the namespace.
QList<QWidget *> visibleWidgets(const QString &name);

/// The same with the hidden ones.
QList<QWidget *> allWidgets(const QString &name);

/// What a widget shows as text: a label, a button, an edit. Null where it shows none.
QString shownText(const QWidget &widget);

} // namespace tavro::playout
