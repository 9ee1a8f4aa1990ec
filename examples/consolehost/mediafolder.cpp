#include "mediafolder.h"

#include <QDir>
#include <QDirIterator>

#include <algorithm>

namespace tavro::consolehost {

MediaLibrary readMediaFolder(const QString &folder)
{
    const QDir root(folder);
    MediaLibrary library;
    QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        library.emplace_back(root.relativeFilePath(path).toStdString(), files.fileName().toStdString());
    }
    std::sort(library.begin(), library.end());
    return library;
}

} // namespace tavro::consolehost
