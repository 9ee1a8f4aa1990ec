#pragma once

#include "assistant.h"
#include "callerrules.h"
#include "environment.h"
#include "http/httpserver.h"
#include "listenaddress.h"

#include <QStringList>

namespace tavro::assistantservice {

/// Everything that the command line and the environment set.
struct Options {
    ListenAddress listen;
    ServiceNames names;
    /// Where the token is to be read from, or to be made; empty where it stands in `assistant`, or nobody needs one.
    QString tokenFile;
    QString logLevel;
    AssistantSettings assistant;
    HttpSettings http;
    /// Set for the engine that has servers do the work; without it the built-in one does.
    std::optional<UpstreamOptions> upstream;
};

/// What to do after reading the command line: run with the options, or print the text and end with the exit code.
struct OptionsResult {
    bool run = false;
    Options options;
    QString text;
    int exitCode = 0;
};

/// `arguments` begin with the program's name.
OptionsResult readOptions(const QStringList &arguments, const Environment &environment);

} // namespace tavro::assistantservice
