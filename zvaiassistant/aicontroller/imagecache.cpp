#include "aicontroller/imagecache.h"

#include "common/loggingcategories.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QString>

namespace tavro::aiassistant::imagecache {

namespace {

// A link that leads nowhere does not "exist" for Qt, but its name is taken all the same.
bool isTaken(const QString &path)
{
    const QFileInfo entry(path);
    return entry.exists() || entry.isSymLink();
}

QString firstFreePath()
{
    const QString folder = directory();
    for (int number = 1;; ++number) {
        QString path = QStringLiteral("%1/download_%2.jpg").arg(folder).arg(number);
        if (!isTaken(path))
            return path;
    }
}

// A host may show it to the operator, who waits for the picture.
void tellNotSaved(const QString &reason)
{
    qCWarning(lcPictures).noquote()
        << QStringLiteral("the picture could not be saved in %1: %2").arg(directory(), reason);
}

// Making the file is what takes the name: another program may use the same folder at the same time.
QString takeFreePath()
{
    for (;;) {
        QString path = firstFreePath();
        QFile file(path);
        if (file.open(QFile::WriteOnly | QFile::NewOnly))
            return path;
        if (!isTaken(path)) {
            tellNotSaved(file.errorString());
            return {};
        }
    }
}

bool writeWhole(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    tellNotSaved(file.errorString());
    return false;
}

} // namespace

QString directory()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/imageCathe");
}

bool makeDirectory()
{
    return QDir().mkpath(directory());
}

QString save(const QByteArray &bytes)
{
    QString path = takeFreePath();
    if (path.isEmpty())
        return {};
    if (writeWhole(path, bytes))
        return path;
    QFile::remove(path);
    return {};
}

} // namespace tavro::aiassistant::imagecache
