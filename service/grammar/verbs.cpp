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

Verb findVerb(const Clause &clause, const WordList &list)
{
    for (int i = 0; i < clause.size(); ++i) {
        const int length = clause.freeLengthAt(list, i);
        if (length > 0 && (mayStandAnywhere(clause.tokens()[i], length) || isLeading(clause, i))) {
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

} // namespace

bool isLeading(const Clause &clause, int index)
{
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
    const FoundVerb clear = firstOf(clause,
                                    {{VerbKind::Play, &v.play},
                                     {VerbKind::Stop, &v.stop},
                                     {VerbKind::Unsupported, &v.pause},
                                     {VerbKind::Unmute, &v.unmute},
                                     {VerbKind::Mute, &v.mute}});
    if (clear.kind != VerbKind::None) {
        return clear;
    }
    const FoundVerb set =
        aboutVolume ? firstOf(clause, {{VerbKind::Set, &v.set}, {VerbKind::Set, &v.relative}}) : FoundVerb();
    return set.kind != VerbKind::None ? set : firstOf(clause, {{VerbKind::WeakPlay, &v.weakPlay}});
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
