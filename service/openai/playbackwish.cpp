#include "openai/playbackwish.h"

#include "grammar/korean.h"
#include "grammar/numberwords.h"
#include "grammar/sentence.h"
#include "grammar/vocabulary.h"
#include "grammar/wholenames.h"
#include "grammar/wordruns.h"
#include "openai/wishwords.h"

#include <algorithm>

namespace tavro::assistantservice {

namespace {

constexpr int longestMemory = 4;
constexpr int longestAnswer = 12;
constexpr int consideredCharacters = 4000;
constexpr int consideredOfAssistant = 300;

const Vocabulary &words()
{
    return Vocabulary::instance();
}

const WishWords &wishes()
{
    return WishWords::instance();
}

bool isRequestInDisguise(const Tokens &tokens)
{
    return wishes().proposal.occursIn(tokens);
}

// "Do not stop", "не останавливай", "别停", "멈추지 마": in Chinese the negation stands right before the verb, in
// Korean behind it.
bool isNegatedAt(const Tokens &tokens, int index, int length)
{
    constexpr int reach = 2;
    const bool hangul = isHangul(tokens[index]);
    const bool han = tokens[index].kind == Token::Kind::Han;
    const int from = hangul ? index + length : std::max(0, index - (han ? 2 : reach + 1));
    const int to = hangul ? std::min(tokens.size(), index + length + reach) : index;
    for (int i = from; i < to; ++i) {
        const int size = words().negation.lengthAt(tokens, i);
        const bool adjacent = !han || i + size == index;
        if (size > 0 && adjacent && words().polite.lengthAt(tokens, std::max(0, i - 1)) < 2) {
            return true;
        }
    }
    return false;
}

bool isSmall(const Tokens &tokens, int index)
{
    const bool outside = index < 0 || index >= tokens.size();
    return outside || tokens[index].kind == Token::Kind::Pause || words().polite.contains(tokens[index])
        || words().filler.contains(tokens[index]) || words().after.contains(tokens[index]);
}

// A single Chinese sign is a word of its own only beside small words or an end, and else mostly a part of another one.
bool isWord(const Tokens &tokens, int index, int length)
{
    const bool sign = length == 1 && tokens[index].kind == Token::Kind::Han;
    return length > 0 && (!sign || isSmall(tokens, index - 1) || isSmall(tokens, index + 1));
}

bool asksFor(const Tokens &tokens, WordLists lists)
{
    for (int i = 0; i < tokens.size(); ++i) {
        const int length = tokens[i].quoted ? 0 : longestAt(lists, tokens, i);
        const int other = wishes().other.lengthAt(tokens, i);
        if (other > length) {
            i += other - 1;
        } else if (isWord(tokens, i, length) && !isNegatedAt(tokens, i, length)) {
            return true;
        }
    }
    return false;
}

bool holdsNumber(const Tokens &tokens)
{
    for (int i = 0; i < tokens.size(); ++i) {
        if (!tokens[i].quoted && numberAt(tokens, i).length > 0) {
            return true;
        }
    }
    return false;
}

bool isConsent(const Tokens &tokens)
{
    return !tokens.isEmpty() && (words().yes.lengthAt(tokens, 0) > 0 || wishes().consent.lengthAt(tokens, 0) > 0);
}

bool isAnswer(const Tokens &tokens)
{
    return tokens.size() <= longestAnswer && !words().negation.occursIn(tokens) && !wishes().refusal.occursIn(tokens);
}

// The name as it is said: without the ending of its file.
QString spokenName(const QString &name)
{
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    return nameKey(dot > 0 ? name.left(dot) : name).compact;
}

} // namespace

PlaybackWish::PlaybackWish(const QVector<ChatMessage> &messages, const MediaNames &names)
    : m_messages(messages)
    , m_names(names)
{
    read(messages.size() - 1, longestMemory);
}

void PlaybackWish::read(int index, int memory)
{
    if (index < 0 || memory == 0) {
        return;
    }
    if (m_messages[index].fromAssistant) {
        read(index - 1, memory);
        return;
    }
    const QString text = m_messages[index].content.left(consideredCharacters);
    const Tokens tokens = tokenize(text);
    if (isQuestion(tokens) && !isRequestInDisguise(tokens)) {
        return;
    }
    take(text);
    if (m_play || m_stop || m_volume || !isAnswer(tokens)) {
        return;
    }
    if (isConsent(tokens) && index > 0 && m_messages[index - 1].fromAssistant) {
        take(m_messages[index - 1].content.right(consideredOfAssistant));
    }
    read(index - 1, memory - 1);
}

void PlaybackWish::take(const QString &text)
{
    const Vocabulary &v = words();
    const WishWords &w = wishes();
    Tokens tokens = tokenize(text);
    quoteWholeNames(tokens, m_names);
    m_play = m_play || asksFor(tokens, {&v.play, &v.weakPlay, &v.set, &w.play});
    m_stop = m_stop || asksFor(tokens, {&v.stop, &v.pause, &w.stop});
    m_volume = m_volume || asksFor(tokens, {&v.set, &v.relative, &v.mute, &v.unmute, &w.volume});
    m_level = m_level || asksFor(tokens, {&v.volume, &v.percent});
    m_place = m_place || asksFor(tokens, {&v.layer, &v.program, &v.output});
    m_everything = m_everything || asksFor(tokens, {&v.everything, &w.everything});
    m_number = m_number || holdsNumber(tokens);
    m_said += nameKey(text).compact + QLatin1Char(' ');
}

bool PlaybackWish::covers(const Intent &intent) const
{
    if (intent.everyLayer && m_number && !m_everything) {
        return false;
    }
    switch (intent.action) {
    case Intent::Action::Play:
        return m_play || (!m_stop && (m_place || isNamed(intent)));
    case Intent::Action::Stop:
        return m_stop;
    case Intent::Action::SetVolume:
        break;
    }
    return m_volume || m_level;
}

bool PlaybackWish::isNamed(const Intent &intent) const
{
    const QString name = intent.media < 0 ? QString() : spokenName(m_names.item(intent.media).name);
    return name.size() > 1 && m_said.contains(name);
}

int firstUnasked(const QVector<Intent> &intents, const PlaybackWish &wish)
{
    const auto unasked =
        std::find_if(intents.begin(), intents.end(), [&](const Intent &intent) { return !wish.covers(intent); });
    return unasked == intents.end() ? -1 : static_cast<int>(unasked - intents.begin());
}

} // namespace tavro::assistantservice
