#pragma once

#include "model/mediaitem.h"

#include <QObject>

#include <string>
#include <utility>
#include <vector>

namespace tavro::playout {

/// The pictures and animations that can be played. Items are added, never removed or changed.
class MediaLibrary : public QObject {
    Q_OBJECT

public:
    /// Pairs of id and name, UTF-8, as the assistant takes them.
    using Resources = std::vector<std::pair<std::string, std::string>>;

    /// What can be shown in @p folder and the folders below it, sorted by name. The id is the path relative to
    /// @p folder. Hidden files are left out.
    static std::vector<MediaItem> itemsIn(const QString &folder);

    /// Adds items, whose ids must be new, and tells of them once.
    void add(std::vector<MediaItem> items);

    /// Adds the pictures that the assistant saved in @p folder, which need not exist, in the order of their making.
    void addGeneratedFolder(const QString &folder);

    /// Adds a picture that the assistant saved, unless the library has it. Gives its id.
    QString addGenerated(const QString &path);

    const std::vector<MediaItem> &items() const { return m_items; }

    /// The item with @p id; null where there is none. The pointer is valid until an item is added.
    const MediaItem *find(const QString &id) const;

    Resources resources() const;

Q_SIGNALS:
    void sigItemsAdded(); ///< the new items are the last

private:
    std::vector<MediaItem> m_items;
};

} // namespace tavro::playout
