#pragma once

#include "nats/natssettings.h"
#include "options.h"
#include "settingsfile.h"

#include <QCommandLineParser>
#include <QStringList>

#include <optional>

namespace tavro::playout {

/// Reads the command line and the INI file. The command line holds over the environment, which holds over the file.
class OptionReader {
public:
    /// @p environment gives the values of environment variables. @p standardConfig: the INI file that is read where the
    /// command line names none; it need not exist.
    OptionReader(runtime::SettingLookup environment, const QString &standardConfig);

    /// The options, where the command line (with the program's name first) asks to run with them. Else text() is to be
    /// printed, and isWrong() tells whether it is an error. Needs the application object.
    std::optional<Options> read(const QStringList &arguments);

    const QString &text() const { return m_text; }
    bool isWrong() const { return m_wrong; }

private:
    void readFile();
    Options readAll();
    QString text(const QString &name, const QString &preset = {}) const;
    QString path(const QString &name, const QString &preset = {}) const;
    QString headerValue(const QString &name, const QString &value);
    QString service();
    QString token() const;
    QString mediaFolder();
    QString readableFile(const QString &name, const QString &preset);
    Role role();
    runtime::NatsOptions nats();
    std::chrono::seconds seconds(const QString &name, int preset);
    void fail(const QString &why);

    QCommandLineParser m_parser;
    SettingsFile m_file;
    runtime::SettingLookup m_environment;
    QString m_standardConfig;
    QString m_text;
    bool m_wrong = false;
};

} // namespace tavro::playout
