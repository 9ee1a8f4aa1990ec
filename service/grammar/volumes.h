#pragma once

#include "grammar/clause.h"

#include <optional>

namespace tavro::assistantservice {

/// What a clause says about the volume.
struct Volume {
    /// The volume is spoken of at all.
    bool mentioned = false;
    /// From 0.0 to 1.0.
    std::optional<double> value;
    /// "louder", "by 10 %": a change that starts from a volume nobody here knows.
    bool relative = false;
    /// A bare "1": one percent, or all of it.
    bool ambiguous = false;
    /// A value out of range, as it was written; else empty.
    QString wrong;

    bool isSettled() const { return value.has_value() || relative || ambiguous || !wrong.isEmpty(); }
};

/// Finds "50 %", "百分之三十" and uses their tokens. To be called before the places are looked for.
Volume takePercent(Clause &clause);
/// Finds the rest: "half volume", "muted", "volume 30", and the words for volume themselves.
void takeVolumeWords(Clause &clause, Volume &volume);
/// Reads what is left as the value, for a clause that can only be about the volume: "set layer 2 to 30".
void takeBareVolume(Clause &clause, Volume &volume);

} // namespace tavro::assistantservice
