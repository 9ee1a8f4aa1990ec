#include "grammar/sentence.h"

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

const Vocabulary &words()
{
    return Vocabulary::instance();
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
        if (verbLengthAt(tokens, i) > 0 || objectFirst.contains(tokens[i])) {
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

// "Layer 1 to 30 %", with or without "set".
bool setsVolume(const Tokens &tokens)
{
    Clause clause(tokens);
    Volume volume = takePercent(clause);
    const Places places = takePlaces(clause);
    takeVolumeWords(clause, volume);
    takeBareVolume(clause, volume);
    const Vocabulary &v = words();
    return !places.isEmpty() && volume.isSettled()
        && consistsOf({&v.set, &v.relative, &v.filler, &v.polite, &v.preposition, &v.after}, clause.rest());
}

// "Layer 2 of program 1" says all about one place: another such is not meant together with it.
bool namesWholePlace(const Tokens &tokens)
{
    Clause clause(tokens);
    const Places places = takePlaces(clause);
    return !places.layers.isEmpty() && (!places.programs.isEmpty() || !places.outputs.isEmpty());
}

// A sentence in which the places are found: "and" in "layers 1 and 2" is no break.
Clause withPlaces(const Tokens &tokens)
{
    Clause clause(tokens);
    takePercent(clause);
    takePlaces(clause);
    return clause;
}

int breakLength(const Clause &sentence, int index)
{
    const bool pause = sentence.isFree(index) && sentence.tokens()[index].kind == Token::Kind::Pause;
    return pause ? 1 : sentence.freeLengthAt(words().joiner, index);
}

int nextBreak(const Clause &sentence, int from)
{
    int at = from;
    while (at < sentence.size() && breakLength(sentence, at) == 0) {
        ++at;
    }
    return at;
}

int skipBreaks(const Clause &sentence, int from)
{
    int at = from;
    while (at < sentence.size() && breakLength(sentence, at) > 0) {
        at += breakLength(sentence, at);
    }
    return at;
}

} // namespace

QVector<Tokens> splitClauses(const Tokens &tokens)
{
    const Clause sentence = withPlaces(tokens);
    QVector<Tokens> clauses;
    int begin = skipBreaks(sentence, 0);
    int at = nextBreak(sentence, begin);
    while (at < tokens.size()) {
        const int next = skipBreaks(sentence, at);
        const int end = nextBreak(sentence, next);
        const Tokens before = tokens.mid(begin, at - begin);
        const Tokens behind = tokens.mid(next, end - next);
        if (opensRequest(behind) || (namesItemAndPlace(before) && namesItemAndPlace(behind))
            || (setsVolume(before) && setsVolume(behind)) || (namesWholePlace(before) && namesWholePlace(behind))) {
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
    const Clause sentence(tokens);
    QVector<Tokens> tails;
    for (int at = nextBreak(sentence, 0); at < tokens.size(); at = nextBreak(sentence, at)) {
        at = skipBreaks(sentence, at);
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
