#pragma once

#include <QFont>
#include <QSize>
#include <QString>

#include <optional>

namespace tavro::aiassistant {

/// A text that is revealed from its first character on, and the size that the panel gives to what is shown of it.
///
/// What is shown are the first characters (UTF-16 units) and, behind them, the cursor where it is on. A paragraph ends
/// as in a text document; U+2028 ends a line within it. Each of the lines so ended takes as many rows as its unwrapped
/// width fills of a row, and the widest makes the width. Only the line at the end is measured when a character joins.
class TypedText {
public:
    static constexpr int rowWidth = 690; ///< px
    static constexpr QChar cursorMark = u'|';

    /// Begins again with @p text, of which nothing is shown, cursor off.
    void setText(const QString &text);

    void setFont(const QFont &font);

    /// Shows the first @p count characters; the text must have as many. Costs the characters that join, or all where
    /// @p count is less than before.
    void showFirst(int count);

    void showCursor(bool on);

    int count() const { return m_count; }
    bool cursorShown() const { return m_cursorShown; }
    QString shown() const;

    /// What a document that shows the text so far has to take in for one character more: empty for the second half of a
    /// CR LF, whose break is there already. There must be one more.
    QString nextInsertion() const;

    QSize size() const;
    int rowHeight() const;

    /// Rows that the last paragraph shown has in size().
    int lastParagraphRows() const;

    /// Rows that a whole @p paragraph has; U+2028 in it ends a line.
    int rowsOf(const QString &paragraph) const;

private:
    qreal widthOf(const QString &line) const;
    qreal lastLineWidth() const;
    void take(QChar character);
    void endLine();
    void forgetShown();

    QString m_text;
    QFont m_font;
    int m_count = 0;
    bool m_cursorShown = false;

    // What the ended lines come to.
    int m_rows = 0;
    int m_rowsOfParagraph = 0;
    qreal m_width = 0;

    QString m_lastLine;
    mutable std::optional<qreal> m_lastLineWidth;
};

} // namespace tavro::aiassistant
