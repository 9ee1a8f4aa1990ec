#pragma once

#include "grammar/clausemeaning.h"
#include "grammar/mediachoice.h"
#include "grammar/verbs.h"
#include "grammar/volumes.h"

namespace tavro::assistantservice {

/// Reads one clause of a sentence.
class ClauseReader {
public:
    ClauseReader(const QString &sentence, const MediaNames &names);

    /// `inherited`: what the clause before asked for, whose verb may count for this one too.
    ClauseMeaning read(const Tokens &tokens, std::optional<Intent::Action> inherited) const;
    /// Whether the clause asks for playing a picture and for nothing else.
    ClauseMeaning readPictureWish(const Tokens &tokens) const;

private:
    ClauseMeaning readOnce(const Tokens &tokens, std::optional<Intent::Action> inherited) const;
    ClauseMeaning readVerb(Clause &clause, const FoundVerb &found, const Places &places, Volume &volume) const;
    ClauseMeaning readPlay(Clause &clause, const Places &places, Volume &volume, bool certain) const;
    ClauseMeaning readPlacedName(Clause &clause, const Places &places, Volume &volume, bool hasVerb) const;
    ClauseMeaning readStop(Clause &clause, const Places &places, Volume &volume, bool certain) const;
    ClauseMeaning readVolume(Clause &clause, const Places &places, Volume &volume) const;
    ClauseMeaning readWithoutVerb(Clause &clause, const Places &places, Volume &volume,
                                  std::optional<Intent::Action> inherited) const;
    ClauseMeaning readNameAlone(const Tokens &tokens, const ClauseMeaning &first) const;
    void checkRest(const Tokens &unexplained, ClauseMeaning &meaning) const;

    const MediaChoice m_media;
};

} // namespace tavro::assistantservice
