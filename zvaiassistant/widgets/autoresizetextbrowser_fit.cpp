// How what is drawn is kept within the size.

#include "widgets/autoresizetextbrowser_p.h"

#include <QAbstractTextDocumentLayout>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace tavro::aiassistant {

namespace {

// A document scales heights that are asked for by the resolution of its paint device, in its own way.
qreal drawnPerAsked(QPaintDevice *device)
{
    constexpr qreal probe = 10000;
    QTextDocument document;
    document.setDocumentMargin(0);
    document.documentLayout()->setPaintDevice(device);
    QTextBlockFormat format;
    format.setLineHeight(probe, QTextBlockFormat::FixedHeight);
    QTextCursor(&document).setBlockFormat(format);
    return document.size().height() / probe;
}

} // namespace

void AutoResizeTextBrowser::Private::adoptFont()
{
    typed.setFont(q->font());
    fitAll();
    resize();
}

void AutoResizeTextBrowser::Private::fitAll()
{
    rowScale = drawnPerAsked(q->viewport());
    QTextCursor all(q->document());
    all.select(QTextCursor::Document);
    setRowHeight(all, typed.rowHeight());
    q->document()->size(); // lays out what a long text leaves for later
    for (QTextBlock paragraph = q->document()->begin(); paragraph.isValid(); paragraph = paragraph.next()) {
        if (paragraph.layout()->lineCount() > 1)
            fitParagraph(paragraph, typed.rowsOf(paragraph.text()));
    }
}

// Words that do not fill their lines can need more of them than the size has rows for. The lines of such a paragraph
// then move together.
bool AutoResizeTextBrowser::Private::fitParagraph(const QTextBlock &paragraph, int rows)
{
    const bool last = paragraph == q->document()->lastBlock();
    paragraph.layout()->setCacheEnabled(last && typingTimer.isActive());
    const int lines = std::max(paragraph.layout()->lineCount(), 1);
    const qreal height = qreal(typed.rowHeight()) * std::min(rows, lines) / lines;
    if (qFuzzyCompare(paragraph.blockFormat().lineHeight(), askedFor(height)))
        return false;
    setRowHeight(QTextCursor(paragraph), height);
    return true;
}

// Layouts count in 64ths of a pixel and cut off what is left: the rows together must not exceed their room.
qreal AutoResizeTextBrowser::Private::askedFor(qreal height) const
{
    return (std::floor(height * 64) + 0.5) / 64 / rowScale;
}

void AutoResizeTextBrowser::Private::setRowHeight(QTextCursor paragraphs, qreal height) const
{
    QTextBlockFormat rows;
    rows.setLineHeight(askedFor(height), QTextBlockFormat::FixedHeight);
    paragraphs.mergeBlockFormat(rows);
}

void AutoResizeTextBrowser::Private::updateFrom(int paragraph, int line)
{
    const QTextBlock first = q->document()->findBlockByNumber(paragraph);
    const QTextLayout *const lines = first.layout();
    qreal top = q->document()->documentLayout()->blockBoundingRect(first).top();
    if (line > 0 && line < lines->lineCount())
        top += lines->lineAt(line).y();
    QRect below = q->viewport()->rect();
    // The glyphs may reach a little above a line that is lower than they are.
    below.setTop(static_cast<int>(std::floor(top)) - typed.rowHeight());
    q->viewport()->update(below);
}

void AutoResizeTextBrowser::Private::resizeLater()
{
    if (resizePending)
        return;
    resizePending = true;
    QTimer::singleShot(0, q, [this] { resize(); });
}

void AutoResizeTextBrowser::Private::resize()
{
    resizePending = false;
    resizer(typed.size());
}

} // namespace tavro::aiassistant
