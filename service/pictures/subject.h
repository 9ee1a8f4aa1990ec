#pragma once

#include <QFlags>
#include <QString>

namespace tavro::assistantservice {

enum class Daytime { Day, Dawn, Sunset, Night };

enum class Motif {
    Sea = 1,
    Harbour = 2,
    Mountains = 4,
    City = 8,
    Forest = 16,
    Snow = 32,
    Desert = 64,
    Meadow = 128,
    Person = 256,
    Rain = 512,
    Autumn = 1024,
};
Q_DECLARE_FLAGS(Motifs, Motif)
Q_DECLARE_OPERATORS_FOR_FLAGS(Motifs)

/// What a picture shows. A prompt that names nothing known gets a landscape that its letters choose.
struct Subject {
    Motifs motifs;
    Daytime daytime = Daytime::Day;
    /// Decides everything that the prompt leaves open.
    quint64 seed = 0;
};

Subject subjectOf(const QString &prompt);

/// The subject in words, such as "sea, mountains, sunset", in Chinese where `chinese`.
QString describeSubject(const Subject &subject, bool chinese);

} // namespace tavro::assistantservice
