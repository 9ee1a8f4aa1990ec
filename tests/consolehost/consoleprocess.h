#pragma once

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

namespace tavro::testsupport {

/// One run of consolehost, with a data folder of its own.
class ConsoleProcess {
public:
    ConsoleProcess();
    ~ConsoleProcess(); ///< kills a program that still runs

    void setEnvironment(const QString &name, const QString &value);
    /// Before the start: standard output goes into this file.
    void writeTo(const QString &file);
    void start(const QStringList &arguments);
    void startWithoutInput(const QStringList &arguments);

    void type(const QString &line);
    void typeWithoutEnd(const QString &text);
    void endInput();
    void sendSignal(int number);

    /// Waits for the end. The exit status; -1 where the program crashed or goes on.
    int status();

    /// Waits until standard error has @p text in it.
    bool says(const QString &text);

    QString out(); ///< standard output so far
    QStringList outLines();
    QString err(); ///< standard error so far
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }

    /// Where the controller saves pictures in this run.
    QString pictureFolder() const;

private:
    void collect();

    QTemporaryDir m_data;
    QProcess m_process;
    QByteArray m_out;
    QByteArray m_err;
};

} // namespace tavro::testsupport
