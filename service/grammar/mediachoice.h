#pragma once

#include "grammar/clausemeaning.h"
#include "grammar/tokens.h"

namespace tavro::assistantservice {

/// Finds which media item the words of a clause name.
class MediaChoice {
public:
    /// The sentence tells how the words were written; both must outlive the choice.
    MediaChoice(const QString &sentence, const MediaNames &names);

    /// Of the words that are left of a clause: sets the meaning's media item or generated picture, or what is wrong.
    void choose(const Tokens &rest, ClauseMeaning &meaning) const;
    /// Whether the words name an item, or several.
    bool isNamed(const Tokens &tokens) const;
    /// Whether they are the whole name of an item.
    bool isWholeName(const Tokens &tokens) const;

    const MediaNames &names() const { return m_names; }
    /// The words as the user wrote them.
    QString written(const Tokens &tokens) const;

private:
    bool chooseWhole(const Tokens &tokens, ClauseMeaning &meaning) const;
    QVector<int> findWhole(const Tokens &tokens) const;
    MediaMatch find(const Tokens &tokens) const;
    void search(const Tokens &tokens, ClauseMeaning &meaning) const;

    const QString &m_sentence;
    const MediaNames &m_names;
};

} // namespace tavro::assistantservice
