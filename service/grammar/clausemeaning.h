#pragma once

#include "grammar/playback.h"

namespace tavro::assistantservice {

/// What one clause asks for. Neither intent nor problem: nothing that concerns the playout.
struct ClauseMeaning {
    bool understood = false;
    Intent intent;
    Problem problem = Problem::None;
    QString phrase;
    QVector<int> candidates;
};

ClauseMeaning failing(Problem problem);

/// Sets the problem that places or volume have in themselves, if any.
void checkDetails(const Places &places, const Volume &volume, ClauseMeaning &meaning);

} // namespace tavro::assistantservice
