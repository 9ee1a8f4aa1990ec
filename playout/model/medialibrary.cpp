#include "model/medialibrary.h"

#include "model/naturalorder.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QImageReader>
#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace tavro::playout {

namespace {

bool isAnimation(const QFileInfo &file)
{
    return file.suffix().compare(QLatin1String("gif"), Qt::CaseInsensitive) == 0;
}

bool canBeShown(const QFileInfo &file)
{
    static const QList<QByteArray> formats = QImageReader::supportedImageFormats();
    return formats.contains(file.suffix().toLower().toLatin1());
}

// The assistant numbers the files that it saves; the number is what the operator can say.
QString generatedName(const QFileInfo &file)
{
    static const QRegularExpression numbered(QStringLiteral("^download_([0-9]+)$"));
    const QRegularExpressionMatch match = numbered.match(file.completeBaseName());
    return match.hasMatch() ? QStringLiteral("generated %1").arg(match.captured(1)) : file.completeBaseName();
}

} // namespace

std::vector<MediaItem> MediaLibrary::itemsIn(const QString &folder)
{
    const QDir root(folder);
    std::vector<MediaItem> found;
    QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        const QFileInfo file = files.fileInfo();
        const auto kind = isAnimation(file) ? MediaItem::Kind::Animation : MediaItem::Kind::Picture;
        if (canBeShown(file))
            found.push_back({root.relativeFilePath(path), file.completeBaseName(), path, kind, false});
    }
    std::sort(found.begin(), found.end(), [](const MediaItem &left, const MediaItem &right) {
        if (naturallyBefore(left.name, right.name) || naturallyBefore(right.name, left.name))
            return naturallyBefore(left.name, right.name);
        return left.id < right.id;
    });
    return found;
}

void MediaLibrary::addGeneratedFolder(const QString &folder)
{
    QFileInfoList files = QDir(folder).entryInfoList(QDir::Files);
    std::sort(files.begin(), files.end(), [](const QFileInfo &left, const QFileInfo &right) {
        return naturallyBefore(left.fileName(), right.fileName());
    });
    for (const QFileInfo &file : qAsConst(files)) {
        if (canBeShown(file))
            addGenerated(file.filePath());
    }
}

QString MediaLibrary::addGenerated(const QString &path)
{
    const QFileInfo file(path);
    QString id = QStringLiteral("generated:") + file.fileName();
    if (!find(id))
        add({MediaItem{id, generatedName(file), path, MediaItem::Kind::Picture, true}});
    return id;
}

const MediaItem *MediaLibrary::find(const QString &id) const
{
    const auto item =
        std::find_if(m_items.begin(), m_items.end(), [&id](const MediaItem &each) { return each.id == id; });
    return item == m_items.end() ? nullptr : &*item;
}

MediaLibrary::Resources MediaLibrary::resources() const
{
    Resources resources;
    resources.reserve(m_items.size());
    for (const MediaItem &item : m_items)
        resources.emplace_back(item.id.toStdString(), item.name.toStdString());
    return resources;
}

void MediaLibrary::add(std::vector<MediaItem> items)
{
    if (items.empty())
        return;
    std::move(items.begin(), items.end(), std::back_inserter(m_items));
    Q_EMIT sigItemsAdded();
}

} // namespace tavro::playout
