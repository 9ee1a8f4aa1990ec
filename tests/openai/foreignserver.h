#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace upstream {

/// A program from the npm registry that speaks the OpenAI-compatible interface, as others understood it.
struct ForeignProgram {
    /// Package and version, as npm takes it: "name@1.2.3".
    QString package;
    /// What Node.js runs, below the package's folder.
    QString script;
    /// The settings file's name and content.
    QString settingsName;
    QByteArray settings;
    /// "%port" and "%settings" are replaced.
    QStringList arguments;
    /// "NAME=value", with the same replacements.
    QStringList environment;
};

/// Installs such a program into the build tree, once, and runs it on a free loopback port.
class ForeignServer {
public:
    explicit ForeignServer(ForeignProgram program);
    ~ForeignServer();
    ForeignServer(const ForeignServer &) = delete;
    ForeignServer &operator=(const ForeignServer &) = delete;

    /// Why it cannot be had on this machine; empty where it is installed. Gives up after two minutes.
    QString install();
    /// Waits until it takes connections; false where it ends before.
    bool start();

    QString url() const;
    /// What it has printed, for failures.
    QByteArray output();

private:
    QString folder() const;
    QString replaced(QString text) const;

    const ForeignProgram m_program;
    const quint16 m_port;
    QProcess m_process;
};

} // namespace upstream
