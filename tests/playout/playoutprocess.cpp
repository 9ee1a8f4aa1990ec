#include "playout/playoutprocess.h"

#include "support/waiting.h"

#include <QFile>

#include <csignal>
#include <sys/prctl.h>

namespace tavro::testsupport {

namespace {

constexpr std::chrono::minutes longestRun{3};

/// Ends with the test, however that ends.
class ChildProcess : public QProcess {
protected:
    void setupChildProcess() override { prctl(PR_SET_PDEATHSIG, SIGKILL); }
};

} // namespace

PlayoutProcess::PlayoutProcess()
    : m_process(std::make_unique<ChildProcess>())
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QLatin1String(name));
    for (const char *name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
        environment.insert(QLatin1String(name), m_folder.path());
    m_process->setProcessEnvironment(environment);
    m_process->setWorkingDirectory(m_folder.path());
}

PlayoutProcess::~PlayoutProcess()
{
    kill();
}

void PlayoutProcess::setEnvironment(const QString &name, const QString &value)
{
    QProcessEnvironment environment = m_process->processEnvironment();
    environment.insert(name, value);
    m_process->setProcessEnvironment(environment);
}

void PlayoutProcess::start(const QStringList &arguments, const QString &script)
{
    QFile file(path(QStringLiteral("test.play")));
    if (!file.open(QFile::WriteOnly))
        return;
    file.write(script.toUtf8());
    file.close();
    m_process->start(QStringLiteral(PLAYOUT_PROGRAM),
                     QStringList(arguments) << QStringLiteral("--script") << file.fileName());
    m_started = m_process->waitForStarted();
}

void PlayoutProcess::kill()
{
    m_process->kill();
    m_process->waitForFinished();
}

void PlayoutProcess::terminate()
{
    m_process->terminate();
}

QString PlayoutProcess::failure()
{
    if (!m_started)
        return QStringLiteral("it did not start: ") + m_process->errorString();
    if (!eventually([this] { return !isRunning(); }, longestRun)) {
        kill();
        return QStringLiteral("it did not end: ") + errors();
    }
    if (m_process->exitStatus() != QProcess::NormalExit)
        return QStringLiteral("it crashed: ") + errors();
    return m_process->exitCode() == 0 ? QString() : QStringLiteral("it failed: ") + errors();
}

QString PlayoutProcess::errors()
{
    // The script's complaint is the last line.
    return QString::fromUtf8(m_process->readAllStandardError()).right(600);
}

} // namespace tavro::testsupport
