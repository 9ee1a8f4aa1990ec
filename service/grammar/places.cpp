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

    struct Counted {
        Number number;
        /// Behind it and what counts it ("号").
        int end = 0;
        /// "second", "2nd", "二" rather than "2".
        bool counted = false;
    };

    Counted countedAt(int index) const
    {
        Counted found;
        found.number = index < m_clause.size() ? freeNumberAt(index) : Number();
        found.end = index + found.number.length;
        if (found.number.length > 0) {
            found.counted = found.number.ordinal || m_tokens[found.end - 1].kind == Token::Kind::Han;
        }
        if (found.number.length > 0 && found.end < m_clause.size() && isCounter(m_tokens[found.end])) {
            found.counted = true;
            ++found.end;
        }
        return found;
    }

    // "second layer", "2nd and 3rd layer", "第二层", "2号图层", "2번 레이어".
    int takeNumberFirst(int index)
    {
        QVector<Number> numbers;
        Counted found = countedAt(index);
        const bool counted = found.counted;
        const bool mayBeSeveral = found.number.ordinal;
        while (found.number.length > 0) {
            numbers.append(found.number);
            const Keyword keyword = found.end < m_clause.size() ? keywordAt(found.end) : Keyword();
            if (keyword.length > 0) {
                const bool han = m_tokens[found.end].kind == Token::Kind::Han;
                return counted || han ? addAll(keyword, numbers, index, found.end) : index;
            }
            const int next = mayBeSeveral ? skipJoiners(found.end) : found.end;
            found = next > found.end ? countedAt(skipArticle(next)) : Counted();
        }
        return index;
    }

    int addAll(const Keyword &keyword, const QVector<Number> &numbers, int begin, int end)
    {
        for (const Number &number : numbers) {
            add(keyword.kind, number);
        }
        return close(begin, end + keyword.length);
    }

    int skipArticle(int index) const
    {
        static const WordList article(u"the");
        return index < m_clause.size() && m_clause.freeLengthAt(article, index) > 0 ? index + 1 : index;
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
            end += end < m_clause.size() && m_clause.isFree(end) && isCounter(m_tokens[end]) ? 1 : 0;
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

    // Behind a colon stands something else: "layer 3: 30".
    static bool isComma(const Token &token)
    {
        return token.kind == Token::Kind::Pause && QStringLiteral(",，、;；").contains(token.text);
    }

    int skipJoiners(int index) const
    {
        int at = index;
        while (at < m_clause.size() && (isComma(m_tokens[at]) || m_clause.freeLengthAt(words().joiner, at) == 1)) {
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
