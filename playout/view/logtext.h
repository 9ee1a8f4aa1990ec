#pragma once

#include <QPlainTextEdit>

class QColor;

namespace tavro::playout {

/// Lines of text to read, of which the last is in sight until the reader scrolls up, and again when he is back at the
/// end. Lines that go above leave what he reads where it is.
class LogText : public QPlainTextEdit {
    Q_OBJECT

public:
    LogText();

    int lines() const { return m_lines; }

    void addLine(const QString &text, const QColor &color);
    void dropFirstLine(); ///< there must be one
    void dropAll();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void showEnd();

    int m_lines = 0;
    bool m_follows = true;
};

} // namespace tavro::playout
