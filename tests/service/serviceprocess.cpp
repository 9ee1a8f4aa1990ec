#include "serviceprocess.h"

#include <QFile>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int patienceMs = 30000;

using Page = std::array<char, 4096>;

} // namespace

ServiceProcess::ServiceProcess()
{
    m_process.setProgram(QStringLiteral(ASSISTANTSERVICE_PROGRAM));
    m_process.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
    setEnvironment(QStringLiteral("XDG_STATE_HOME"), m_folder.path());
    // Into a file: a pipe that nobody reads would fill up and stop the service.
    m_process.setStandardErrorFile(logFile());
}

ServiceProcess::~ServiceProcess()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(patienceMs);
    }
}

bool ServiceProcess::start(const QStringList &options)
{
    return startAt(QStringLiteral("127.0.0.1"), options);
}

bool ServiceProcess::startEverywhere(const QStringList &options)
{
    return startAt(QStringLiteral("0.0.0.0"), options);
}

bool ServiceProcess::startAt(const QString &host, const QStringList &options)
{
    m_process.setArguments(m_prefix + QStringList{QStringLiteral("--listen"), host + QStringLiteral(":0")} + options);
    m_process.start();
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(patienceMs)) {
            return false;
        }
    }
    const QString line = QString::fromUtf8(m_process.readLine()).trimmed();
    m_port = QUrl(line.section(QLatin1Char(' '), -1)).port(0);
    return line.startsWith(QStringLiteral("assistantservice listening on http://%1:").arg(host)) && m_port > 0;
}

int ServiceProcess::runToEnd(const QStringList &arguments)
{
    m_process.setArguments(m_prefix + arguments);
    m_process.start();
    return exitCode();
}

void ServiceProcess::limitAddressSpace(qint64 bytes)
{
    limit(QStringLiteral("--as=%1").arg(bytes));
}

void ServiceProcess::limitFiles(int count)
{
    limit(QStringLiteral("--nofile=%1").arg(count));
}

void ServiceProcess::limit(const QString &option)
{
    m_prefix = QStringList{option, m_process.program()};
    m_process.setProgram(QStringLiteral("prlimit"));
}

bool ServiceProcess::makePipe()
{
    m_pipe.setFileName(m_folder.filePath(QStringLiteral("pipe")));
    const QByteArray name = QFile::encodeName(m_pipe.fileName());
    // Open for both, so that neither end waits for the other.
    const int descriptor = ::mkfifo(name.constData(), 0600) == 0 ? ::open(name.constData(), O_RDWR | O_NONBLOCK) : -1;
    return descriptor >= 0 && m_pipe.open(descriptor, QFile::ReadWrite | QFile::Unbuffered, QFile::AutoCloseHandle);
}

bool ServiceProcess::logIntoPipe()
{
    m_process.setStandardErrorFile(m_folder.filePath(QStringLiteral("pipe")));
    return makePipe();
}

bool ServiceProcess::startIntoAFullPipe()
{
    m_process.setStandardOutputFile(m_folder.filePath(QStringLiteral("pipe")));
    const bool made = makePipe();
    const Page page{};
    while (::write(m_pipe.handle(), page.data(), page.size()) > 0) { }
    m_process.setArguments({QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0")});
    // It inherits the mask: a signal that comes before it has one of its own waits too.
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    m_process.start();
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
    return made && m_process.waitForStarted(patienceMs);
}

QByteArray ServiceProcess::readLog()
{
    QByteArray log;
    Page page{};
    for (ssize_t count = 0; (count = ::read(m_pipe.handle(), page.data(), page.size())) > 0;) {
        log.append(page.data(), static_cast<int>(count));
    }
    return log;
}

void ServiceProcess::setEnvironment(const QString &name, const QString &value)
{
    QProcessEnvironment environment = m_process.processEnvironment();
    environment.insert(name, value);
    m_process.setProcessEnvironment(environment);
}

void ServiceProcess::signal(int number)
{
    ::kill(static_cast<pid_t>(m_process.processId()), number);
}

int ServiceProcess::exitCode()
{
    const bool ended = m_process.state() == QProcess::NotRunning || m_process.waitForFinished(patienceMs);
    return ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

QUrl ServiceProcess::url(const QString &path) const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(path));
}

QByteArray ServiceProcess::standardError()
{
    QFile file(logFile());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString ServiceProcess::stateFile(const QString &name) const
{
    return m_folder.filePath(QStringLiteral("assistantservice/") + name);
}

QString ServiceProcess::logFile() const
{
    return m_folder.filePath(QStringLiteral("log"));
}
