#pragma once

#include <QFrame>

class QPlainTextEdit;

namespace tavro::playout {

class HostTheme;

/// What the assistant's commands came to, and what happened besides, a line each. What is not well stands out.
class LogView : public QFrame {
    Q_OBJECT

public:
    explicit LogView(const HostTheme &theme);

    void addDone(const QString &text);
    void addRefused(const QString &text);
    void addRemark(const QString &text, bool isGood);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void showLast();
    void add(const QString &text, const QString &color);

    QPlainTextEdit *m_lines = nullptr;
    const QString m_normal;
    const QString m_alert;
};

} // namespace tavro::playout
