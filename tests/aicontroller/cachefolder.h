#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A picture cache of the test's own, empty at first, away from the user's data. While it lives, the module uses it.
class CacheFolder {
public:
    CacheFolder()
        : m_earlier(qgetenv("XDG_DATA_HOME"))
    {
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_root.path()));
    }
    ~CacheFolder() { qputenv("XDG_DATA_HOME", m_earlier); }

    CacheFolder(const CacheFolder &) = delete;
    CacheFolder &operator=(const CacheFolder &) = delete;

    QString root() const { return m_root.path(); } ///< of all data, a parent of the cache

    /// Below root(), spelt out here so that a change of the place is noticed.
    QString path() const { return m_root.path() + QLatin1Char('/') + dataName() + QStringLiteral("/imageCathe"); }
    QString pathOf(int number) const { return pathOf(nameOf(number)); }
    QString pathOf(const QString &name) const { return path() + QLatin1Char('/') + name; }
    static QString nameOf(int number) { return QStringLiteral("download_%1.jpg").arg(number); }

    bool make() const { return QDir().mkpath(path()); }

    bool put(const QString &name, const QByteArray &bytes = {}) const
    {
        QFile file(pathOf(name));
        return make() && file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size();
    }

    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("cannot be read: ") + path.toUtf8();
    }

    /// Everything that lies in the cache, sorted.
    QStringList names() const
    {
        return QDir(path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

private:
    static QString dataName();

    QTemporaryDir m_root;
    QByteArray m_earlier;
};

inline QString CacheFolder::dataName()
{
    const QString organisation = QCoreApplication::organizationName();
    const QString application = QCoreApplication::applicationName();
    return organisation.isEmpty() ? application : organisation + QLatin1Char('/') + application;
}
