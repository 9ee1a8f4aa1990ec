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
    void chooseMedia(const Tokens &rest, ClauseMeaning &meaning) const;
    bool chooseWhole(const Tokens &tokens, ClauseMeaning &meaning) const;
    void searchMedia(const Tokens &tokens, ClauseMeaning &meaning) const;

    const QString &m_sentence;
    const MediaNames &m_names;
};

} // namespace tavro::assistantservice
