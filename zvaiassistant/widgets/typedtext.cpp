#include "widgets/typedtext.h"

#include <QFontMetrics>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace tavro::aiassistant {

namespace {

// Twice a text document's own margin. With it a line that fits by its measure is never wrapped for want of a pixel.
constexpr qreal margins = 8;

// The marks of a document's frames, which it takes for the end of a paragraph too.
constexpr ushort beginningOfFrame = 0xfdd0;
constexpr ushort endOfFrame = 0xfdd1;

bool endsParagraph(QChar character)
{
    switch (character.unicode()) {
    case u'\n':
    case u'\r':
    case QChar::ParagraphSeparator:
    case beginningOfFrame:
    case endOfFrame:
        return true;
    default:
        return false;
    }
}

bool joinsBreak(const QString &text, int position)
{
    return position > 0 && text.at(position) == u'\n' && text.at(position - 1) == u'\r';
}

int rowsOfWidth(qreal width)
{
    return width < TypedText::rowWidth ? 1 : static_cast<int>(std::ceil(width / TypedText::rowWidth));
}

} // namespace

void TypedText::setText(const QString &text)
{
    m_text = text;
    m_cursorShown = false;
    forgetShown();
}

void TypedText::setFont(const QFont &font)
{
    m_font = font;
    const int count = m_count;
    forgetShown();
    showFirst(count);
}

void TypedText::showFirst(int count)
{
    if (count < m_count)
        forgetShown();
    for (; m_count < count; ++m_count) {
        if (!joinsBreak(m_text, m_count))
            take(m_text.at(m_count));
    }
}

void TypedText::showCursor(bool on)
{
    if (on == m_cursorShown)
        return;
    m_cursorShown = on;
    m_lastLineWidth.reset();
}

QString TypedText::shown() const
{
    QString text = m_text.left(m_count);
    if (m_cursorShown)
        text.append(cursorMark);
    return text;
}

QString TypedText::nextInsertion() const
{
    return joinsBreak(m_text, m_count) ? QString() : QString(m_text.at(m_count));
}

QSize TypedText::size() const
{
    const qreal width = std::min<qreal>(std::max(m_width, lastLineWidth()), rowWidth);
    return {static_cast<int>(width), (m_rows + rowsOfWidth(lastLineWidth())) * rowHeight()};
}

int TypedText::rowHeight() const
{
    return QFontMetrics(m_font).lineSpacing();
}

int TypedText::lastParagraphRows() const
{
    return m_rowsOfParagraph + rowsOfWidth(lastLineWidth());
}

int TypedText::rowsOf(const QString &paragraph) const
{
    const QStringList lines = paragraph.split(QChar::LineSeparator);
    int rows = 0;
    for (const QString &line : lines)
        rows += rowsOfWidth(widthOf(line));
    return rows;
}

qreal TypedText::widthOf(const QString &line) const
{
    // A document gives its text with plain blanks for the unbreakable ones.
    QString plain = line;
    plain.replace(QChar::Nbsp, u' ');
    QTextLayout layout(plain, m_font);
    QTextOption unwrapped;
    unwrapped.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(unwrapped);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    return layout.maximumWidth() + margins;
}

qreal TypedText::lastLineWidth() const
{
    if (!m_lastLineWidth)
        m_lastLineWidth = widthOf(m_cursorShown ? m_lastLine + cursorMark : m_lastLine);
    return *m_lastLineWidth;
}

void TypedText::take(QChar character)
{
    if (endsParagraph(character)) {
        endLine();
        m_rowsOfParagraph = 0;
    } else if (character == QChar::LineSeparator) {
        endLine();
    } else {
        m_lastLine.append(character);
        m_lastLineWidth.reset();
    }
}

void TypedText::endLine()
{
    const qreal width = widthOf(m_lastLine);
    m_rows += rowsOfWidth(width);
    m_rowsOfParagraph += rowsOfWidth(width);
    m_width = std::max(m_width, width);
    m_lastLine.clear();
    m_lastLineWidth.reset();
}

void TypedText::forgetShown()
{
    m_count = 0;
    m_rows = 0;
    m_rowsOfParagraph = 0;
    m_width = 0;
    m_lastLine.clear();
    m_lastLineWidth.reset();
}

} // namespace tavro::aiassistant
