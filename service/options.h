#pragma once

#include "assistant.h"
#include "http/httpserver.h"
#include "listenaddress.h"

#include <QStringList>

namespace tavro::assistantservice {

/// Everything that the command line and the environment set.
struct Options {
    ListenAddress listen;
    QString engine;
    QString logLevel;
    AssistantSettings assistant;
    HttpSettings http;
};

/// What to do after reading the command line: run with the options, or print the text and end with the exit code.
struct OptionsResult {
    bool run = false;
    Options options;
    QString text;
    int exitCode = 0;
};

/// `arguments` begin with the program's name; `environmentToken` counts where --token is not given.
OptionsResult readOptions(const QStringList &arguments, const QByteArray &environmentToken);

} // namespace tavro::assistantservice
