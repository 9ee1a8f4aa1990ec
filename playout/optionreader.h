#pragma once

#include "nats/natssettings.h"
#include "options.h"
#include "settingsfile.h"

#include <QCommandLineParser>
#include <QHash>
#include <QStringList>

#include <optional>

namespace tavro::playout {

struct OptionInfo;

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
    std::optional<QString> environmentValue(const OptionInfo &info) const;
    QString value(const OptionInfo &info) const;
    QHash<QString, QString> givers() const;
    void check(const QString &name, const QString &problem, const QString &value);
    QString headerValue(const QString &name);
    QString service();
    QString path(const QString &name, QString (*problemOf)(const QString &path));
    QString script();
    Role role();
    runtime::NatsOptions nats();
    std::chrono::seconds seconds(const QString &name);
    void fail(const QString &why);

    QCommandLineParser m_parser;
    SettingsFile m_file;
    runtime::SettingLookup m_environment;
    QString m_standardConfig;
    QString m_config; // the INI file, whether it is there or not
    QString m_text;
    bool m_wrong = false;
};

} // namespace tavro::playout
