#include "grammar/wholenames.h"

#include "grammar/clause.h"
#include "grammar/korean.h"
#include "grammar/places.h"
#include "grammar/verbs.h"
#include "grammar/vocabulary.h"
#include "grammar/volumes.h"
#include "grammar/wordruns.h"

#include <algorithm>

namespace tavro::assistantservice {

namespace {

constexpr int longestName = 24;

const Vocabulary &words()
{
    return Vocabulary::instance();
}

struct Span {
    int from = 0;
    int length = 0;
    QString compact;
};

using Spans = QVector<Span>;

// "layer 2" or "half volume" and nothing else: more likely a place or a volume than the name of a media item.
bool isOnlyDetails(const Tokens &tokens)
{
    Clause clause(tokens);
    Volume volume = takePercent(clause);
    takePlaces(clause);
    takeVolumeWords(clause, volume);
    return clause.rest().isEmpty();
}

QString compactOf(const Tokens &tokens)
{
    QString compact;
    for (const Token &token : tokens) {
        compact += nameKey(token.text).compact;
    }
    return compact;
}

// A Korean name is found with its particle, too: "바다를" is "바다".
void appendSpans(const Tokens &tokens, int from, Spans &spans)
{
    QString compact;
    const int end = std::min(tokens.size(), from + longestName);
    for (int i = from; i < end && !nameKey(tokens[from].text).compact.isEmpty(); ++i) {
        const QString &text = tokens[i].text;
        const QString key = nameKey(text).compact;
        const QString bare = withoutParticle(text);
        if (bare != text) {
            spans.append({from, i - from + 1, compact + nameKey(bare).compact});
        }
        compact += key;
        if (!key.isEmpty()) {
            spans.append({from, i - from + 1, compact});
        }
    }
}

// Those of the spans that are whole names, the longest first.
Spans wholeNamesOf(Spans spans, const MediaNames &names)
{
    QSet<QString> compacts;
    for (const Span &span : spans) {
        compacts.insert(span.compact);
    }
    const QSet<QString> whole = names.wholeNames(compacts);
    const auto unknown = [&whole](const Span &span) { return !whole.contains(span.compact); };
    spans.erase(std::remove_if(spans.begin(), spans.end(), unknown), spans.end());
    std::stable_sort(spans.begin(), spans.end(), [](const Span &a, const Span &b) { return a.length > b.length; });
    return spans;
}

Tokens tokensOf(const Tokens &tokens, const Span &span)
{
    return tokens.mid(span.from, span.length);
}

bool isFree(const Tokens &tokens, const Span &span)
{
    const Tokens part = tokensOf(tokens, span);
    return std::none_of(part.begin(), part.end(), [](const Token &token) { return token.quoted; });
}

void quote(Tokens &tokens, const Span &span)
{
    const auto begin = tokens.begin() + span.from;
    std::for_each(begin, begin + span.length, [](Token &token) { token.quoted = true; });
}

bool hasVerbBefore(const Tokens &tokens, int index)
{
    for (int i = 0; i < index; ++i) {
        if (verbLengthAt(tokens, i) > 0) {
            return true;
        }
    }
    return false;
}

// "Stop layer 2", "stop all", "stop Harbour" are requests, also where an item is named so; "End Credits" is an item.
bool isRequest(const Tokens &tokens, const MediaNames &names)
{
    if (words().negation.lengthAt(tokens, 0) > 0) {
        return true;
    }
    const int verb = verbLengthAt(tokens, 0);
    if (verb == 0) {
        return false;
    }
    const Tokens object = trimmed(tokens.mid(verb));
    const QString compact = compactOf(object);
    return consistsOf({&words().everything, &words().pronoun, &words().layer, &words().volume}, object)
        || isOnlyDetails(object) || !names.wholeNames({compact}).isEmpty();
}

} // namespace

void quoteWholeNames(Tokens &tokens, const MediaNames &names)
{
    Spans spans;
    for (int from = 0; from < tokens.size(); ++from) {
        appendSpans(tokens, from, spans);
    }
    const auto isOneToken = [](const Span &span) { return span.length == 1; };
    spans.erase(std::remove_if(spans.begin(), spans.end(), isOneToken), spans.end());
    const Spans whole = wholeNamesOf(spans, names);
    for (const Span &span : whole) {
        const Tokens part = tokensOf(tokens, span);
        const bool request = !hasVerbBefore(tokens, span.from) && isRequest(part, names);
        if (isFree(tokens, span) && !request && !isOnlyDetails(part)) {
            quote(tokens, span);
        }
    }
}

bool quoteNameAt(Tokens &tokens, int from, const MediaNames &names)
{
    static const WordList openers(u"the|a|an|clip|video|file|item|视频|素材|图片");
    static const WordList article(u"a");
    Spans spans;
    for (int at = from; at < tokens.size(); ++at) {
        appendSpans(tokens, at, spans);
        if (!openers.contains(tokens[at])) {
            break;
        }
    }
    const Spans whole = wholeNamesOf(spans, names);
    for (const Span &span : whole) {
        const Tokens part = tokensOf(tokens, span);
        const bool small =
            span.length == 1 && (words().filler.contains(part.first()) || words().polite.contains(part.first()));
        if (isFree(tokens, span) && (!small || article.contains(part.first()))) {
            quote(tokens, span);
            return true;
        }
    }
    return false;
}

} // namespace tavro::assistantservice
