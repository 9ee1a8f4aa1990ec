#pragma once

#include "grammar/clausemeaning.h"
#include "grammar/mediachoice.h"

namespace tavro::assistantservice {

class Clause;

/// Reads one clause of a sentence.
class ClauseReader {
public:
    ClauseReader(const QString &sentence, const MediaNames &names);

    /// `inherited`: the clause before was a play request whose verb may count for this one too.
    ClauseMeaning read(const Tokens &tokens, bool inherited) const;
    /// Whether the clause asks for playing a picture and for nothing else.
    ClauseMeaning readPictureWish(const Tokens &tokens) const;

private:
    ClauseMeaning readPlay(Clause &clause, const Places &places, Volume &volume, bool certain) const;
    ClauseMeaning readStop(Clause &clause, const Places &places, Volume &volume) const;
    ClauseMeaning readVolume(Clause &clause, const Places &places, Volume &volume) const;
    ClauseMeaning readWithoutVerb(Clause &clause, const Places &places, Volume &volume, bool inherited) const;

    const MediaChoice m_media;
};

} // namespace tavro::assistantservice
