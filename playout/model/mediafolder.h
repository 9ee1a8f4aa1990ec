#pragma once

#include "model/medialibrary.h"

#include <QFileSystemWatcher>
#include <QHash>
#include <QSet>
#include <QTimer>

#include <chrono>

namespace tavro::playout {

/// Keeps a library up to date with a folder and those below it: what is there at the start is added at once, what is
/// put there later once it is whole, which is when it has stopped growing. What goes from the folder stays in the
/// library.
class MediaFolder : public QObject {
    Q_OBJECT

public:
    /// @p settling: how long a file must stay as it is before it counts as whole.
    MediaFolder(MediaLibrary &library, const QString &path,
                std::chrono::milliseconds settling = std::chrono::milliseconds(500));

Q_SIGNALS:
    void sigLooked(); ///< it has looked for new files, and added those that are whole

private:
    void look();
    void watchFolders();
    void add(std::vector<MediaItem> items);

    MediaLibrary &m_library;
    const QString m_path;
    QFileSystemWatcher m_watcher;
    QTimer m_settling;
    QSet<QString> m_known; ///< ids of what has been added
    QHash<QString, qint64> m_growing; ///< paths of what has not, with the size as last seen
};

} // namespace tavro::playout
