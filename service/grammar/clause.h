#pragma once

#include "grammar/tokens.h"

namespace tavro::assistantservice {

class WordList;

/// A part of a sentence that asks for one thing. What has been understood is marked as used; what is left in the end is
/// the name of a media item.
class Clause {
public:
    explicit Clause(const Tokens &tokens);

    const Tokens &tokens() const { return m_tokens; }
    int size() const { return m_tokens.size(); }
    bool isFree(int index) const;
    bool isUsed(int index) const;
    void use(int from, int length);
    /// A name found here keeps its tokens from being read as anything else.
    void protect(int from, int length);

    /// The first free place of a phrase of the list, or -1.
    int find(const WordList &list, int from = 0) const;
    /// Length of the list's longest phrase at `index` that is free, else 0.
    int freeLengthAt(const WordList &list, int index) const;
    /// Uses the phrases of the list that stand right before `index`.
    void useBefore(const WordList &list, int index);
    /// Uses the phrases of the list that stand at `index` and right behind each other; returns where they end.
    int useFrom(const WordList &list, int index);

    /// The tokens that are left, in order.
    Tokens rest() const;

private:
    enum class Mark { Free, Protected, Used };

    Tokens m_tokens;
    QVector<Mark> m_marks;
};

} // namespace tavro::assistantservice
