#pragma once

#include "support/logcatcher.h"
#include "widgets/askwidget.h"

#include <QObject>

#include <memory>
#include <optional>

class QComboBox;
class QPushButton;
class QTextEdit;

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

/// The base of the ask area's tests: a shown ask area in English with the keyboard in its edit, and both logs caught.
class AskTest : public QObject {
    Q_OBJECT

protected Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

protected:
    static QString characters(int count); ///< that many of the same letter

    template <typename Widget = QWidget>
    Widget *child(const char *name) const
    {
        return ask->findChild<Widget *>(QLatin1String(name));
    }
    QTextEdit *edit() const;
    QPushButton *button(const char *name) const;
    QComboBox *chooser(const char *name) const;
    QString written() const;
    QString counter() const;
    int cursor() const;
    void click(const char *name) const;
    bool isShown(const char *name) const { return child(name)->isVisible(); }
    qreal sendOpacity() const;

    std::unique_ptr<AskWidget> ask;

private:
    std::optional<LogCatcher> m_log;
};
