#include "paintedtheme.h"

#include "theme/stylesheetbuilder.h"

#include <QDir>
#include <QFile>
#include <QImage>

namespace tavro::aiassistant {

namespace {

// The viewer's round buttons centre their images without scaling them; all others are scaled.
int imageSize(const QString &key)
{
    const bool isCentred =
        key.startsWith(QLatin1String("close")) || key == QLatin1String("last") || key == QLatin1String("next");
    return isCentred ? 32 : 72;
}

} // namespace

PaintedTheme::PaintedTheme()
{
    m_valid = QFile::copy(QStringLiteral(":/aiassistant/theme/default_aiassistant.theme"), path())
        && QDir(m_folder.path()).mkpath(QStringLiteral("aiassistanttheme/images"));
    const auto theme = readTheme(path().toStdString());
    const QStringList keys = theme->imageKeys();
    for (const QString &key : keys)
        m_valid = m_valid && paint(key, theme->image(key));
}

QString PaintedTheme::styleSheet() const
{
    return finishedStyleSheet(*readTheme(path().toStdString()));
}

QColor PaintedTheme::imageColor(const QString &key) const
{
    const int place = readTheme(path().toStdString())->imageKeys().indexOf(key);
    return place < 0 ? QColor() : QColor(40 + 4 * place, 255 - 5 * place, 37 * place % 256);
}

QColor PaintedTheme::color(const QString &key) const
{
    return QColor(readTheme(path().toStdString())->color(key));
}

QString PaintedTheme::path() const
{
    return m_folder.filePath(QStringLiteral("painted.theme"));
}

bool PaintedTheme::paint(const QString &key, const QString &file) const
{
    QImage image(imageSize(key), imageSize(key), QImage::Format_RGB32);
    image.fill(imageColor(key));
    return image.save(file, "png");
}

} // namespace tavro::aiassistant
