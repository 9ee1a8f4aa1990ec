#include "openai/plaintext.h"

namespace tavro::assistantservice {

namespace {

// Scripts of Persia and India need these two within words, and emoji are joined by the second.
bool joins(uint c)
{
    return c == 0x200c || c == 0x200d;
}

bool isShown(uint c)
{
    switch (QChar::category(c)) {
    case QChar::Other_Control:
        return c == '\n' || c == '\t';
    case QChar::Other_Format:
        return joins(c);
    default:
        return !QChar::isNonCharacter(c);
    }
}

uint withPlainBreak(uint c)
{
    const bool breaks = c == '\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
    return breaks ? uint('\n') : c;
}

} // namespace

QString plainText(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const bool pair = c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (c.isSurrogate() && !pair) {
            result += QChar(QChar::ReplacementCharacter);
        } else if (pair) {
            if (isShown(QChar::surrogateToUcs4(c, text[i + 1]))) {
                result += text.midRef(i, 2);
            }
            ++i;
        } else if (c != QLatin1Char('\r') || i + 1 >= text.size() || text[i + 1] != QLatin1Char('\n')) {
            const uint plain = withPlainBreak(c.unicode());
            result += isShown(plain) ? QString(QChar(plain)) : QString();
        }
    }
    return result;
}

QString plainLine(const QString &text, int longest)
{
    // Much longer ones need not be looked at to the end.
    const QString line = plainText(text.left(8 * longest)).simplified();
    return line.size() <= longest ? line : clipped(line, longest - 1) + QChar(0x2026);
}

QString clipped(const QString &text, int longest)
{
    if (text.size() <= longest) {
        return text;
    }
    return text.left(longest > 0 && text[longest - 1].isHighSurrogate() ? longest - 1 : longest);
}

} // namespace tavro::assistantservice
