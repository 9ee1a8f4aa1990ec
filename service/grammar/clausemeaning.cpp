#include "grammar/clausemeaning.h"

namespace tavro::assistantservice {

ClauseMeaning failing(Problem problem)
{
    ClauseMeaning meaning;
    meaning.understood = true;
    meaning.problem = problem;
    return meaning;
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
    } else if (volume.ambiguous) {
        meaning.problem = Problem::NoVolume;
    }
}

} // namespace tavro::assistantservice
