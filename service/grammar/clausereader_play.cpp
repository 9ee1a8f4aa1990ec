#include "grammar/clause.h"
#include "grammar/clausereader.h"
#include "grammar/numberwords.h"
#include "grammar/vocabulary.h"
#include "grammar/wholenames.h"
#include "grammar/wordruns.h"

namespace tavro::assistantservice {

namespace {

const Vocabulary &words()
{
    return Vocabulary::instance();
}

bool holdsNumber(const Tokens &tokens)
{
    for (int i = 0; i < tokens.size(); ++i) {
        if (numberAt(tokens, i).length > 0) {
            return true;
        }
    }
    return false;
}

} // namespace

ClauseMeaning ClauseReader::readPlay(Clause &clause, const Places &places, Volume &volume, bool certain) const
{
    takeVolumeWords(clause, volume);
    if (!certain && volume.mentioned && trimmed(clause.rest()).isEmpty()) {
        return readVolume(clause, places, volume);
    }
    ClauseMeaning meaning;
    meaning.intent.places = places;
    meaning.intent.volume = volume.value;
    m_media.choose(clause.rest(), meaning);
    const bool unknown = meaning.problem == Problem::UnknownMedia || meaning.problem == Problem::NoMedia;
    const bool placed = !places.isEmpty() || !places.wrongNumber.isEmpty();
    meaning.understood = certain || !unknown || placed || !meaning.candidates.isEmpty();
    if (unknown && words().timed.occursIn(clause.rest())) {
        meaning.problem = Problem::Timed;
    } else if (unknown && words().pause.occursIn(clause.rest())) {
        meaning.problem = Problem::Unsupported;
    }
    if (meaning.problem == Problem::None) {
        checkDetails(places, volume, meaning);
    }
    return meaning;
}

// "Harbour on layer 2", "set layer 2 to Harbour": without a word for "play" only a whole name is clear enough.
ClauseMeaning ClauseReader::readPlacedName(Clause &clause, const Places &places, Volume &volume, bool hasVerb) const
{
    const Tokens named = trimmed(withoutPauses(clause.rest()));
    if (named.isEmpty() || places.isEmpty()) {
        return {};
    }
    const bool whole = m_media.isWholeName(named);
    if (holdsNumber(named) && (!whole || numberAt(named, 0).length == named.size())) {
        ClauseMeaning meaning = hasVerb ? failing(Problem::Unclear) : ClauseMeaning();
        meaning.phrase = m_media.written(named);
        return meaning;
    }
    ClauseMeaning meaning = readPlay(clause, places, volume, false);
    meaning.understood = meaning.problem != Problem::UnknownMedia && meaning.problem != Problem::NoMedia;
    if (meaning.problem == Problem::None && meaning.intent.media >= 0 && !whole) {
        meaning.problem = Problem::UnknownMedia;
        meaning.phrase = m_media.written(named);
        meaning.candidates = {meaning.intent.media};
    }
    return meaning;
}

// "Play volume 1 on layer 2", "play a on layer 1": no name was left, but the words that were taken for something else
// are one. Where they are a place ("play layer 3") the item and the layer are both possible.
ClauseMeaning ClauseReader::readNameAlone(const Tokens &tokens, const ClauseMeaning &first) const
{
    const Clause clause(tokens);
    const Verb verb = findPlayVerb(clause).verb;
    Tokens named = tokens;
    if (verb.index < 0 || !quoteNameAt(named, verb.index + verb.length, m_media.names())) {
        return first;
    }
    const ClauseMeaning second = readOnce(named, std::nullopt);
    const bool place = !first.intent.places.isEmpty() && second.intent.places.isEmpty();
    if (second.problem == Problem::None && place) {
        ClauseMeaning asking = first;
        asking.candidates = {second.intent.media};
        return asking;
    }
    return second.problem == Problem::None || second.problem == Problem::SeveralMedia ? second : first;
}

} // namespace tavro::assistantservice
