#include "grammar/places.h"

#include "grammar/numberwords.h"
#include "grammar/vocabulary.h"

namespace tavro::assistantservice {

namespace {

const Vocabulary &words()
{
    return Vocabulary::instance();
}

struct Keyword {
    PlaceKind kind = PlaceKind::Layer;
    int length = 0;
};

class PlaceFinder {
public:
    explicit PlaceFinder(Clause &clause)
        : m_clause(clause)
        , m_tokens(clause.tokens())
    { }

    Places run()
    {
        for (int i = 0; i < m_clause.size();) {
            const int end = takeAt(i);
            i = end > i ? end : i + 1;
        }
        return m_places;
    }

private:
    Keyword keywordAt(int index) const
    {
        if (const int length = m_clause.freeLengthAt(words().layer, index)) {
            return {PlaceKind::Layer, length};
        }
        if (const int length = m_clause.freeLengthAt(words().program, index)) {
            return {PlaceKind::Program, length};
        }
        return {PlaceKind::Output, m_clause.freeLengthAt(words().output, index)};
    }

    Number freeNumberAt(int index) const
    {
        if (!m_clause.isFree(index)) {
            return {};
        }
        const Number number = numberAt(m_tokens, index);
        for (int i = index; i < index + number.length; ++i) {
            if (!m_clause.isFree(i)) {
                return {};
            }
        }
        return number;
    }

    int takeAt(int index)
    {
        const int end = takeNumberFirst(index);
        return end > index ? end : takeKeywordFirst(index);
    }

    // "second layer", "2nd layer", "第二层", "2号图层", "2번 레이어".
    int takeNumberFirst(int index)
    {
        const Number number = freeNumberAt(index);
        if (number.length == 0) {
            return index;
        }
        int at = index + number.length;
        bool counted = number.ordinal || m_tokens[at - 1].kind == Token::Kind::Han;
        if (at < m_clause.size() && isCounter(m_tokens[at])) {
            counted = true;
            ++at;
        }
        const Keyword keyword = at < m_clause.size() ? keywordAt(at) : Keyword();
        const bool han = keyword.length > 0 && m_tokens[at].kind == Token::Kind::Han;
        if (keyword.length == 0 || (!counted && !han)) {
            return index;
        }
        add(keyword.kind, number);
        return close(index, at + keyword.length);
    }

    static bool isCounter(const Token &token)
    {
        static const WordList counters(u"号|个|번|번째|й|м");
        return counters.contains(token);
    }

    // "layer 2", "layer number two", "layers 1, 2 and 3", "图层二".
    int takeKeywordFirst(int index)
    {
        const Keyword keyword = keywordAt(index);
        if (keyword.length == 0) {
            return index;
        }
        int at = index + keyword.length;
        while (at < m_clause.size() && m_clause.freeLengthAt(words().number, at) == 1) {
            ++at;
        }
        Number number = at < m_clause.size() ? freeNumberAt(at) : Number();
        if (number.length == 0 || isPercent(at + number.length)) {
            return index;
        }
        int end = index;
        while (number.length > 0) {
            add(keyword.kind, number);
            end = at + number.length;
            at = skipJoiners(end);
            const bool more = at > end && at < m_clause.size();
            number = more ? freeNumberAt(at) : Number();
            if (number.length > 0 && (isPercent(at + number.length) || isKeywordBehind(at + number.length))) {
                break;
            }
        }
        return close(index, end);
    }

    bool isPercent(int index) const
    {
        return index < m_clause.size() && m_clause.freeLengthAt(words().percent, index) > 0;
    }

    bool isKeywordBehind(int index) const { return index < m_clause.size() && keywordAt(index).length > 0; }

    int skipJoiners(int index) const
    {
        int at = index;
        while (at < m_clause.size()
               && (m_tokens[at].kind == Token::Kind::Pause || m_clause.freeLengthAt(words().joiner, at) == 1)) {
            ++at;
        }
        return at;
    }

    void add(PlaceKind kind, const Number &number)
    {
        if (number.value >= 1 && number.isWhole()) {
            QVector<int> &numbers = m_places.of(kind);
            const int value = static_cast<int>(number.value);
            if (!numbers.contains(value)) {
                numbers.append(value);
            }
        } else if (m_places.wrongNumber.isEmpty()) {
            m_places.wrongKind = kind;
            m_places.wrongNumber = QString::number(number.value, 'g', 15);
        }
    }

    int close(int begin, int end)
    {
        m_clause.use(begin, end - begin);
        m_clause.useBefore(words().before, begin);
        return end < m_clause.size() ? m_clause.useFrom(words().after, end) : end;
    }

    Clause &m_clause;
    const Tokens &m_tokens;
    Places m_places;
};

} // namespace

QVector<int> &Places::of(PlaceKind kind)
{
    return kind == PlaceKind::Layer ? layers : kind == PlaceKind::Program ? programs : outputs;
}

Places takePlaces(Clause &clause)
{
    return PlaceFinder(clause).run();
}

} // namespace tavro::assistantservice
