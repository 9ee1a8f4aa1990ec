#include "grammar/clause.h"

#include "grammar/wordlist.h"

#include <algorithm>

namespace tavro::assistantservice {

Clause::Clause(const Tokens &tokens)
    : m_tokens(tokens)
    , m_marks(tokens.size(), Mark::Free)
{
    for (int i = 0; i < tokens.size(); ++i) {
        if (tokens[i].quoted) {
            m_marks[i] = Mark::Protected;
        }
    }
}

bool Clause::isFree(int index) const
{
    return index >= 0 && index < size() && m_marks[index] == Mark::Free;
}

bool Clause::isUsed(int index) const
{
    return index >= 0 && index < size() && m_marks[index] == Mark::Used;
}

void Clause::use(int from, int length)
{
    std::fill_n(m_marks.begin() + from, length, Mark::Used);
}

void Clause::protect(int from, int length)
{
    std::fill_n(m_marks.begin() + from, length, Mark::Protected);
}

int Clause::freeLengthAt(const WordList &list, int index) const
{
    if (!isFree(index)) {
        return 0;
    }
    int end = index;
    while (isFree(end)) {
        ++end;
    }
    return list.lengthAt(m_tokens, index, end);
}

int Clause::find(const WordList &list, int from) const
{
    for (int i = from; i < size(); ++i) {
        if (freeLengthAt(list, i) > 0) {
            return i;
        }
    }
    return -1;
}

void Clause::useBefore(const WordList &list, int index)
{
    for (int i = index - 1; isFree(i) && freeLengthAt(list, i) == 1; --i) {
        use(i, 1);
    }
}

int Clause::useFrom(const WordList &list, int index)
{
    int at = index;
    while (const int length = at < size() ? freeLengthAt(list, at) : 0) {
        use(at, length);
        at += length;
    }
    return at;
}

Tokens Clause::rest() const
{
    Tokens rest;
    for (int i = 0; i < size(); ++i) {
        if (m_marks[i] != Mark::Used) {
            rest.append(m_tokens[i]);
        }
    }
    return rest;
}

} // namespace tavro::assistantservice
