#include "grammar/clausereader.h"

#include "grammar/clause.h"
#include "grammar/numberwords.h"
#include "grammar/vocabulary.h"
#include "grammar/wordruns.h"

namespace tavro::assistantservice {

namespace {

const Vocabulary &words()
{
    return Vocabulary::instance();
}

// Whether a clause without a verb sets a volume; `named` are the words that are left of it.
bool saysVolume(const Clause &clause, const Tokens &named, const Places &places, const Volume &volume,
                std::optional<Intent::Action> inherited)
{
    const Number number = named.isEmpty() ? Number() : numberAt(named, 0);
    const bool onlyNumber = !named.isEmpty() && number.length == named.size() && !number.ordinal && !volume.isSettled();
    const bool value = onlyNumber || (named.isEmpty() && (volume.isSettled() || !places.isEmpty()));
    const bool change = clause.find(words().relative) >= 0 && consistsOf({&words().relative}, named)
        && (volume.mentioned || !named.isEmpty());
    return change || (value && (volume.mentioned || inherited == Intent::Action::SetVolume));
}

} // namespace

ClauseReader::ClauseReader(const QString &sentence, const MediaNames &names)
    : m_media(sentence, names)
{ }

ClauseMeaning ClauseReader::read(const Tokens &tokens, std::optional<Intent::Action> inherited) const
{
    const ClauseMeaning meaning = readOnce(tokens, inherited);
    const bool nameless = meaning.understood && meaning.problem == Problem::NoMedia && meaning.candidates.isEmpty();
    return nameless ? readNameAlone(tokens, meaning) : meaning;
}

ClauseMeaning ClauseReader::readOnce(const Tokens &tokens, std::optional<Intent::Action> inherited) const
{
    Clause clause(tokens);
    Volume volume = takePercent(clause);
    const Places places = takePlaces(clause);
    const bool change = clause.find(words().relative) >= 0 && quotedOnly(tokens).isEmpty();
    const bool aboutVolume = volume.mentioned || clause.find(words().volume) >= 0 || change;
    const FoundVerb found = findVerb(clause, aboutVolume || setsBareNumber(clause, places));
    if (found.kind == VerbKind::None) {
        return readWithoutVerb(clause, places, volume, inherited);
    }
    const bool negated = isNegated(clause, found.verb);
    const ClauseMeaning meaning = readVerb(clause, found, places, volume);
    return meaning.understood && negated ? failing(Problem::Negated) : meaning;
}

ClauseMeaning ClauseReader::readVerb(Clause &clause, const FoundVerb &found, const Places &places, Volume &volume) const
{
    const int verbEnd = found.verb.index + found.verb.length;
    if (isLeading(clause, found.verb.index)) {
        clause.use(0, found.verb.index);
    }
    if (found.kind != VerbKind::Mute && found.kind != VerbKind::Set) {
        clause.use(found.verb.index, found.verb.length);
    }
    volume.mentioned = volume.mentioned || found.kind == VerbKind::Unmute;
    if (found.particle >= 0) {
        clause.use(found.particle, 1);
    }
    switch (found.kind) {
    case VerbKind::Play:
    case VerbKind::WeakPlay:
        if (verbEnd < clause.size()) {
            clause.useFrom(words().after, verbEnd);
        }
        return readPlay(clause, places, volume, found.kind == VerbKind::Play);
    case VerbKind::Assign:
        return readPlacedName(clause, places, volume, true);
    case VerbKind::Stop:
        return readStop(clause, places, volume, words().certainStop.lengthAt(clause.tokens(), found.verb.index) > 0);
    case VerbKind::Unsupported:
        return failing(Problem::Unsupported);
    default:
        return readVolume(clause, places, volume);
    }
}

// "Layer 2 volume 50 %", "Harbour on layer 2", and what follows another request: "and sunset on layer 3".
ClauseMeaning ClauseReader::readWithoutVerb(Clause &clause, const Places &places, Volume &volume,
                                            std::optional<Intent::Action> inherited) const
{
    takeVolumeWords(clause, volume);
    const Tokens named = trimmed(withoutPauses(clause.rest()));
    if (saysVolume(clause, named, places, volume, inherited)) {
        return readVolume(clause, places, volume);
    }
    if (inherited == Intent::Action::Stop && named.isEmpty() && !places.isEmpty()) {
        return readStop(clause, places, volume, true);
    }
    if (inherited == Intent::Action::Play && !named.isEmpty()) {
        return readPlay(clause, places, volume, true);
    }
    return readPlacedName(clause, places, volume, false);
}

ClauseMeaning ClauseReader::readPictureWish(const Tokens &tokens) const
{
    Clause clause(tokens);
    Volume volume = takePercent(clause);
    const Places places = takePlaces(clause);
    const FoundVerb found = findPlayVerb(clause);
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
