#pragma once

#include "grammar/medianames.h"
#include "grammar/places.h"
#include "grammar/volumes.h"

namespace tavro::assistantservice {

/// One thing that the user asks the playout for.
struct Intent {
    enum class Action { Play, Stop, SetVolume };

    Action action = Action::Play;
    /// Play: which media item (an index into the media list), or the picture generated last.
    int media = -1;
    bool generatedPicture = false;
    Places places;
    std::optional<double> volume;
    /// Stop and set volume: "all layers".
    bool everyLayer = false;
};

/// Why an intent cannot be carried out as it is.
enum class Problem {
    None,
    NoMedia,
    SeveralMedia,
    UnknownMedia,
    NoLayer,
    NoVolume,
    RelativeVolume,
    WrongVolume,
    WrongPlace,
    Unsupported,
    /// "In ten seconds", "when Harbour ends": everything is carried out at once.
    Timed,
    /// Words are left that nobody here understands; they may change what was meant.
    Unclear,
    Negated,
};

/// What a sentence means for the playout. Without intents and problem it is about something else.
struct Understanding {
    QVector<Intent> intents;
    Problem problem = Problem::None;
    /// The intent that has the problem.
    int troubled = -1;
    /// The name or value that it is about, as written.
    QString phrase;
    /// SeveralMedia: the items it may be; UnknownMedia: similar ones; NoMedia: one that is perhaps meant.
    QVector<int> candidates;

    bool isPlayback() const { return !intents.isEmpty() || problem != Problem::None; }
};

/// Understands one sentence, without regard to what was said before. One of more than 400 characters or 12 parts is not
/// about playback.
Understanding understandPlayback(const QString &sentence, const MediaNames &names);

/// Finds out whether the end of a picture's description asks for playing it ("..., play it on layer 2").
Understanding understandPictureWish(const QString &prompt);

} // namespace tavro::assistantservice
