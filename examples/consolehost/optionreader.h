#pragma once

#include "options.h"

#include <QCommandLineParser>

#include <optional>

namespace tavro::consolehost {

/// Reads the command line.
class OptionReader {
public:
    OptionReader();

    /// The options, where the command line (with the program's name first) asks to run with them. Else text() is to be
    /// printed, and isWrong() tells whether it is an error. Needs the application object.
    std::optional<Options> read(const QStringList &arguments);

    QString text() const { return m_text; }
    bool isWrong() const { return m_wrong; }

private:
    Options readAll();
    QString service();
    QString headerValue(const QString &option, const QString &fallback = {});
    QString mediaFolder();
    aiassistant::PictureGenerateInfo picture();
    std::vector<Step> questions(const aiassistant::PictureGenerateInfo &defaults);
    std::chrono::seconds seconds(const QString &option);
    void check(const QString &option, const QString &problem, const QString &value);
    void fail(const QString &why);

    QCommandLineParser m_parser;
    QString m_text;
    bool m_wrong = false;
};

} // namespace tavro::consolehost
