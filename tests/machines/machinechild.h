#pragma once

#include "childprocess.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVector>

/// One machine of a group as a process of its own: machineprocess, told what to do and read line by line.
///
/// All that waits runs the event loop, with the limit of the test library.
class MachineChild {
public:
    MachineChild();

    void setEnvironment(const QString &name, const QString &value);
    void start(const QStringList &arguments);

    /// Carries out one of machineprocess's operations there; they keep their order.
    void tell(const QString &operation, const QJsonValue &with = {});
    bool does(const QString &operation, const QJsonValue &with = {}); ///< tells, and waits until it is done

    QJsonObject state(); ///< after all that was told so far; empty where no answer comes
    bool stateBecomes(const QString &key, const QJsonValue &value);

    /// The controller's signals so far, by name and in their order.
    QStringList signalNames();
    /// The arguments of each emission of one signal.
    QVector<QJsonArray> emissions(const QString &signal);
    bool emits(const QString &signal, int count = 1); ///< waits for so many

    /// What the runtime told last about "connection", "serverPresent", "serving" or "anotherServer".
    QJsonValue runtimeValue(const QString &what);
    bool runtimeBecomes(const QString &what, const QJsonValue &value);
    QStringList lostMessages(); ///< names of the messages that the runtime reported as lost

    QStringList logLines(const QString &level); ///< "info", "warning", "error"
    /// Warnings and errors with @p fragment in them are no complaint; at least one has to come.
    void expectLog(const QString &fragment) { m_expected.append(fragment); }
    void allowLog(const QString &fragment) { m_allowed.append(fragment); } ///< the same, but none has to come
    /// The warnings and errors that nothing expected, and the fragments that did not come.
    QStringList complaints();

    void suspend(); ///< it goes on only after resume()
    void resume();
    void killNow() { m_process.killNow(); }
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    /// Waits for the end. The exit status; -1 where it crashed or goes on.
    int status();
    int quit(); ///< tells it to, and gives the status
    void endInput() { m_process.closeWriteChannel(); }

private:
    template <typename Condition>
    bool comesTrue(Condition holds);
    void collect();
    QVector<QJsonObject> eventsWith(const QString &key);

    QTemporaryDir m_folder;
    ChildProcess m_process;
    QVector<QJsonObject> m_events;
    QStringList m_expected;
    QStringList m_allowed;
    int m_asked = 0;
};
