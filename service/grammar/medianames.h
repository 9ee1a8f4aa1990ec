#pragma once

#include "engine.h"
#include "grammar/namekey.h"

#include <QSet>

namespace tavro::assistantservice {

/// What a search found, as indexes into the media list.
struct MediaMatch {
    QVector<int> found;
    /// Names that look or sound like the searched one, the best first; only where nothing was found.
    QVector<int> similar;
};

/// The media list, ready for searching. Made for each question; it keeps a reference to the list.
class MediaNames {
public:
    explicit MediaNames(const QVector<MediaItem> &media);

    /// Looks for a name as a user says it. A whole name beats one that holds all the words, which beats one that holds
    /// parts of them; all that are equally good are found.
    MediaMatch find(const QString &spoken) const;
    MediaMatch find(const QString &spoken, const QVector<int> &among) const;
    /// Only whole names.
    QVector<int> findWhole(const QString &spoken) const;
    /// Which of the texts (as NameKey::compact) are whole names.
    QSet<QString> wholeNames(const QSet<QString> &compactTexts) const;

    const MediaItem &item(int index) const { return m_media[index]; }

private:
    struct Key {
        NameKey name;
        /// Length of `compact` without the file extension.
        int compactStem = 0;
        quint64 letters = 0;
    };

    enum class Rank { Whole, Words, Parts, None };

    static Key makeKey(const QString &name);
    static bool isWhole(const Key &key, const QString &compact);
    static Rank rank(const Key &key, const NameKey &spoken);
    QVector<int> similar(const NameKey &spoken, const QVector<int> &among) const;

    const QVector<MediaItem> &m_media;
    QVector<int> m_all;
    QVector<Key> m_keys;
};

} // namespace tavro::assistantservice
