#pragma once

#include "assistant.h"
#include "http/httpserver.h"
#include "listenaddress.h"
#include "openai/upstreamoptions.h"

#include <QStringList>

namespace tavro::assistantservice {

/// Everything that the command line and the environment set.
struct Options {
    ListenAddress listen;
    QString logLevel;
    AssistantSettings assistant;
    HttpSettings http;
    /// Set for the engine that has servers do the work; without it the built-in one does.
    std::optional<UpstreamOptions> upstream;
};

/// What the environment says.
struct Environment {
    /// Counts where --token is not given.
    QByteArray token;
    UpstreamKeys upstreamKeys;
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
