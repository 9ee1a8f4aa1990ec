#include "grammar/clausereader.h"

#include "grammar/clause.h"
#include "grammar/verbs.h"
#include "grammar/vocabulary.h"
#include "grammar/wordruns.h"

namespace tavro::assistantservice {

namespace {

const Vocabulary &words()
{
    return Vocabulary::instance();
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
    : m_media(sentence, names)
{ }

ClauseMeaning ClauseReader::read(const Tokens &tokens, bool inherited) const
{
    Clause clause(tokens);
    Volume volume = takePercent(clause);
    const Places places = takePlaces(clause);
    const bool aboutVolume = volume.mentioned || clause.find(words().volume) >= 0 || clause.find(words().relative) >= 0;
    const FoundVerb found = findVerb(clause, aboutVolume || setsBareNumber(clause, places));
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
    m_media.choose(clause.rest(), meaning);
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
        && !consistsOf({&words().layer, &words().pronoun, &words().generated}, named) && !m_media.isNamed(named);
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
