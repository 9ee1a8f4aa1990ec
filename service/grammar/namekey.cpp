#include "grammar/namekey.h"

#include "grammar/folding.h"
#include "grammar/numberwords.h"

namespace tavro::assistantservice {

namespace {

QString withoutLeadingZeros(const QString &digits)
{
    int zeros = 0;
    while (zeros + 1 < digits.size() && digits[zeros] == QLatin1Char('0')) {
        ++zeros;
    }
    return digits.mid(zeros);
}

void addWord(NameKey &key, QString &word, SignClass wordClass)
{
    if (word.isEmpty()) {
        return;
    }
    const QString plain = wordClass == SignClass::Digit ? withoutLeadingZeros(word) : digitsForWord(word);
    key.words.append(plain);
    key.compact += plain;
    word.clear();
}

bool isApostrophe(QChar c)
{
    return c == QLatin1Char('\'') || c == QChar(0x2019);
}

QChar keyed(QChar c)
{
    const int digit = isHan(c) ? QStringLiteral("零一二三四五六七八九").indexOf(c) : -1;
    return digit >= 0 ? QChar(u'0' + digit) : c;
}

} // namespace

SignClass signClassOf(QChar c)
{
    if (c >= QLatin1Char('0') && c <= QLatin1Char('9')) {
        return SignClass::Digit;
    }
    if (isHan(c)) {
        return SignClass::Han;
    }
    return c.isLetterOrNumber() || c.isMark() || c.isSurrogate() ? SignClass::Letter : SignClass::None;
}

NameKey nameKey(const QString &name)
{
    NameKey key;
    QString word;
    SignClass wordClass = SignClass::None;
    for (const QChar original : name) {
        const QChar c = keyed(folded(original));
        const SignClass current = c == QLatin1Char('&') ? SignClass::None : signClassOf(c);
        if (isApostrophe(c)) {
            continue;
        }
        if (current != wordClass) {
            addWord(key, word, wordClass);
            wordClass = current;
        }
        if (c == QLatin1Char('&')) {
            word = QStringLiteral("and");
            addWord(key, word, SignClass::Letter);
        } else if (current != SignClass::None) {
            word += c;
        }
    }
    addWord(key, word, wordClass);
    return key;
}

} // namespace tavro::assistantservice
