#include "foreignserver.h"

#include "support/waiting.h"

#include <QCryptographicHash>
#include <QDir>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>

namespace upstream {

namespace {

using tavro::testsupport::eventually;

constexpr int installLimitMs = 120000;

quint16 freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

bool takesConnections(quint16 port)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, port);
    return socket.waitForConnected(1000);
}

} // namespace

ForeignServer::ForeignServer(ForeignProgram program)
    : m_program(std::move(program))
    , m_port(freePort())
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
}

ForeignServer::~ForeignServer()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

QString ForeignServer::install()
{
    const QString npm = QStandardPaths::findExecutable(QStringLiteral("npm"));
    if (npm.isEmpty() || QStandardPaths::findExecutable(QStringLiteral("node")).isEmpty()) {
        return QStringLiteral("there is no Node.js with npm on this machine");
    }
    const QString ready = folder() + QStringLiteral("/ready");
    if (QFile::exists(ready)) {
        return {};
    }
    QDir().mkpath(folder());
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(npm,
                  {QStringLiteral("install"), QStringLiteral("--prefix"), folder(), QStringLiteral("--ignore-scripts"),
                   QStringLiteral("--no-audit"), QStringLiteral("--no-fund"), QStringLiteral("--fetch-retries=1"),
                   m_program.package});
    if (!process.waitForFinished(installLimitMs)) {
        process.kill();
        process.waitForFinished();
        return QStringLiteral("npm did not install %1 in time").arg(m_program.package);
    }
    if (process.exitCode() != 0) {
        return QStringLiteral("npm could not install %1; is its registry in reach?").arg(m_program.package);
    }
    QFile(ready).open(QIODevice::WriteOnly);
    return {};
}

bool ForeignServer::start()
{
    QFile settings(folder() + QLatin1Char('/') + m_program.settingsName);
    if (!settings.open(QIODevice::WriteOnly) || settings.write(m_program.settings) < 0) {
        return false;
    }
    settings.close();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &entry : m_program.environment) {
        const QString value = replaced(entry.section(QLatin1Char('='), 1));
        environment.insert(entry.section(QLatin1Char('='), 0, 0), value);
    }
    QStringList arguments{folder() + QStringLiteral("/node_modules/") + m_program.script};
    for (const QString &argument : m_program.arguments) {
        arguments.append(replaced(argument));
    }
    m_process.setProcessEnvironment(environment);
    m_process.start(QStringLiteral("node"), arguments);
    const auto isOver = [this] { return m_process.state() == QProcess::NotRunning || takesConnections(m_port); };
    return m_process.waitForStarted() && eventually(isOver) && m_process.state() != QProcess::NotRunning;
}

QString ForeignServer::url() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_port);
}

QByteArray ForeignServer::output()
{
    return m_process.readAll();
}

// One for each version.
QString ForeignServer::folder() const
{
    const QByteArray name = QCryptographicHash::hash(m_program.package.toUtf8(), QCryptographicHash::Sha256).toHex();
    return QStringLiteral(FOREIGN_SERVERS_FOLDER "/") + QString::fromLatin1(name.left(16));
}

QString ForeignServer::replaced(QString text) const
{
    text.replace(QLatin1String("%port"), QString::number(m_port));
    return text.replace(QLatin1String("%settings"), folder() + QLatin1Char('/') + m_program.settingsName);
}

} // namespace upstream
