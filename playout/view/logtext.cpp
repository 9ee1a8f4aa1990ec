#include "view/logtext.h"

#include <QScrollBar>
#include <QTextBlock>

namespace tavro::playout {

LogText::LogText()
{
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    setFrameShape(QFrame::NoFrame);
    QScrollBar *const bar = verticalScrollBar();
    // Only the reader's own scrolling counts; Qt moves the bar for other reasons too.
    connect(bar, &QScrollBar::actionTriggered, this,
            [this, bar] { m_follows = bar->sliderPosition() >= bar->maximum(); });
}

void LogText::addLine(const QString &text, const QColor &color)
{
    QTextCharFormat format;
    format.setForeground(color);
    const int position = verticalScrollBar()->value();
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    if (m_lines > 0)
        end.insertBlock();
    end.insertText(text, format);
    ++m_lines;
    if (m_follows)
        showEnd();
    else
        verticalScrollBar()->setValue(position);
}

void LogText::dropFirstLine()
{
    const int position = verticalScrollBar()->value();
    const int rows = document()->firstBlock().lineCount();
    QTextCursor first(document());
    if (m_lines > 1)
        first.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor);
    else
        first.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    first.removeSelectedText();
    --m_lines;
    if (m_follows)
        showEnd();
    else
        verticalScrollBar()->setValue(position - rows);
}

void LogText::dropAll()
{
    clear();
    m_lines = 0;
    m_follows = true;
}

void LogText::showEnd()
{
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void LogText::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
    if (m_follows)
        showEnd();
}

void LogText::showEvent(QShowEvent *event)
{
    QPlainTextEdit::showEvent(event);
    if (m_follows)
        showEnd();
}

} // namespace tavro::playout
