#pragma once

#include "openai/upstreamreply.h"

#include <curl/curl.h>

namespace tavro::assistantservice {

/// What a transfer's end without an answer means. `text`: libcurl's words on it.
UpstreamReply::Outcome outcomeOf(CURLcode code, CURL *handle, const char *text);

} // namespace tavro::assistantservice
