#include "grammar/numberwords.h"

#include "grammar/korean.h"
#include "grammar/wordlist.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <optional>

namespace tavro::assistantservice {

namespace {

struct WordValue {
    int value = 0;
    bool ordinal = false;
};

void addWords(QHash<QString, WordValue> &table, const char16_t *words, int first, int step, bool ordinal)
{
    int value = first;
    const QStringList groups = QString::fromUtf16(words).split(QLatin1Char(' '));
    for (const QString &group : groups) {
        const QStringList spellings = group.split(QLatin1Char('/'));
        for (const QString &word : spellings) {
            table.insert(word, {value, ordinal});
        }
        value += step;
    }
}

QHash<QString, WordValue> makeTable()
{
    QHash<QString, WordValue> table;
    addWords(table,
             u"zero one two three four five six seven eight nine ten eleven twelve thirteen fourteen fifteen sixteen "
             u"seventeen eighteen nineteen",
             0, 1, false);
    addWords(table, u"twenty thirty forty/fourty fifty sixty seventy eighty ninety hundred", 20, 10, false);
    addWords(table,
             u"zeroth first second third fourth fifth sixth seventh eighth ninth tenth eleventh twelfth thirteenth "
             u"fourteenth fifteenth sixteenth seventeenth eighteenth nineteenth twentieth",
             0, 1, true);
    addWords(table,
             u"ноль/нулевой/нулевом один/одна/одно/одном два/две/двух три/трех четыре/четырех пять/пяти шесть/шести "
             u"семь/семи восемь/восьми девять/девяти десять/десяти",
             0, 1, false);
    addWords(table, u"двадцать тридцать сорок пятьдесят шестьдесят семьдесят восемьдесят девяносто сто", 20, 10, false);
    addWords(table,
             u"первый/первом/первая/первой/первую/первое/первого второй/втором/вторая/вторую/второе/второго "
             u"третий/третьем/третья/третьей/третью/третье/третьего четвертый/четвертом/четвертая/четвертой/четвертую "
             u"пятый/пятом/пятая/пятой/пятую шестой/шестом/шестая/шестую",
             1, 1, true);
    addWords(table, u"첫 두 세 네 다섯 여섯", 1, 1, true);
    addWords(table, u"첫번째 두번째 세번째 네번째 다섯번째 여섯번째", 1, 1, true);
    return table;
}

const QHash<QString, WordValue> &wordTable()
{
    static const QHash<QString, WordValue> table = makeTable();
    return table;
}

const WordList &minusWords()
{
    static const WordList words(u"minus|negative|负|минус|마이너스");
    return words;
}

const WordList &ordinalSuffixes()
{
    static const WordList words(u"st|nd|rd|th|번째|й|м|ый|ом|ой|я|ая|ю|ую|го");
    return words;
}

int hanDigit(QChar c)
{
    static const QString digits = QStringLiteral("零一二三四五六七八九");
    if (c == QChar(u'两')) {
        return 2;
    }
    return c == QChar(u'〇') ? 0 : digits.indexOf(c);
}

int hanUnit(QChar c)
{
    return c == QChar(u'十') ? 10 : c == QChar(u'百') ? 100 : 0;
}

// "十二" is 12, "三十" 30, "一百二十" and "一百二" 120, "一百零二" 102, "二〇" 20.
Number hanNumberAt(const Tokens &tokens, int from)
{
    Number number;
    int pending = -1;
    bool afterHundred = false;
    bool afterZero = false;
    for (int i = from; i < tokens.size() && tokens[i].kind == Token::Kind::Han; ++i) {
        const QChar c = tokens[i].text[0];
        if (const int unit = hanUnit(c)) {
            number.value += unit * (pending < 0 ? 1 : pending);
            pending = -1;
            afterHundred = unit == 100;
            afterZero = false;
        } else if (hanDigit(c) >= 0) {
            afterZero = afterZero || hanDigit(c) == 0;
            pending = pending > 0 ? pending * 10 + hanDigit(c) : hanDigit(c);
        } else {
            break;
        }
        ++number.length;
        if (number.value > 1e6 || pending > 1000000) {
            break;
        }
    }
    const bool tens = afterHundred && !afterZero && pending < 10;
    number.value += std::max(pending, 0) * (tens ? 10 : 1);
    return number;
}

Number ordinalHanAt(const Tokens &tokens, int from)
{
    if (tokens[from].text != QStringLiteral("第") || from + 1 >= tokens.size()) {
        return {};
    }
    Number number =
        tokens[from + 1].kind == Token::Kind::Han ? hanNumberAt(tokens, from + 1) : numberAt(tokens, from + 1);
    if (number.length > 0) {
        ++number.length;
        number.ordinal = true;
    }
    return number;
}

Number digitsAt(const Tokens &tokens, int from)
{
    Number number{1, tokens[from].text.toDouble(), false, tokens[from].text.contains(QLatin1Char('.'))};
    const int next = from + 1;
    if (next < tokens.size() && tokens[next].joined && ordinalSuffixes().contains(tokens[next])) {
        ++number.length;
        number.ordinal = true;
    }
    return number;
}

std::optional<WordValue> wordValue(const Token &token)
{
    const auto word = wordTable().constFind(token.text);
    if (word != wordTable().constEnd()) {
        return *word;
    }
    const int korean = isHangul(token) ? sinoKoreanNumber(token.text) : -1;
    return korean < 0 ? std::nullopt : std::make_optional(WordValue{korean, false});
}

// "Hundred" goes on from "two", what is below a hundred from "two hundred", and "five" from "twenty".
bool goesOn(const Number &number, int next)
{
    if (next == 100) {
        return number.value >= 1 && number.value < 10;
    }
    const double belowHundred = std::fmod(number.value, 100);
    if (number.value >= 100 && belowHundred == 0) {
        return next > 0 && next < 100;
    }
    return next > 0 && next < 10 && belowHundred >= 20 && std::fmod(number.value, 10) == 0;
}

// "twenty five", "one hundred", "a hundred and twenty".
Number wordNumberAt(const Tokens &tokens, int from)
{
    static const WordList conjunction(u"and");
    Number number;
    for (int i = from; i < tokens.size() && !number.ordinal; ++i) {
        const bool joined = number.value >= 100 && conjunction.contains(tokens[i]) && i + 1 < tokens.size();
        const std::optional<WordValue> word = wordValue(tokens[joined ? i + 1 : i]);
        if (!word || (number.length > 0 && !goesOn(number, word->value))) {
            break;
        }
        number.value = word->value == 100 && number.length > 0 ? number.value * 100 : number.value + word->value;
        number.ordinal = word->ordinal;
        i += joined ? 1 : 0;
        number.length = i - from + 1;
    }
    return number;
}

Number positiveNumberAt(const Tokens &tokens, int from)
{
    switch (tokens[from].kind) {
    case Token::Kind::Digits:
        return digitsAt(tokens, from);
    case Token::Kind::Han: {
        const Number ordinal = ordinalHanAt(tokens, from);
        return ordinal.length > 0 ? ordinal : hanNumberAt(tokens, from);
    }
    case Token::Kind::Word:
        return wordNumberAt(tokens, from);
    default:
        return {};
    }
}

} // namespace

bool Number::isWhole() const
{
    return value == std::floor(value) && std::abs(value) < 2147483648.0;
}

Number numberAt(const Tokens &tokens, int from)
{
    const Token &first = tokens[from];
    const bool minus =
        first.text == QLatin1String("-") || first.text == QStringLiteral("\u2212") || minusWords().contains(first);
    if (!minus) {
        return positiveNumberAt(tokens, from);
    }
    if (from + 1 >= tokens.size()) {
        return {};
    }
    Number number = positiveNumberAt(tokens, from + 1);
    if (number.length > 0) {
        number.value = -number.value;
        ++number.length;
    }
    return number;
}

QString digitsForWord(const QString &word)
{
    if (word.size() == 1 && hanDigit(word[0]) >= 0) {
        return QString::number(hanDigit(word[0]));
    }
    const auto found = wordTable().constFind(word);
    const bool cardinal = found != wordTable().constEnd() && !found->ordinal;
    return cardinal ? QString::number(found->value) : word;
}

} // namespace tavro::assistantservice
