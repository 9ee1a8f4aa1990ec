#include "playout/samplefiles.h"

#include <QFile>
#include <QImage>

namespace tavro::testsupport {

bool writePicture(const QString &path, const QColor &color, const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image.save(path, "PNG");
}

QString copySample(const QString &name, const QString &folder)
{
    const QString path = folder + QLatin1Char('/') + name;
    return QFile::copy(QStringLiteral(PLAYOUT_SAMPLES "/") + name, path) ? path : QString();
}

} // namespace tavro::testsupport
