#pragma once

#include "openai/transfer.h"

#include <QString>

namespace tavro::assistantservice {

/// Makes the exchange and writes one line about it into the log. `endpoint`: as the line names it, without its query.
UpstreamReply loggedTransfer(const TransferRequest &request, const QString &endpoint, const Patience &patience);

} // namespace tavro::assistantservice
