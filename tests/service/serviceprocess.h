#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>

/// assistantservice as its own process on a free port of this machine.
class ServiceProcess {
public:
    ServiceProcess();
    ~ServiceProcess();

    /// Starts it and waits until it takes connections.
    bool start(const QStringList &options = {});
    /// The same, but open to other machines too.
    bool startEverywhere(const QStringList &options = {});
    /// Starts it with exactly these arguments and waits for its end.
    int runToEnd(const QStringList &arguments);
    void setEnvironment(const QString &name, const QString &value);
    void signal(int number);
    /// Waits for its end; -1 where it does not come or was not a normal one.
    int exitCode();

    int port() const { return m_port; }
    QUrl url(const QString &path) const;
    QByteArray standardError();
    /// A file in the folder that the service keeps its own files in.
    QString stateFile(const QString &name) const;

private:
    bool startAt(const QString &host, const QStringList &options);
    QString logFile() const;

    QTemporaryDir m_folder;
    QProcess m_process;
    int m_port = 0;
};
