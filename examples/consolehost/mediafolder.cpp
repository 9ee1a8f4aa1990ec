#include "mediafolder.h"

#include <QDir>
#include <QDirIterator>

#include <algorithm>

namespace tavro::consolehost {

MediaLibrary readMediaFolder(const QString &folder)
{
    if (folder.isEmpty())
        return {};
    // The ids are the same however the folder was given: relative paths are only cut off from absolute ones.
    const QDir root(QDir(folder).absolutePath());
    MediaLibrary library;
    QDirIterator files(root.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        library.emplace_back(root.relativeFilePath(path).toStdString(), files.fileName().toStdString());
    }
    std::sort(library.begin(), library.end());
    return library;
}

} // namespace tavro::consolehost
