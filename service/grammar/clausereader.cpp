#include "grammar/clausereader.h"

#include "grammar/sentence.h"
#include "grammar/vocabulary.h"

#include <algorithm>
#include <initializer_list>

namespace tavro::assistantservice {

namespace {

const Vocabulary &words()
{
    return Vocabulary::instance();
}

using Lists = std::initializer_list<const WordList *>;

int longestAt(Lists lists, const Tokens &tokens, int index)
{
    int longest = 0;
    for (const WordList *list : lists) {
        longest = std::max(longest, list->lengthAt(tokens, index));
    }
    return longest;
}

bool consistsOf(Lists lists, const Tokens &tokens)
{
    for (int i = 0; i < tokens.size();) {
        const int length = tokens[i].kind == Token::Kind::Pause ? 1 : longestAt(lists, tokens, i);
        if (length == 0 || tokens[i].quoted) {
            return false;
        }
        i += length;
    }
    return true;
}

// True where nothing of weight stands before: a verb there is the request's verb.
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

struct Verb {
    int index = -1;
    int length = 0;
};

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

enum class VerbKind { None, Play, WeakPlay, Stop, Unsupported, Unmute, Mute, Set };

struct Found {
    VerbKind kind = VerbKind::None;
    Verb verb;
};

// Of the words found, the first counts, and of two at one place the longer ("停止播放" before "停止").
Found firstOf(const Clause &clause, std::initializer_list<std::pair<VerbKind, const WordList *>> lists)
{
    Found first;
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

Found findVerb(const Clause &clause, bool aboutVolume)
{
    const Vocabulary &v = words();
    const Found clear = firstOf(clause,
                                {{VerbKind::Play, &v.play},
                                 {VerbKind::Stop, &v.stop},
                                 {VerbKind::Unsupported, &v.pause},
                                 {VerbKind::Unmute, &v.unmute},
                                 {VerbKind::Mute, &v.mute}});
    if (clear.kind != VerbKind::None) {
        return clear;
    }
    const Found set = aboutVolume ? firstOf(clause, {{VerbKind::Set, &v.set}, {VerbKind::Set, &v.relative}}) : Found();
    return set.kind != VerbKind::None ? set : firstOf(clause, {{VerbKind::WeakPlay, &v.weakPlay}});
}

// "Set layer 2 to 30": a place, a number and nothing else.
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

// Drops words like "the", "clip", "的" from both ends.
Tokens trimmed(Tokens tokens)
{
    const WordList &filler = words().filler;
    int length = 1;
    while (!tokens.isEmpty() && length > 0) {
        length = tokens.first().quoted ? 0 : filler.lengthAt(tokens, 0);
        tokens = tokens.mid(length);
    }
    for (bool dropped = true; dropped;) {
        dropped = false;
        for (int from = std::max(0, tokens.size() - 4); from < tokens.size() && !dropped; ++from) {
            if (!tokens[from].quoted && filler.lengthAt(tokens, from) == tokens.size() - from) {
                tokens = tokens.mid(0, from);
                dropped = true;
            }
        }
    }
    return tokens;
}

Tokens withoutFillers(const Tokens &tokens)
{
    Tokens kept;
    for (int i = 0; i < tokens.size();) {
        const int length = tokens[i].quoted ? 0 : words().filler.lengthAt(tokens, i);
        if (length == 0) {
            kept.append(tokens[i]);
        }
        i += std::max(1, length);
    }
    return kept;
}

Tokens withoutPauses(const Tokens &tokens)
{
    Tokens kept;
    std::copy_if(tokens.begin(), tokens.end(), std::back_inserter(kept),
                 [](const Token &token) { return token.kind != Token::Kind::Pause; });
    return kept;
}

Tokens quotedOnly(const Tokens &tokens)
{
    Tokens kept;
    std::copy_if(tokens.begin(), tokens.end(), std::back_inserter(kept),
                 [](const Token &token) { return token.quoted; });
    return kept;
}

bool meansGeneratedPicture(const Tokens &rest)
{
    static const WordList madeHere(
        u"generated|generate|drew|drawn|painted|生成|画好|сгенерированн*|нарисованн*|созданн*|생성*");
    const Vocabulary &v = words();
    return !rest.isEmpty() && consistsOf({&v.generated, &v.picture, &v.filler, &v.pronoun, &v.polite}, rest)
        && (v.picture.occursIn(rest) || madeHere.occursIn(rest));
}

void checkDetails(const Places &places, const Volume &volume, ClauseMeaning &meaning)
{
    if (!places.wrongNumber.isEmpty()) {
        meaning.problem = Problem::WrongPlace;
        meaning.phrase = places.wrongNumber;
    } else if (!volume.wrong.isEmpty()) {
        meaning.problem = Problem::WrongVolume;
        meaning.phrase = volume.wrong;
    } else if (volume.relative) {
        meaning.problem = Problem::RelativeVolume;
    }
}

ClauseMeaning failing(Problem problem)
{
    ClauseMeaning meaning;
    meaning.understood = true;
    meaning.problem = problem;
    return meaning;
}

} // namespace

ClauseReader::ClauseReader(const QString &sentence, const MediaNames &names)
    : m_sentence(sentence)
    , m_names(names)
{ }

ClauseMeaning ClauseReader::read(const Tokens &tokens, bool inherited) const
{
    Clause clause(tokens);
    Volume volume = takePercent(clause);
    const Places places = takePlaces(clause);
    const bool aboutVolume = volume.mentioned || clause.find(words().volume) >= 0 || clause.find(words().relative) >= 0;
    const Found found = findVerb(clause, aboutVolume || setsBareNumber(clause, places));
    if (found.kind == VerbKind::None) {
        return readWithoutVerb(clause, places, volume, inherited);
    }
    const bool negated = isNegated(clause, found.verb);
    const int verbEnd = found.verb.index + found.verb.length;
    if (isLeading(clause, found.verb.index)) {
        clause.use(0, found.verb.index);
    }
    if (found.kind != VerbKind::Mute && found.kind != VerbKind::Set) {
        clause.use(found.verb.index, found.verb.length);
    }
    ClauseMeaning meaning;
    switch (found.kind) {
    case VerbKind::Play:
    case VerbKind::WeakPlay:
        if (verbEnd < clause.size()) {
            clause.useFrom(words().after, verbEnd);
        }
        meaning = readPlay(clause, places, volume, found.kind == VerbKind::Play);
        break;
    case VerbKind::Stop:
        meaning = readStop(clause, places, volume);
        break;
    case VerbKind::Unsupported:
        meaning = failing(Problem::Unsupported);
        break;
    default:
        meaning = readVolume(clause, places, volume);
        break;
    }
    return meaning.understood && negated ? failing(Problem::Negated) : meaning;
}

ClauseMeaning ClauseReader::readPlay(Clause &clause, const Places &places, Volume &volume, bool certain) const
{
    takeVolumeWords(clause, volume);
    ClauseMeaning meaning;
    meaning.intent.places = places;
    meaning.intent.volume = volume.value;
    chooseMedia(clause.rest(), meaning);
    const bool unknown = meaning.problem == Problem::UnknownMedia || meaning.problem == Problem::NoMedia;
    meaning.understood = certain || !unknown || !places.isEmpty() || !places.wrongNumber.isEmpty();
    if (meaning.problem == Problem::None) {
        checkDetails(places, volume, meaning);
    }
    return meaning;
}

ClauseMeaning ClauseReader::readStop(Clause &clause, const Places &places, Volume &volume) const
{
    takeVolumeWords(clause, volume);
    ClauseMeaning meaning;
    Intent &intent = meaning.intent;
    intent.places = places;
    intent.action = volume.mentioned ? Intent::Action::SetVolume : Intent::Action::Stop;
    intent.volume = volume.mentioned ? std::optional<double>(0.0) : std::nullopt;
    const bool everything = clause.find(words().everything) >= 0;
    intent.everyLayer = places.layers.isEmpty() && (everything || !places.isEmpty());
    const Tokens named = trimmed(withoutPauses(clause.rest()));
    const bool other = !everything && !named.isEmpty()
        && !consistsOf({&words().layer, &words().pronoun, &words().generated}, named)
        && m_names.find(writtenText(m_sentence, named)).found.isEmpty();
    meaning.understood = !places.isEmpty() || !places.wrongNumber.isEmpty() || !other;
    checkDetails(places, volume, meaning);
    if (meaning.problem == Problem::None && places.layers.isEmpty() && !intent.everyLayer) {
        meaning.problem = Problem::NoLayer;
    }
    return meaning;
}

ClauseMeaning ClauseReader::readVolume(Clause &clause, const Places &places, Volume &volume) const
{
    takeVolumeWords(clause, volume);
    takeBareVolume(clause, volume);
    volume.relative =
        volume.relative || (!volume.value && volume.wrong.isEmpty() && clause.find(words().relative) >= 0);
    ClauseMeaning meaning;
    meaning.understood = volume.mentioned || !places.isEmpty();
    Intent &intent = meaning.intent;
    intent.action = Intent::Action::SetVolume;
    intent.places = places;
    intent.volume = volume.value;
    intent.everyLayer = places.layers.isEmpty() && (clause.find(words().everything) >= 0 || !places.isEmpty());
    checkDetails(places, volume, meaning);
    if (meaning.problem == Problem::None && !volume.value) {
        meaning.problem = Problem::NoVolume;
    } else if (meaning.problem == Problem::None && places.layers.isEmpty() && !intent.everyLayer) {
        meaning.problem = Problem::NoLayer;
    }
    return meaning;
}

// "Harbour on layer 2", "layer 2 volume 50 %", and what follows a play request: "and sunset on layer 3".
ClauseMeaning ClauseReader::readWithoutVerb(Clause &clause, const Places &places, Volume &volume, bool inherited) const
{
    takeVolumeWords(clause, volume);
    const Tokens named = trimmed(withoutPauses(clause.rest()));
    if (named.isEmpty() && volume.mentioned && (volume.isSettled() || !places.isEmpty())) {
        return readVolume(clause, places, volume);
    }
    if (named.isEmpty() || (places.isEmpty() && !inherited)) {
        return {};
    }
    ClauseMeaning meaning = readPlay(clause, places, volume, inherited);
    meaning.understood = inherited || meaning.problem != Problem::UnknownMedia;
    return meaning;
}

void ClauseReader::chooseMedia(const Tokens &rest, ClauseMeaning &meaning) const
{
    const Tokens whole = withoutPauses(rest);
    const Tokens quoted = quotedOnly(whole);
    if (!quoted.isEmpty() && withoutFillers(whole).size() == quoted.size()) {
        searchMedia(quoted, meaning);
        return;
    }
    const Tokens named = trimmed(whole);
    if (chooseWhole(whole, meaning) || chooseWhole(named, meaning)) {
        return;
    }
    if (meansGeneratedPicture(whole)) {
        meaning.intent.generatedPicture = true;
    } else if (named.isEmpty() || consistsOf({&words().pronoun, &words().filler, &words().polite}, named)) {
        meaning.problem = Problem::NoMedia;
    } else {
        searchMedia(named, meaning);
    }
}

bool ClauseReader::chooseWhole(const Tokens &tokens, ClauseMeaning &meaning) const
{
    const QVector<int> found = tokens.isEmpty() ? QVector<int>() : m_names.findWhole(writtenText(m_sentence, tokens));
    if (found.size() == 1) {
        meaning.intent.media = found.first();
    } else if (found.size() > 1) {
        meaning.problem = Problem::SeveralMedia;
        meaning.candidates = found;
        meaning.phrase = writtenText(m_sentence, tokens);
    }
    return !found.isEmpty();
}

void ClauseReader::searchMedia(const Tokens &tokens, ClauseMeaning &meaning) const
{
    meaning.phrase = writtenText(m_sentence, tokens);
    MediaMatch match = m_names.find(meaning.phrase);
    const Tokens core = withoutFillers(tokens);
    if (match.found.isEmpty() && !core.isEmpty() && core.size() < tokens.size()) {
        const MediaMatch second = m_names.find(writtenText(m_sentence, core));
        match = second.found.isEmpty() && second.similar.isEmpty() ? match : second;
    }
    if (match.found.size() == 1) {
        meaning.intent.media = match.found.first();
    } else {
        meaning.problem = match.found.isEmpty() ? Problem::UnknownMedia : Problem::SeveralMedia;
        meaning.candidates = match.found.isEmpty() ? match.similar : match.found;
    }
}

ClauseMeaning ClauseReader::readPictureWish(const Tokens &tokens) const
{
    Clause clause(tokens);
    Volume volume = takePercent(clause);
    const Places places = takePlaces(clause);
    const Found found = firstOf(clause, {{VerbKind::Play, &words().play}, {VerbKind::WeakPlay, &words().weakPlay}});
    if (found.kind == VerbKind::None || isNegated(clause, found.verb)) {
        return {};
    }
    clause.use(found.verb.index, found.verb.length);
    takeVolumeWords(clause, volume);
    const Tokens rest = withoutPauses(clause.rest());
    const Vocabulary &v = words();
    const bool pure =
        consistsOf({&v.pronoun, &v.picture, &v.generated, &v.filler, &v.polite, &v.after, &v.preposition}, rest);
    const bool certain =
        !places.isEmpty() || (found.kind == VerbKind::Play && (v.pronoun.occursIn(rest) || v.picture.occursIn(rest)));
    ClauseMeaning meaning;
    meaning.understood = pure && certain;
    meaning.intent.generatedPicture = true;
    meaning.intent.places = places;
    meaning.intent.volume = volume.value;
    checkDetails(places, volume, meaning);
    return meaning;
}

} // namespace tavro::assistantservice
