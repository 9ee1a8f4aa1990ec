#pragma once

#include "grammar/clause.h"

namespace tavro::assistantservice {

enum class PlaceKind { Layer, Program, Output };

/// Where something is to be played, stopped or set: the numbers that the user said.
struct Places {
    QVector<int> layers;
    QVector<int> programs;
    QVector<int> outputs;
    /// A number that cannot be one ("layer 0"), as it was written; empty where all are good.
    QString wrongNumber;
    PlaceKind wrongKind = PlaceKind::Layer;

    bool isEmpty() const { return layers.isEmpty() && programs.isEmpty() && outputs.isEmpty(); }
    QVector<int> &of(PlaceKind kind);
};

/// Finds "layer 2", "the second layer", "第二层", "layers 1 and 3" and the like, and uses their tokens.
Places takePlaces(Clause &clause);

} // namespace tavro::assistantservice
