#pragma once

#include <QString>
#include <QStringList>

class QCommandLineParser;

namespace tavro::assistantservice {

/// Takes the values out of a command line and remembers the first that is wrong.
class OptionValues {
public:
    /// Keeps a reference to the parser.
    explicit OptionValues(const QCommandLineParser &parser);

    bool isGiven(const char *name) const;
    QString text(const char *name) const;
    /// All values of an option that may come several times.
    QStringList texts(const char *name) const;
    int number(const char *name, int minimum, int maximum);

    /// `reason` goes on from the option's name: "must be a number".
    void fail(const char *name, const QString &reason);
    /// The same without the value.
    void failSecretly(const char *name, const QString &reason);
    /// A sentence; empty while nothing is wrong.
    const QString &error() const { return m_error; }

private:
    const QCommandLineParser &m_parser;
    QString m_error;
};

} // namespace tavro::assistantservice
