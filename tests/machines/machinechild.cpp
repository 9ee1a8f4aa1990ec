#include "machinechild.h"

#include "support/waiting.h"

#include <QJsonDocument>

#include <algorithm>

using namespace tavro::testsupport;

// A machine that has ended does nothing more to wait for.
template <typename Condition>
bool MachineChild::comesTrue(Condition holds)
{
    return eventually([&] { return holds() || !isRunning(); }) && holds();
}

MachineChild::MachineChild()
{
    m_process.setProgram(QStringLiteral(MACHINEPROCESS_PROGRAM));
    m_process.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    setEnvironment(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    setEnvironment(QStringLiteral("XDG_DATA_HOME"), m_folder.path());
    setEnvironment(QStringLiteral("XDG_RUNTIME_DIR"), m_folder.path());
}

void MachineChild::setEnvironment(const QString &name, const QString &value)
{
    QProcessEnvironment environment = m_process.processEnvironment();
    environment.insert(name, value);
    m_process.setProcessEnvironment(environment);
}

void MachineChild::start(const QStringList &arguments)
{
    m_events.clear();
    m_process.setArguments(arguments);
    m_process.start();
}

void MachineChild::tell(const QString &operation, const QJsonValue &with)
{
    const QJsonObject line{{QStringLiteral("do"), operation}, {QStringLiteral("with"), with}};
    m_process.write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
}

bool MachineChild::does(const QString &operation, const QJsonValue &with)
{
    tell(operation, with);
    return !state().isEmpty();
}

QJsonObject MachineChild::state()
{
    tell(QStringLiteral("state"), ++m_asked);
    QJsonObject last;
    eventually([&] {
        const QVector<QJsonObject> answers = eventsWith(QStringLiteral("state"));
        if (answers.isEmpty() || answers.last().value(QLatin1String("asked")) != m_asked)
            return !isRunning();
        last = answers.last().value(QLatin1String("state")).toObject();
        return true;
    });
    return last;
}

bool MachineChild::stateBecomes(const QString &key, const QJsonValue &value)
{
    return comesTrue([&] { return state().value(key) == value; });
}

QStringList MachineChild::signalNames()
{
    QStringList names;
    for (const QJsonObject &event : eventsWith(QStringLiteral("signal")))
        names.append(event.value(QLatin1String("signal")).toString());
    return names;
}

QVector<QJsonArray> MachineChild::emissions(const QString &signal)
{
    QVector<QJsonArray> arguments;
    for (const QJsonObject &event : eventsWith(QStringLiteral("signal"))) {
        if (event.value(QLatin1String("signal")) == signal)
            arguments.append(event.value(QLatin1String("with")).toArray());
    }
    return arguments;
}

bool MachineChild::emits(const QString &signal, int count)
{
    return comesTrue([&] { return emissions(signal).size() >= count; });
}

QJsonValue MachineChild::runtimeValue(const QString &what)
{
    QJsonValue value;
    for (const QJsonObject &event : eventsWith(QStringLiteral("runtime"))) {
        if (event.value(QLatin1String("runtime")) == what)
            value = event.value(QLatin1String("value"));
    }
    return value;
}

bool MachineChild::runtimeBecomes(const QString &what, const QJsonValue &value)
{
    return comesTrue([&] { return runtimeValue(what) == value; });
}

QStringList MachineChild::lostMessages()
{
    QStringList names;
    for (const QJsonObject &event : eventsWith(QStringLiteral("runtime"))) {
        if (event.value(QLatin1String("runtime")) == QLatin1String("lost"))
            names.append(event.value(QLatin1String("value")).toString());
    }
    return names;
}

QStringList MachineChild::logLines(const QString &level)
{
    QStringList lines;
    for (const QJsonObject &event : eventsWith(QStringLiteral("log"))) {
        if (event.value(QLatin1String("log")) == level)
            lines.append(event.value(QLatin1String("text")).toString());
    }
    return lines;
}

QStringList MachineChild::complaints()
{
    const QStringList lines = logLines(QStringLiteral("warning")) + logLines(QStringLiteral("error"));
    const QStringList known = m_expected + m_allowed;
    const auto isKnown = [&](const QString &line) {
        return std::any_of(known.cbegin(), known.cend(), [&](const QString &part) { return line.contains(part); });
    };
    QStringList complaints;
    std::remove_copy_if(lines.cbegin(), lines.cend(), std::back_inserter(complaints), isKnown);
    for (const QString &part : qAsConst(m_expected)) {
        if (lines.filter(part).isEmpty())
            complaints.append(QStringLiteral("not logged: ") + part);
    }
    return complaints;
}

void MachineChild::suspend()
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP);
}

void MachineChild::resume()
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGCONT);
}

int MachineChild::status()
{
    const bool ended = eventually([this] { return !isRunning(); });
    return ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

int MachineChild::quit()
{
    tell(QStringLiteral("quit"));
    return status();
}

void MachineChild::collect()
{
    while (m_process.canReadLine())
        m_events.append(QJsonDocument::fromJson(m_process.readLine()).object());
}

QVector<QJsonObject> MachineChild::eventsWith(const QString &key)
{
    collect();
    QVector<QJsonObject> events;
    std::copy_if(m_events.cbegin(), m_events.cend(), std::back_inserter(events),
                 [&](const QJsonObject &event) { return event.contains(key); });
    return events;
}
