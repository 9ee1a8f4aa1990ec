#pragma once

#include "controllerfixture.h"
#include "widgets/mainwidget.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <optional>

class QPushButton;
class QTextEdit;

/// The base of the panel's tests: a shown panel in English with a controller whose service answers by a script.
class PanelTest : public QObject {
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    static QByteArray pngBytes(const QColor &color);

    template <typename Widget = QWidget>
    Widget *child(const char *name) const
    {
        return panel->findChild<Widget *>(QLatin1String(name));
    }
    QTextEdit *edit() const;
    QPushButton *button(const char *name) const;
    bool isGenerating() const; ///< the user cannot ask, but stop

    /// The items from top to bottom: "Question: what" (the class without its ending, and its text).
    QStringList conversation() const;
    QWidget *item(int index) const;
    static QWidget *viewer(); ///< the picture viewer's window
    QPushButton *itemButton(int index, const char *name) const;

    /// Types a question with the keyboard and sends it with Return.
    void ask(const QString &question);
    void askForPicture(const QString &description);

    bool acceptText(const QString &reqId = QStringLiteral("r1")); ///< answers the text request that was just made
    bool acceptPicture();
    bool answerText(const QString &answer); ///< by a poll
    bool answerPicture(const QByteArray &path, const QColor &color);

    std::unique_ptr<ControllerFixture> f;
    std::unique_ptr<MainWidget> panel;

private:
    QList<QWidget *> items() const;
};
