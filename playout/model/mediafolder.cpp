#include "model/mediafolder.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QLoggingCategory>

#include <utility>

namespace tavro::playout {

namespace {

Q_LOGGING_CATEGORY(lcMedia, "playout")

QStringList foldersBelow(const QString &path)
{
    QStringList folders;
    QDirIterator below(path, QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (below.hasNext())
        folders.append(below.next());
    return folders;
}

} // namespace

MediaFolder::MediaFolder(MediaLibrary &library, const QString &path, std::chrono::milliseconds settling)
    : m_library(library)
    , m_path(path)
{
    m_settling.setSingleShot(true);
    m_settling.setInterval(settling);
    connect(&m_settling, &QTimer::timeout, this, &MediaFolder::look);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_settling, qOverload<>(&QTimer::start));
    // Watched first: what comes while the folder is read is seen at the next look.
    watchFolders();
    add(MediaLibrary::itemsIn(m_path));
}

void MediaFolder::add(std::vector<MediaItem> items)
{
    for (const MediaItem &item : items)
        m_known.insert(item.id);
    m_library.add(std::move(items));
}

void MediaFolder::look()
{
    watchFolders();
    std::vector<MediaItem> whole;
    QHash<QString, qint64> growing;
    for (MediaItem &item : MediaLibrary::itemsIn(m_path)) {
        const qint64 size = QFileInfo(item.path).size();
        if (m_known.contains(item.id))
            continue;
        if (size > 0 && m_growing.value(item.path) == size)
            whole.push_back(std::move(item));
        else
            growing.insert(item.path, size);
    }
    m_growing = growing;
    add(std::move(whole));
    // The watcher tells of files that come and go, not of their growth.
    if (!m_growing.isEmpty())
        m_settling.start();
    Q_EMIT sigLooked();
}

void MediaFolder::watchFolders()
{
    QStringList folders = foldersBelow(m_path);
    folders.append(m_path);
    const QStringList watched = m_watcher.directories();
    const QSet<QString> already(watched.begin(), watched.end());
    QStringList unwatched;
    for (const QString &folder : qAsConst(folders)) {
        if (!already.contains(folder) && QFileInfo::exists(folder))
            unwatched.append(folder);
    }
    if (!unwatched.isEmpty() && !m_watcher.addPaths(unwatched).isEmpty())
        qCWarning(lcMedia) << "new files will not be seen in all folders of" << m_path;
}

} // namespace tavro::playout
