#include "grammar/verbs.h"

#include "grammar/sentence.h"
#include "grammar/vocabulary.h"
#include "grammar/volumes.h"
#include "grammar/wordruns.h"

#include <initializer_list>
#include <utility>

namespace tavro::assistantservice {

namespace {

const Vocabulary &words()
{
    return Vocabulary::instance();
}

// "雪山放第二层": the place right behind tells that a single sign is a verb and not a part of a name.
bool standsBeforePlace(const Clause &clause, int index, int length)
{
    return clause.tokens()[index].kind == Token::Kind::Han && clause.isUsed(index + length);
}

Verb findVerb(const Clause &clause, const WordList &list)
{
    for (int i = 0; i < clause.size(); ++i) {
        const int length = clause.freeLengthAt(list, i);
        if (length > 0
            && (mayStandAnywhere(clause.tokens()[i], length) || isLeading(clause, i)
                || standsBeforePlace(clause, i, length))) {
            return {i, length};
        }
    }
    return {};
}

// Of the words found, the first counts, and of two at one place the longer ("停止播放" before "停止").
FoundVerb firstOf(const Clause &clause, std::initializer_list<std::pair<VerbKind, const WordList *>> lists)
{
    FoundVerb first;
    for (const auto &[kind, list] : lists) {
        const Verb verb = findVerb(clause, *list);
        const bool earlier = first.kind == VerbKind::None || verb.index < first.verb.index;
        const bool longer = verb.index == first.verb.index && verb.length > first.verb.length;
        if (verb.index >= 0 && (earlier || longer)) {
            first = {kind, verb};
        }
    }
    return first;
}

// "Turn layer 2 off", "take harbour off layer 2".
FoundVerb findTurningOff(const Clause &clause)
{
    static const WordList beginning(u"turn|switch|take");
    static const WordList off(u"off");
    const Verb verb = findVerb(clause, beginning);
    const int particle = verb.index < 0 ? -1 : clause.find(off, verb.index + verb.length);
    return particle < 0 ? FoundVerb() : FoundVerb{VerbKind::Stop, verb, particle};
}

// "Undo the mute of layer 2", "取消第二层静音".
bool undoesMute(const Clause &clause)
{
    return clause.find(words().undo) >= 0;
}

FoundVerb findClearVerb(const Clause &clause)
{
    const Vocabulary &v = words();
    FoundVerb found = firstOf(clause,
                              {{VerbKind::Play, &v.play},
                               {VerbKind::Stop, &v.stop},
                               {VerbKind::Unsupported, &v.pause},
                               {VerbKind::Unmute, &v.unmute},
                               {VerbKind::Mute, &v.mute}});
    if (found.kind == VerbKind::Mute && undoesMute(clause)) {
        found.kind = VerbKind::Unmute;
    }
    return found;
}

// "The play", "this show" are things.
bool isNoun(const Clause &clause, int index)
{
    static const WordList articles(u"the|a|an|this|that|my|your|our|his|her|their");
    return index > 0 && clause.isFree(index - 1) && articles.contains(clause.tokens()[index - 1]);
}

} // namespace

int verbLengthAt(const Tokens &tokens, int index)
{
    const Vocabulary &v = words();
    return longestAt({&v.play, &v.weakPlay, &v.stop, &v.pause, &v.set, &v.mute, &v.unmute}, tokens, index);
}

bool isLeading(const Clause &clause, int index)
{
    if (isNoun(clause, index)) {
        return false;
    }
    for (int i = 0; i < index;) {
        const int length = clause.isFree(i)
            ? longestAt({&words().polite, &words().preposition, &words().negation, &words().filler}, clause.tokens(), i)
            : 1;
        if (length == 0 || clause.tokens()[i].quoted) {
            return false;
        }
        i += length;
    }
    return true;
}

FoundVerb findVerb(const Clause &clause, bool aboutVolume)
{
    const Vocabulary &v = words();
    const FoundVerb clear = findClearVerb(clause);
    if (clear.kind != VerbKind::None) {
        return clear;
    }
    if (aboutVolume) {
        const FoundVerb set = firstOf(clause, {{VerbKind::Set, &v.set}, {VerbKind::Set, &v.relative}});
        return set.kind != VerbKind::None ? set : firstOf(clause, {{VerbKind::WeakPlay, &v.weakPlay}});
    }
    const FoundVerb off = findTurningOff(clause);
    if (off.kind != VerbKind::None) {
        return off;
    }
    const FoundVerb play = firstOf(clause, {{VerbKind::WeakPlay, &v.weakPlay}});
    return play.kind != VerbKind::None ? play : firstOf(clause, {{VerbKind::Assign, &v.set}});
}

FoundVerb findPlayVerb(const Clause &clause)
{
    return firstOf(clause, {{VerbKind::Play, &words().play}, {VerbKind::WeakPlay, &words().weakPlay}});
}

bool setsBareNumber(Clause clause, const Places &places)
{
    const Verb verb = findVerb(clause, words().set);
    if (verb.index < 0 || places.isEmpty()) {
        return false;
    }
    Volume volume;
    clause.use(verb.index, verb.length);
    takeBareVolume(clause, volume);
    return volume.isSettled() && consistsOf({&words().filler, &words().polite, &words().preposition}, clause.rest());
}

bool isNegated(const Clause &clause, const Verb &verb)
{
    const Verb negation = findVerb(clause, words().negation);
    const bool hangul = negation.index >= 0 && clause.tokens()[negation.index].text[0].script() == QChar::Script_Hangul;
    return negation.index >= 0 && (negation.index < verb.index || hangul);
}

} // namespace tavro::assistantservice
