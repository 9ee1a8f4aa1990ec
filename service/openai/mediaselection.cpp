#include "openai/mediaselection.h"

#include "grammar/namekey.h"
#include "openai/plaintext.h"

#include <algorithm>
#include <numeric>

namespace tavro::assistantservice {

namespace {

constexpr int mostItems = 100;
constexpr int longestText = 200;
// What an answer to a question back refers to was said a little earlier.
constexpr int consideredMessages = 3;

QSet<QString> wordsOfUser(const QVector<ChatMessage> &messages)
{
    QSet<QString> words;
    int considered = 0;
    for (auto message = messages.rbegin(); message != messages.rend() && considered < consideredMessages; ++message) {
        if (!message->fromAssistant) {
            const QStringList said = nameKey(message->content).words;
            words += QSet<QString>(said.begin(), said.end());
            ++considered;
        }
    }
    return words;
}

// Where words are not parted by blanks, a name is looked for in the text as a whole.
QString textOfUser(const QVector<ChatMessage> &messages)
{
    return messages.isEmpty() ? QString() : nameKey(messages.last().content).compact;
}

int likeness(const NameKey &name, const QSet<QString> &words, const QString &text)
{
    constexpr int wholeName = 1000;
    const auto common =
        std::count_if(name.words.begin(), name.words.end(), [&](const QString &word) { return words.contains(word); });
    return static_cast<int>(common) + (!name.compact.isEmpty() && text.contains(name.compact) ? wholeName : 0);
}

QVector<int> likenesses(const QVector<MediaItem> &media, const QVector<ChatMessage> &messages)
{
    const QSet<QString> words = wordsOfUser(messages);
    const QString text = textOfUser(messages);
    QVector<int> result;
    result.reserve(media.size());
    for (const MediaItem &item : media) {
        result.append(likeness(nameKey(item.name), words, text));
    }
    return result;
}

QVector<int> chosenItems(const QVector<MediaItem> &media, const QVector<ChatMessage> &messages)
{
    QVector<int> order(media.size());
    std::iota(order.begin(), order.end(), 0);
    if (media.size() <= mostItems) {
        return order;
    }
    const QVector<int> alike = likenesses(media, messages);
    std::stable_sort(order.begin(), order.end(), [&](int left, int right) { return alike[left] > alike[right]; });
    order.resize(mostItems);
    std::sort(order.begin(), order.end());
    return order;
}

bool isShowable(const QString &id)
{
    return !id.isEmpty() && id == plainLine(id, longestText);
}

QSet<QString> showableIds(const QVector<MediaItem> &media, const QVector<int> &chosen)
{
    QSet<QString> ids;
    for (const int index : chosen) {
        if (isShowable(media[index].id)) {
            ids.insert(media[index].id);
        }
    }
    return ids;
}

QString standIn(int index, const QSet<QString> &taken)
{
    QString id = QStringLiteral("item-%1").arg(index + 1);
    while (taken.contains(id)) {
        id += QLatin1Char('x');
    }
    return id;
}

} // namespace

QVector<ShownItem> mediaForModel(const QVector<MediaItem> &media, const QVector<ChatMessage> &messages)
{
    const QVector<int> chosen = chosenItems(media, messages);
    const QSet<QString> ids = showableIds(media, chosen);
    QSet<QString> shownIds;
    QVector<ShownItem> shown;
    for (const int index : chosen) {
        const MediaItem &item = media[index];
        const QString id = isShowable(item.id) ? item.id : standIn(index, ids);
        if (!shownIds.contains(id)) {
            shownIds.insert(id);
            shown.append({id, plainLine(item.name, longestText), index});
        }
    }
    return shown;
}

} // namespace tavro::assistantservice
