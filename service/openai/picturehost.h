#pragma once

#include "openai/patience.h"
#include "openai/upstreamreply.h"
#include "serviceerror.h"

#include <QUrl>

namespace tavro::assistantservice {

/// Fetches a picture from the address that a model's server has named, which may be anywhere: over http and https,
/// through at most five redirects, in the public net. `upstream`: where the model's server itself is; a picture may be
/// there, too, where that is this machine or a network of one's own. No key is sent.
UpstreamReply fetchPicture(const QUrl &url, AddressClass upstream, qint64 largest, const Patience &patience);

/// The failure in words for the operator. What the host says is not repeated: it is nobody whom he has chosen.
ServiceError pictureHostError(const UpstreamReply &reply, const QUrl &url);

} // namespace tavro::assistantservice
