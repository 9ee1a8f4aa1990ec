#pragma once

#include "samplepanel.h"
#include "support/logcatcher.h"

#include <QObject>

#include <memory>
#include <optional>

/// The base of the tests for those who do not use the mouse, or do not see the panel: a panel with a question, an
/// answer, and an answer with two pictures.
class ConversationTest : public QObject {
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    template <typename Widget = QWidget>
    Widget *child(const char *name) const
    {
        return panel->child<Widget>(name);
    }

    /// The panel anew, in the language of that place in sampleTexts().
    void makePanel(std::size_t language);

    /// "copyButton" or the class of a widget without a name; of several in the window, with its number: "copyButton 2".
    QString nameOf(const QWidget *widget) const;

    std::unique_ptr<tavro::testsupport::SamplePanel> panel;

private:
    std::optional<tavro::testsupport::LogCatcher> m_log;
};
