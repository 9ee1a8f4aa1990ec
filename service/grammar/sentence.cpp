#include "grammar/sentence.h"

#include "grammar/clause.h"
#include "grammar/places.h"
#include "grammar/vocabulary.h"
#include "grammar/volumes.h"

#include <algorithm>

namespace tavro::assistantservice {

namespace {

const Vocabulary &words()
{
    return Vocabulary::instance();
}

bool isHangul(const Token &token)
{
    return token.text[0].script() == QChar::Script_Hangul;
}

// "layer 2" or "half volume" and nothing else: more likely a place or a volume than the name of a media item.
bool isOnlyDetails(const Tokens &tokens)
{
    Clause clause(tokens);
    Volume volume = takePercent(clause);
    takePlaces(clause);
    takeVolumeWords(clause, volume);
    return clause.rest().isEmpty();
}

bool isVerb(const Tokens &tokens, int index)
{
    const Vocabulary &v = words();
    for (const WordList *list : {&v.play, &v.weakPlay, &v.stop, &v.pause, &v.set, &v.mute, &v.unmute}) {
        if (list->lengthAt(tokens, index) > 0) {
            return true;
        }
    }
    return false;
}

struct Span {
    int from = 0;
    int length = 0;
    QString compact;
};

// All runs of tokens that could be a name, the longest first.
QVector<Span> spansOf(const Tokens &tokens)
{
    constexpr int longestName = 24;
    QVector<Span> spans;
    for (int from = 0; from < tokens.size(); ++from) {
        QString compact;
        for (int i = from; i < std::min(tokens.size(), from + longestName); ++i) {
            compact += nameKey(tokens[i].text).compact;
            if (i > from && tokens[i].kind != Token::Kind::Pause) {
                spans.append({from, i - from + 1, compact});
            }
        }
    }
    std::stable_sort(spans.begin(), spans.end(), [](const Span &a, const Span &b) { return a.length > b.length; });
    return spans;
}

bool opensRequest(const Tokens &tokens)
{
    static const WordList objectFirst(u"把|将");
    Clause clause(tokens);
    takePercent(clause);
    takePlaces(clause);
    for (int i = 0; i < clause.size(); ++i) {
        if (!clause.isFree(i)) {
            continue;
        }
        if (isVerb(tokens, i) || objectFirst.contains(tokens[i])) {
            return true;
        }
        if (!words().polite.contains(tokens[i]) && !words().preposition.contains(tokens[i])) {
            return false;
        }
    }
    return false;
}

bool namesItemAndPlace(const Tokens &tokens)
{
    Clause clause(tokens);
    Volume volume = takePercent(clause);
    const Places places = takePlaces(clause);
    takeVolumeWords(clause, volume);
    return !places.isEmpty() && !clause.rest().isEmpty();
}

int breakLength(const Tokens &tokens, int index)
{
    if (tokens[index].quoted) {
        return 0;
    }
    return tokens[index].kind == Token::Kind::Pause ? 1 : words().joiner.lengthAt(tokens, index);
}

int nextBreak(const Tokens &tokens, int from)
{
    int at = from;
    while (at < tokens.size() && breakLength(tokens, at) == 0) {
        ++at;
    }
    return at;
}

int skipBreaks(const Tokens &tokens, int from)
{
    int at = from;
    while (at < tokens.size() && breakLength(tokens, at) > 0) {
        at += breakLength(tokens, at);
    }
    return at;
}

} // namespace

void quoteWholeNames(Tokens &tokens, const MediaNames &names)
{
    const QVector<Span> spans = spansOf(tokens);
    QSet<QString> compacts;
    for (const Span &span : spans) {
        compacts.insert(span.compact);
    }
    const QSet<QString> whole = names.wholeNames(compacts);
    for (const Span &span : spans) {
        const auto begin = tokens.begin() + span.from;
        const bool known = whole.contains(span.compact)
            && std::none_of(begin, begin + span.length, [](const Token &token) { return token.quoted; });
        bool afterVerb = false;
        for (int i = 0; i < span.from && !afterVerb; ++i) {
            afterVerb = isVerb(tokens, i);
        }
        if (known && (afterVerb || !isVerb(tokens, span.from)) && !isOnlyDetails(tokens.mid(span.from, span.length))) {
            std::for_each(begin, begin + span.length, [](Token &token) { token.quoted = true; });
        }
    }
}

QVector<Tokens> splitClauses(const Tokens &tokens)
{
    QVector<Tokens> clauses;
    int begin = skipBreaks(tokens, 0);
    int at = nextBreak(tokens, begin);
    while (at < tokens.size()) {
        const int next = skipBreaks(tokens, at);
        const int end = nextBreak(tokens, next);
        const Tokens before = tokens.mid(begin, at - begin);
        const Tokens behind = tokens.mid(next, end - next);
        if (opensRequest(behind) || (namesItemAndPlace(before) && namesItemAndPlace(behind))) {
            clauses.append(before);
            begin = next;
        }
        at = end;
    }
    clauses.append(tokens.mid(begin));
    return clauses;
}

QVector<Tokens> tailsOf(const Tokens &tokens)
{
    QVector<Tokens> tails;
    for (int at = nextBreak(tokens, 0); at < tokens.size(); at = nextBreak(tokens, at)) {
        at = skipBreaks(tokens, at);
        tails.append(tokens.mid(at));
    }
    return tails;
}

bool isQuestion(const Tokens &tokens)
{
    bool opening = true;
    for (int i = 0; i < tokens.size(); ++i) {
        const int length = tokens[i].quoted ? 0 : words().question.lengthAt(tokens, i);
        if (length > 0 && (opening || mayStandAnywhere(tokens[i], length))) {
            return true;
        }
        opening = opening && (words().polite.contains(tokens[i]) || tokens[i].kind == Token::Kind::Pause);
    }
    return false;
}

bool mayStandAnywhere(const Token &first, int length)
{
    return isHangul(first) || (first.kind == Token::Kind::Han && length > 1);
}

QString writtenText(const QString &sentence, const Tokens &tokens)
{
    QString text;
    for (int i = 0; i < tokens.size(); ++i) {
        const bool apart = i > 0 && (tokens[i].begin != tokens[i - 1].end) && tokens[i].kind != Token::Kind::Han;
        text +=
            (apart ? QStringLiteral(" ") : QString()) + sentence.mid(tokens[i].begin, tokens[i].end - tokens[i].begin);
    }
    return text;
}

} // namespace tavro::assistantservice
