#pragma once

#include "environment.h"
#include "optionvalues.h"

namespace tavro::assistantservice {

/// Where the token that clients must send comes from. Both are empty where everybody is let in.
struct TokenChoice {
    QByteArray token;
    /// Holds the token, or is to be made with one.
    QString file;
};

void addTokenOptions(QCommandLineParser &parser);

/// A token is asked for where other machines reach `listenHost`, unless the command line says otherwise.
TokenChoice readTokenChoice(OptionValues &values, const Environment &environment, const QByteArray &listenHost);

} // namespace tavro::assistantservice
