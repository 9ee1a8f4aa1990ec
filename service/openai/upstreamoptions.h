#pragma once

#include "openai/upstreamsettings.h"
#include "optionvalues.h"

#include <optional>

namespace tavro::assistantservice {

/// Keys from the environment; on a command line all users of the machine could read them.
struct UpstreamKeys {
    QByteArray chat;
    /// Empty: the other one, where both servers are the same.
    QByteArray pictures;
};

/// The servers that the options name.
struct UpstreamOptions {
    ChatSettings chat;
    /// Nothing: pictures are drawn by rules.
    std::optional<PictureSettings> pictures;
};

/// Adds the options to a parser.
void addUpstreamOptions(QCommandLineParser &parser);

/// Reads them for `--engine openai`; `values` remembers what is wrong.
UpstreamOptions readUpstreamOptions(OptionValues &values, const UpstreamKeys &keys);

/// The first of the options that was given, for other engines, to which they mean nothing; null where none was.
const char *givenUpstreamOption(const OptionValues &values);

} // namespace tavro::assistantservice
