#include "support/natsserver.h"

#include "support/waiting.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

#include <csignal>
#include <sys/prctl.h>

namespace tavro::testsupport {

namespace {

class DyingWithItsParent : public QProcess {
protected:
    void setupChildProcess() override { ::prctl(PR_SET_PDEATHSIG, SIGKILL); }
};

QString authorization(const NatsServer::Options &options)
{
    if (!options.token.isEmpty())
        return QStringLiteral("authorization { token: \"%1\" }\n").arg(options.token);
    if (!options.user.isEmpty())
        return QStringLiteral("authorization { user: \"%1\", password: \"%2\" }\n").arg(options.user, options.password);
    return {};
}

QString tls(const NatsServer::Options &options)
{
    if (options.certificateFile.isEmpty())
        return {};
    return QStringLiteral("tls { cert_file: \"%1\", key_file: \"%2\" }\n")
        .arg(options.certificateFile, options.keyFile);
}

QString limits(const NatsServer::Options &options)
{
    return options.maxPayload > 0 ? QStringLiteral("max_payload: %1\n").arg(options.maxPayload) : QString();
}

} // namespace

NatsServer::NatsServer() = default;

NatsServer::NatsServer(const Options &options)
    : m_options(options)
{ }

NatsServer::~NatsServer()
{
    kill();
}

bool NatsServer::start()
{
    if (!writeConfiguration())
        return false;
    m_process = std::make_unique<DyingWithItsParent>();
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    m_process->start(QStringLiteral("nats-server"), {QStringLiteral("-c"), m_folder.filePath(QStringLiteral("conf"))});
    return waitUntilReady();
}

void NatsServer::kill()
{
    if (!m_process)
        return;
    m_process->kill();
    m_process->waitForFinished();
    m_process.reset();
}

void NatsServer::suspend()
{
    ::kill(static_cast<pid_t>(m_process->processId()), SIGSTOP);
}

void NatsServer::resume()
{
    ::kill(static_cast<pid_t>(m_process->processId()), SIGCONT);
}

QString NatsServer::url() const
{
    return QStringLiteral("nats://127.0.0.1:%1").arg(m_port);
}

bool NatsServer::writeConfiguration()
{
    QFile file(m_folder.filePath(QStringLiteral("conf")));
    const QString text = QStringLiteral("listen: \"127.0.0.1:%1\"\n").arg(m_port == 0 ? -1 : int(m_port))
        + limits(m_options) + authorization(m_options) + tls(m_options) + m_options.more;
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0;
    if (!isWritten)
        m_errorText = file.errorString();
    return isWritten;
}

bool NatsServer::waitUntilReady()
{
    const QRegularExpression listening(QStringLiteral("Listening for client connections on 127\\.0\\.0\\.1:(\\d+)"));
    QString printed;
    QElapsedTimer timer;
    timer.start();
    while (!printed.contains(QLatin1String("Server is ready")) && timer.elapsed() < waitLimit.count()) {
        if (!m_process->waitForReadyRead(static_cast<int>(waitLimit.count())))
            break;
        printed += QString::fromUtf8(m_process->readAll());
    }
    const auto match = listening.match(printed);
    if (match.hasMatch())
        m_port = static_cast<quint16>(match.captured(1).toUInt());
    else
        m_errorText = printed.isEmpty() ? m_process->errorString() : printed;
    return match.hasMatch();
}

} // namespace tavro::testsupport
