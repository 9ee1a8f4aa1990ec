#include "grammar/wordlist.h"

#include <algorithm>

namespace tavro::assistantservice {

namespace {

const QLatin1Char star('*');

QStringList words(const QString &phrase)
{
    const Tokens tokens = tokenize(phrase);
    QStringList texts;
    for (const Token &token : tokens) {
        texts.append(token.text);
    }
    if (phrase.endsWith(star)) {
        texts.last() += star;
    }
    return texts;
}

bool matches(const QString &word, const Token &token)
{
    if (token.kind == Token::Kind::Pause) {
        return false;
    }
    return word.endsWith(star) ? token.text.startsWith(word.leftRef(word.size() - 1)) : token.text == word;
}

} // namespace

WordList::WordList(const char16_t *phrases)
{
    const QStringList all = QString::fromUtf16(phrases).split(QLatin1Char('|'), Qt::SkipEmptyParts);
    for (const QString &phrase : all) {
        const QStringList parts = words(phrase);
        if (parts.first().endsWith(star)) {
            m_openPhrases.append(parts);
        } else {
            m_phrases[parts.first()].append(parts);
        }
    }
}

int WordList::length(const QStringList &phrase, const Tokens &tokens, int from, int end) const
{
    if (from + phrase.size() > end) {
        return 0;
    }
    for (int i = 0; i < phrase.size(); ++i) {
        if (!matches(phrase[i], tokens[from + i])) {
            return 0;
        }
    }
    return phrase.size();
}

int WordList::lengthAt(const Tokens &tokens, int from, int end) const
{
    int longest = 0;
    for (const QStringList &phrase : m_phrases.value(tokens[from].text)) {
        longest = std::max(longest, length(phrase, tokens, from, end));
    }
    for (const QStringList &phrase : m_openPhrases) {
        longest = std::max(longest, length(phrase, tokens, from, end));
    }
    return longest;
}

bool WordList::contains(const Token &token) const
{
    return lengthAt({token}, 0) == 1;
}

bool WordList::occursIn(const Tokens &tokens) const
{
    for (int i = 0; i < tokens.size(); ++i) {
        if (lengthAt(tokens, i) > 0) {
            return true;
        }
    }
    return false;
}

} // namespace tavro::assistantservice
