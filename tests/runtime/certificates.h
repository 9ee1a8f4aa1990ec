#pragma once

#include <QString>
#include <QTemporaryDir>

namespace tavro::testsupport {

/// An authority made for one test, and a certificate of its own for a server on 127.0.0.1. Needs the `openssl` program.
class Certificates {
public:
    /// False where it could not be made.
    bool make();

    QString authority() const { return m_folder.filePath(QStringLiteral("ca.pem")); }
    QString certificate() const { return m_folder.filePath(QStringLiteral("server.pem")); }
    QString key() const { return m_folder.filePath(QStringLiteral("server.key")); }

private:
    QTemporaryDir m_folder;
};

} // namespace tavro::testsupport
