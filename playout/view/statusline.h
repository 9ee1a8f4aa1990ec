#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

namespace tavro::playout {

class ElidedLabel;

/// The line along the bottom: role, runtime, service, last command and its result, and the button that shows the
/// assistant.
class StatusLine : public QFrame {
    Q_OBJECT

public:
    StatusLine();

    void showRole(const QString &role);
    void showRuntime(const QString &runtime, bool isGood);
    void showService(const QString &address, const QString &state, bool isGood);
    void showCommand(const QString &text, bool isGood);

    /// Checked while the assistant is to be seen. Hidden at first: there may be none.
    QPushButton &assistantButton() { return *m_assistant; }

private:
    QLabel *m_role = nullptr;
    QLabel *m_runtime = nullptr;
    QLabel *m_service = nullptr;
    ElidedLabel *m_command = nullptr;
    QPushButton *m_assistant = nullptr;
};

} // namespace tavro::playout
