#pragma once

#include <QString>
#include <QTemporaryDir>

namespace tavro::testsupport {

/// An authority made for one test, and a certificate of its own for a server. Needs the `openssl` program.
class Certificates {
public:
    /// Makes both, the certificate for the name. False where they could not be made.
    bool make(const QString &subjectAltName = QStringLiteral("IP:127.0.0.1"));

    QString authority() const { return m_folder.filePath(QStringLiteral("ca.pem")); }
    QString authorityKey() const { return m_folder.filePath(QStringLiteral("ca.key")); }
    QString certificate() const { return m_folder.filePath(QStringLiteral("server.pem")); }
    QString key() const { return m_folder.filePath(QStringLiteral("server.key")); }

private:
    QTemporaryDir m_folder;
};

} // namespace tavro::testsupport
