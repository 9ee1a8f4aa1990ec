#include "grammar/medianames.h"

#include "grammar/editdistance.h"

#include <algorithm>
#include <numeric>

namespace tavro::assistantservice {

namespace {

constexpr int mostSimilar = 5;

int extensionLength(const QString &name)
{
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    const int length = name.size() - dot - 1;
    if (dot <= 0 || length < 2 || length > 4) {
        return 0;
    }
    const QStringRef extension = name.midRef(dot + 1);
    const bool plain = std::all_of(extension.begin(), extension.end(),
                                   [](QChar c) { return c.unicode() < 128 && c.isLetterOrNumber(); });
    return plain && std::any_of(extension.begin(), extension.end(), [](QChar c) { return c.isLetter(); }) ? length : 0;
}

// A part of a word counts where it is the start of one (of three letters at least), or stands anywhere in Chinese. A
// number is never a part of another number.
bool isPart(const QString &part, const QString &word)
{
    const SignClass partClass = signClassOf(part[0]);
    if (partClass == SignClass::Digit) {
        return part == word;
    }
    if (partClass == SignClass::Han) {
        return word.contains(part);
    }
    constexpr int shortestPart = 3;
    return part == word || (part.size() >= shortestPart && word.startsWith(part));
}

// "harbournight" within "oldharbournightwide", but not "clip1" within "clip10".
bool isRun(const QString &run, const QString &text)
{
    constexpr int shortestRun = 4;
    const int at = run.size() >= shortestRun ? text.indexOf(run) : -1;
    if (at < 0) {
        return false;
    }
    const int end = at + run.size();
    const auto cutsNumber = [&text](int left) {
        return left >= 0 && left + 1 < text.size() && text[left].isDigit() && text[left + 1].isDigit();
    };
    return !cutsNumber(at - 1) && !cutsNumber(end - 1);
}

} // namespace

MediaNames::MediaNames(const QVector<MediaItem> &media)
    : m_media(media)
    , m_all(media.size())
{
    std::iota(m_all.begin(), m_all.end(), 0);
    m_keys.reserve(media.size());
    for (const MediaItem &item : media) {
        m_keys.append(makeKey(item.name));
    }
}

MediaNames::Key MediaNames::makeKey(const QString &name)
{
    Key key;
    key.name = nameKey(name);
    const int extension = extensionLength(name);
    // An extension with a digit in it ("mp4") makes several words, but each letter still counts once.
    key.compactStem = key.name.compact.size() - extension;
    key.letters = letterSet(key.name.compact.midRef(0, key.compactStem));
    return key;
}

bool MediaNames::isWhole(const Key &key, const QString &compact)
{
    return key.name.compact.size() == compact.size()
        ? key.name.compact == compact
        : key.compactStem == compact.size() && key.name.compact.startsWith(compact);
}

MediaNames::Rank MediaNames::rank(const Key &key, const NameKey &spoken)
{
    if (isWhole(key, spoken.compact)) {
        return Rank::Whole;
    }
    const QStringList &words = key.name.words;
    if (spoken.words.size() > words.size()) {
        return isRun(spoken.compact, key.name.compact) ? Rank::Parts : Rank::None;
    }
    const auto isWord = [&](const QString &word) { return words.count(word) >= spoken.words.count(word); };
    if (std::all_of(spoken.words.begin(), spoken.words.end(), isWord)) {
        return Rank::Words;
    }
    const auto isPartOfAWord = [&](const QString &part) {
        if (signClassOf(part[0]) == SignClass::Digit) {
            return isWord(part);
        }
        return std::any_of(words.begin(), words.end(), [&part](const QString &word) { return isPart(part, word); });
    };
    const bool parts = std::all_of(spoken.words.begin(), spoken.words.end(), isPartOfAWord);
    return parts || isRun(spoken.compact, key.name.compact) ? Rank::Parts : Rank::None;
}

MediaMatch MediaNames::find(const QString &spoken) const
{
    return find(spoken, m_all);
}

MediaMatch MediaNames::find(const QString &spoken, const QVector<int> &among) const
{
    MediaMatch match;
    const NameKey key = nameKey(spoken);
    if (key.words.isEmpty()) {
        return match;
    }
    Rank best = Rank::Parts;
    for (const int index : among) {
        const Rank current = rank(m_keys[index], key);
        if (current < best) {
            best = current;
            match.found.clear();
        }
        if (current == best) {
            match.found.append(index);
        }
    }
    if (match.found.isEmpty()) {
        match.similar = similar(key, among);
    }
    return match;
}

QVector<int> MediaNames::findWhole(const QString &spoken) const
{
    QVector<int> found;
    const NameKey key = nameKey(spoken);
    for (const int index : m_all) {
        if (!key.compact.isEmpty() && isWhole(m_keys[index], key.compact)) {
            found.append(index);
        }
    }
    return found;
}

QSet<QString> MediaNames::wholeNames(const QSet<QString> &compactTexts) const
{
    QSet<QString> names;
    for (const Key &key : m_keys) {
        if (compactTexts.contains(key.name.compact)) {
            names.insert(key.name.compact);
        }
        const QString stem = key.name.compact.left(key.compactStem);
        if (!stem.isEmpty() && compactTexts.contains(stem)) {
            names.insert(stem);
        }
    }
    return names;
}

QVector<int> MediaNames::similar(const NameKey &spoken, const QVector<int> &among) const
{
    struct Candidate {
        int index = 0;
        int distance = 0;
    };
    QVector<Candidate> candidates;
    constexpr int mostMistakes = 4;
    const int farthest = std::clamp((spoken.compact.size() + 1) / 3, 1, mostMistakes);
    const quint64 letters = letterSet(QStringRef(&spoken.compact));
    for (const int index : among) {
        const Key &key = m_keys[index];
        const int stem = key.compactStem;
        const bool hopeless =
            std::abs(stem - spoken.compact.size()) > farthest || letterDifference(letters, key.letters) > 2 * farthest;
        const bool sharesWord = hopeless && sharesLongWord(spoken.words, key.name.words);
        const int distance =
            hopeless ? farthest + 1 : editDistance(spoken.compact, key.name.compact.left(stem), farthest);
        const bool sharesLetters = distance < std::max(spoken.compact.size(), stem);
        if ((distance <= farthest && sharesLetters) || sharesWord) {
            candidates.append({index, distance});
        }
    }
    const auto nearer = [](const Candidate &a, const Candidate &b) { return a.distance < b.distance; };
    std::stable_sort(candidates.begin(), candidates.end(), nearer);
    QVector<int> indexes;
    for (int i = 0; i < std::min(mostSimilar, candidates.size()); ++i) {
        indexes.append(candidates[i].index);
    }
    return indexes;
}

} // namespace tavro::assistantservice
