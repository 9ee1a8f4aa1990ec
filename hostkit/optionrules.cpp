#include "hostkit/optionrules.h"

#include <QFileInfo>
#include <QUrl>

namespace tavro::hostkit {

namespace {

bool hasLineBreakOrNul(const QString &value)
{
    return value.contains(QLatin1Char('\n')) || value.contains(QLatin1Char('\r')) || value.contains(QChar::Null);
}

bool isServiceAddress(const QUrl &url)
{
    const bool http = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    return url.isValid() && http && !url.host().isEmpty() && !url.hasQuery() && !url.hasFragment();
}

} // namespace

QString problemOfService(const QString &address)
{
    return isServiceAddress(QUrl(address)) ? QString() : QStringLiteral("is not an address like http://127.0.0.1:8080");
}

QString withoutEndSlash(QString address)
{
    while (address.endsWith(QLatin1Char('/')))
        address.chop(1);
    return address;
}

QString problemOfHeaderValue(const QString &value)
{
    return hasLineBreakOrNul(value) ? QStringLiteral("has a line break in it") : QString();
}

QString problemOfSeconds(const QString &number)
{
    bool isNumber = false;
    const int seconds = number.toInt(&isNumber);
    const bool fits = isNumber && seconds > 0 && seconds <= mostSeconds;
    return fits ? QString() : QStringLiteral("takes a whole number of seconds from 1 to %1").arg(mostSeconds);
}

QString problemOfFolder(const QString &path)
{
    const QFileInfo info(path);
    return info.isDir() && info.isReadable() ? QString() : QStringLiteral("is not a folder that can be read");
}

QString problemOfFile(const QString &path)
{
    const QFileInfo info(path);
    return info.isFile() && info.isReadable() ? QString() : QStringLiteral("is not a file that can be read");
}

QString problemOfTheme(const QString &path)
{
    // The controller takes the path as Latin-1.
    if (QString::fromLatin1(path.toLatin1()) != path)
        return QStringLiteral("has letters in its path that are not in Latin-1");
    return problemOfFile(path);
}

} // namespace tavro::hostkit
