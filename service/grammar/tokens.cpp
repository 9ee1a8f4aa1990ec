#include "grammar/tokens.h"

#include "grammar/folding.h"

namespace tavro::assistantservice {

namespace {

const QString openingQuotes = QStringLiteral("\"“„«「『《");
const QString closingQuotes = QStringLiteral("\"”“»」』》");
const QString apostrophes = QStringLiteral("'’‘`");
const QString pauses = QStringLiteral(",;!?:。，；！？、：\n");

class Tokenizer {
public:
    explicit Tokenizer(const QString &sentence)
        : m_sentence(sentence)
    { }

    Tokens run()
    {
        while (m_at < m_sentence.size()) {
            takeOne();
        }
        return m_tokens;
    }

private:
    QChar at(int index) const { return index >= 0 && index < m_sentence.size() ? folded(m_sentence[index]) : QChar(); }

    static bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }
    static bool isLetter(QChar c) { return !isHan(c) && (c.isLetter() || c.isMark() || c.isSurrogate()); }

    void takeOne()
    {
        const QChar c = at(m_at);
        if (takeQuote(m_sentence[m_at])) {
            return;
        }
        const bool fraction = c == QLatin1Char('.') && isDigit(at(m_at + 1)) && !at(m_at - 1).isLetterOrNumber();
        if (isDigit(c) || fraction) {
            takeDigits();
        } else if (isHan(c)) {
            add(Token::Kind::Han, 1);
        } else if (isLetter(c)) {
            takeWord();
        } else {
            takeMark(c);
        }
    }

    bool takeQuote(QChar c)
    {
        const int opening = m_closing.isNull() ? openingQuotes.indexOf(c) : -1;
        if (c == m_closing) {
            m_closing = QChar();
        } else if (opening >= 0) {
            m_closing = closingQuotes[opening];
        } else {
            return false;
        }
        ++m_at;
        return true;
    }

    void takeDigits()
    {
        int end = m_at;
        while (isDigit(at(end))) {
            ++end;
        }
        if (at(end) == QLatin1Char('.') && isDigit(at(end + 1))) {
            ++end;
            while (isDigit(at(end))) {
                ++end;
            }
        }
        add(Token::Kind::Digits, end - m_at);
    }

    void takeWord()
    {
        int end = m_at;
        QString text;
        while (isLetter(at(end)) || (apostrophes.contains(at(end)) && isLetter(at(end + 1)))) {
            if (!apostrophes.contains(at(end))) {
                text += at(end);
            }
            ++end;
        }
        add(Token::Kind::Word, end - m_at);
        m_tokens.last().text = text;
    }

    void takeMark(QChar c)
    {
        const bool minus =
            (c == QLatin1Char('-') || c == QChar(0x2212)) && isDigit(at(m_at + 1)) && !at(m_at - 1).isLetterOrNumber();
        const bool fullStop = c == QLatin1Char('.') && !at(m_at + 1).isLetterOrNumber();
        if (c == QLatin1Char('%') || c == QLatin1Char('#') || minus) {
            add(Token::Kind::Sign, 1);
        } else if (fullStop || pauses.contains(c)) {
            add(Token::Kind::Pause, 1);
        } else if (c == QLatin1Char('&')) {
            add(Token::Kind::Word, 1);
            m_tokens.last().text = QStringLiteral("and");
        } else {
            ++m_at;
        }
    }

    void add(Token::Kind kind, int length)
    {
        Token token;
        token.kind = kind;
        token.begin = m_at;
        token.end = m_at + length;
        token.joined = !m_tokens.isEmpty() && m_tokens.last().end == m_at;
        token.quoted = !m_closing.isNull();
        for (int i = token.begin; i < token.end; ++i) {
            token.text += at(i);
        }
        m_tokens.append(token);
        m_at = token.end;
    }

    const QString &m_sentence;
    int m_at = 0;
    QChar m_closing;
    Tokens m_tokens;
};

} // namespace

Tokens tokenize(const QString &sentence)
{
    return Tokenizer(sentence).run();
}

} // namespace tavro::assistantservice
