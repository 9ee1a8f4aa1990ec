#pragma once

#include <QFile>
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
    /// Starts it with a full pipe for its standard output. SIGTERM ends it as soon as it serves, also where it comes
    /// early.
    bool startIntoAFullPipe();
    /// Starts it with exactly these arguments and waits for its end.
    int runToEnd(const QStringList &arguments);
    /// Before it is started: how much it may have.
    void limitAddressSpace(qint64 bytes);
    void limitFiles(int count);
    /// Before it is started: its log goes into a pipe that nobody reads but readLog().
    bool logIntoPipe();
    QByteArray readLog();
    void setEnvironment(const QString &name, const QString &value);
    void signal(int number);
    /// Waits for its end; -1 where it does not come or was not a normal one.
    int exitCode();

    int port() const { return m_port; }
    QUrl url(const QString &path) const;
    QByteArray standardError();
    QByteArray standardOutput() { return m_process.readAllStandardOutput(); }
    /// A file in the folder that the service keeps its own files in.
    QString stateFile(const QString &name) const;

private:
    void limit(const QString &option);
    bool makePipe();
    bool startAt(const QString &host, const QStringList &options);
    QString logFile() const;

    QTemporaryDir m_folder;
    QProcess m_process;
    QStringList m_prefix;
    QFile m_pipe;
    int m_port = 0;
};
