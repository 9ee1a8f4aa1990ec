#include "tokenfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace tavro::assistantservice {

namespace {

constexpr int longestToken = 4096;

KeptToken failure(const QString &path, const QString &reason)
{
    return {{}, false, QStringLiteral("The token file %1 %2.").arg(path, reason)};
}

QString systemReason(const char *what)
{
    return QStringLiteral("%1: %2").arg(QLatin1String(what), QString::fromLocal8Bit(std::strerror(errno)));
}

QByteArray randomToken()
{
    std::array<quint32, 8> random{};
    QRandomGenerator::system()->fillRange(random.data(), static_cast<qsizetype>(random.size()));
    return QByteArray(reinterpret_cast<const char *>(random.data()), sizeof random)
        .toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

// A group may read a file of root's: so an administrator, and systemd's credentials, hand a secret to one service.
QString whyNotSecret(const struct stat &status)
{
    if (!S_ISREG(status.st_mode)) {
        return QStringLiteral("is not a file");
    }
    if (status.st_uid != ::geteuid() && status.st_uid != 0) {
        return QStringLiteral("belongs to another user");
    }
    const mode_t shared = status.st_uid == 0 && ::geteuid() != 0 ? S_IRWXO | S_IWGRP : S_IRWXO | S_IRWXG;
    return (status.st_mode & shared) == 0 ? QString()
                                          : QStringLiteral("can be read by others; chmod 600 makes it secret");
}

KeptToken readToken(const QString &path, int descriptor)
{
    QFile file;
    struct stat status { };
    if (!file.open(descriptor, QFile::ReadOnly, QFile::AutoCloseHandle) || ::fstat(descriptor, &status) != 0) {
        return failure(path, systemReason("cannot be read"));
    }
    const QString reason = whyNotSecret(status);
    if (!reason.isEmpty()) {
        return failure(path, reason);
    }
    const QByteArray token = file.read(longestToken + 2).trimmed();
    const QString wrong = whyNoToken(token);
    return wrong.isEmpty() ? KeptToken{token, false, {}} : failure(path, QStringLiteral("holds no token: it ") + wrong);
}

bool writeAll(int descriptor, const QByteArray &bytes)
{
    const bool written = ::write(descriptor, bytes.constData(), static_cast<size_t>(bytes.size())) == bytes.size();
    const bool safe = ::fsync(descriptor) == 0;
    return ::close(descriptor) == 0 && written && safe;
}

// The name appears with the whole content or not at all, and never in place of a file that another start has just made.
bool writeWhole(const QByteArray &path, const QByteArray &bytes)
{
    QByteArray unfinished = path + ".XXXXXX";
    const int descriptor = ::mkostemp(unfinished.data(), O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    const bool made = writeAll(descriptor, bytes) && ::link(unfinished.constData(), path.constData()) == 0;
    const int error = errno;
    ::unlink(unfinished.constData());
    errno = error;
    return made;
}

bool makeFolder(const QString &path)
{
    return QFileInfo(path).isDir()
        || (makeFolder(QFileInfo(path).absolutePath())
            && (::mkdir(QFile::encodeName(path).constData(), S_IRWXU) == 0 || errno == EEXIST));
}

// Nothing where another start was quicker.
std::optional<KeptToken> makeToken(const QString &path)
{
    const QByteArray token = randomToken();
    const QByteArray name = QFile::encodeName(path);
    if (makeFolder(QFileInfo(path).absolutePath()) && writeWhole(name, token + '\n')) {
        return KeptToken{token, true, {}};
    }
    return errno == EEXIST ? std::nullopt : std::optional(failure(path, systemReason("cannot be made")));
}

KeptToken readKeptToken(const QString &path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    return descriptor >= 0 ? readToken(path, descriptor) : failure(path, systemReason("cannot be read"));
}

} // namespace

QString whyNoToken(const QByteArray &token)
{
    const auto fitsAHeader = [](char c) { return c >= ' ' && c <= '~'; };
    if (token.isEmpty()) {
        return QStringLiteral("is empty");
    }
    if (token.size() > longestToken) {
        return QStringLiteral("is longer than %1 characters").arg(longestToken);
    }
    return std::all_of(token.begin(), token.end(), fitsAHeader)
        ? QString()
        : QStringLiteral("holds characters that a header cannot carry; letters, digits and signs of ASCII can");
}

KeptToken readOrMakeToken(const QString &path)
{
    const bool exists = ::access(QFile::encodeName(path).constData(), F_OK) == 0 || errno != ENOENT;
    const std::optional<KeptToken> made = exists ? std::nullopt : makeToken(path);
    return made ? *made : readKeptToken(path);
}

QString newTokenText(const KeptToken &kept, const QString &path, bool openly)
{
    const QString place = QStringLiteral("A token was made that clients must send; it is kept in %1.").arg(path);
    return openly ? QStringLiteral("%1\nThe token, shown this once: %2\n").arg(place, QString::fromLatin1(kept.token))
                  : place + QLatin1Char('\n');
}

bool isJournal(int descriptor)
{
    struct stat status { };
    const QByteArray place = ::fstat(descriptor, &status) == 0
        ? QByteArray::number(qulonglong(status.st_dev)) + ':' + QByteArray::number(qulonglong(status.st_ino))
        : QByteArray();
    return !place.isEmpty() && place == qgetenv("JOURNAL_STREAM");
}

} // namespace tavro::assistantservice
