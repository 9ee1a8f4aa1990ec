#include "consoleprocess.h"

#include "support/waiting.h"

#include <csignal>

namespace tavro::testsupport {

ConsoleProcess::ConsoleProcess()
{
    m_process.setProgram(QStringLiteral(CONSOLEHOST_PROGRAM));
    m_process.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
    setEnvironment(QStringLiteral("XDG_DATA_HOME"), m_data.path());
    setEnvironment(QStringLiteral("XDG_RUNTIME_DIR"), m_data.path());
}

ConsoleProcess::~ConsoleProcess()
{
    if (!isRunning())
        return;
    m_process.kill();
    m_process.waitForFinished();
}

void ConsoleProcess::setEnvironment(const QString &name, const QString &value)
{
    QProcessEnvironment environment = m_process.processEnvironment();
    environment.insert(name, value);
    m_process.setProcessEnvironment(environment);
}

void ConsoleProcess::writeTo(const QString &file)
{
    m_process.setStandardOutputFile(file);
}

void ConsoleProcess::start(const QStringList &arguments)
{
    m_process.setArguments(arguments);
    m_process.start();
}

void ConsoleProcess::startWithoutInput(const QStringList &arguments)
{
    m_process.setStandardInputFile(QProcess::nullDevice());
    start(arguments);
}

void ConsoleProcess::type(const QString &line)
{
    typeWithoutEnd(line + QLatin1Char('\n'));
}

void ConsoleProcess::typeWithoutEnd(const QString &text)
{
    m_process.write(text.toUtf8());
}

void ConsoleProcess::endInput()
{
    m_process.closeWriteChannel();
}

void ConsoleProcess::sendSignal(int number)
{
    ::kill(static_cast<pid_t>(m_process.processId()), number);
}

int ConsoleProcess::status()
{
    const bool ended = eventually([this] { return !isRunning(); });
    collect();
    return ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

bool ConsoleProcess::says(const QString &text)
{
    return eventually([&] { return err().contains(text); });
}

QString ConsoleProcess::out()
{
    collect();
    return QString::fromUtf8(m_out);
}

QStringList ConsoleProcess::outLines()
{
    return out().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QString ConsoleProcess::err()
{
    collect();
    return QString::fromUtf8(m_err);
}

QString ConsoleProcess::pictureFolder() const
{
    return m_data.path() + QStringLiteral("/consolehost/imageCathe");
}

void ConsoleProcess::collect()
{
    m_out += m_process.readAllStandardOutput();
    m_err += m_process.readAllStandardError();
}

} // namespace tavro::testsupport
