#include "grammar/clause.h"
#include "grammar/clausereader.h"
#include "grammar/numberwords.h"
#include "grammar/vocabulary.h"
#include "grammar/wordruns.h"

namespace tavro::assistantservice {

namespace {

const Vocabulary &words()
{
    return Vocabulary::instance();
}

bool isNumber(const Tokens &tokens)
{
    return !tokens.isEmpty() && !tokens.first().quoted && numberAt(tokens, 0).length == tokens.size();
}

} // namespace

// What nobody understood may turn the meaning around ("all but layer 2", "in ten seconds"): better asked than done.
void ClauseReader::checkRest(const Tokens &unexplained, ClauseMeaning &meaning) const
{
    if (unexplained.isEmpty() || (!isNumber(unexplained) && m_media.isNamed(unexplained))) {
        return;
    }
    meaning.problem = words().timed.occursIn(unexplained) ? Problem::Timed : Problem::Unclear;
    meaning.phrase = m_media.written(unexplained);
}

ClauseMeaning ClauseReader::readStop(Clause &clause, const Places &places, Volume &volume, bool certain) const
{
    if (const int mute = clause.find(words().mute); mute >= 0) {
        // "Turn the mute off" asks for sound, and nobody said how loud.
        clause.use(mute, clause.freeLengthAt(words().mute, mute));
        volume.mentioned = true;
        return readVolume(clause, places, volume);
    }
    takeVolumeWords(clause, volume);
    ClauseMeaning meaning;
    Intent &intent = meaning.intent;
    intent.places = places;
    intent.action = volume.mentioned ? Intent::Action::SetVolume : Intent::Action::Stop;
    intent.volume = volume.mentioned ? std::optional<double>(0.0) : std::nullopt;
    // "Clear all" may speak of the conversation.
    const bool everything = clause.find(words().everything) >= 0 && (certain || clause.find(words().layer) >= 0);
    intent.everyLayer = places.layers.isEmpty() && (everything || !places.isEmpty());
    const Vocabulary &v = words();
    const Tokens rest = unexplained({&v.filler, &v.polite, &v.preposition, &v.after, &v.layer, &v.pronoun, &v.generated,
                                     &v.picture, &v.everything, &v.joiner, &v.number, &v.running},
                                    clause.rest());
    const bool placed = !places.isEmpty() || !places.wrongNumber.isEmpty();
    meaning.understood = certain || placed || everything || rest.isEmpty() || m_media.isNamed(rest);
    checkDetails(places, volume, meaning);
    if (meaning.problem == Problem::None && (placed || !isNumber(rest))) {
        checkRest(rest, meaning);
    }
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
    const Vocabulary &v = words();
    const Tokens rest =
        unexplained({&v.set, &v.relative, &v.mute, &v.unmute, &v.undo, &v.filler, &v.polite, &v.preposition, &v.after,
                     &v.layer, &v.everything, &v.joiner, &v.number, &v.pronoun},
                    clause.rest());
    ClauseMeaning meaning;
    meaning.understood = volume.mentioned || !places.isEmpty() || (volume.relative && rest.isEmpty());
    Intent &intent = meaning.intent;
    intent.action = Intent::Action::SetVolume;
    intent.places = places;
    intent.volume = volume.value;
    intent.everyLayer = places.layers.isEmpty() && (clause.find(words().everything) >= 0 || !places.isEmpty());
    checkDetails(places, volume, meaning);
    if (meaning.problem == Problem::None) {
        checkRest(rest, meaning);
    }
    if (meaning.problem == Problem::None && !volume.value) {
        meaning.problem = Problem::NoVolume;
    } else if (meaning.problem == Problem::None && places.layers.isEmpty() && !intent.everyLayer) {
        meaning.problem = Problem::NoLayer;
    }
    return meaning;
}

} // namespace tavro::assistantservice
