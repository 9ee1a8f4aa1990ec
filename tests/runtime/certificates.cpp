#include "certificates.h"

#include "support/waiting.h"

#include <QProcess>

namespace tavro::testsupport {

namespace {

bool openssl(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral("openssl"), arguments);
    return process.waitForFinished(static_cast<int>(waitLimit.count())) && process.exitStatus() == QProcess::NormalExit
        && process.exitCode() == 0;
}

QStringList request(const QString &name, const QString &key, const QString &out)
{
    return {QStringLiteral("req"),
            QStringLiteral("-x509"),
            QStringLiteral("-nodes"),
            QStringLiteral("-days"),
            QStringLiteral("2"),
            QStringLiteral("-newkey"),
            QStringLiteral("ec"),
            QStringLiteral("-pkeyopt"),
            QStringLiteral("ec_paramgen_curve:prime256v1"),
            QStringLiteral("-subj"),
            QStringLiteral("/CN=") + name,
            QStringLiteral("-keyout"),
            key,
            QStringLiteral("-out"),
            out};
}

} // namespace

bool Certificates::make(const QString &subjectAltName)
{
    const QStringList server = request(QStringLiteral("test server"), key(), certificate())
        + QStringList{QStringLiteral("-CA"),     authority(),
                      QStringLiteral("-CAkey"),  authorityKey(),
                      QStringLiteral("-addext"), QStringLiteral("basicConstraints=critical,CA:FALSE"),
                      QStringLiteral("-addext"), QStringLiteral("subjectAltName=") + subjectAltName};
    return openssl(request(QStringLiteral("test authority"), authorityKey(), authority())) && openssl(server);
}

} // namespace tavro::testsupport
