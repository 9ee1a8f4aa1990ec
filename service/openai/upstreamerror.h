#pragma once

#include "openai/upstreamclient.h"
#include "serviceerror.h"

namespace tavro::assistantservice {

/// What the server says of its failure, in one line; empty where it says nothing readable.
QString upstreamMessage(const QByteArray &body);

/// The error of an exchange that brought no answer. `server`: see outcomeText().
ServiceError unansweredError(UpstreamReply::Outcome outcome, const QString &server);

/// The failure in words for the operator. `model`: the name that was asked for, empty where none was.
ServiceError upstreamError(const UpstreamReply &reply, const UpstreamAddress &address, const QString &model);

/// A good status, but nothing in the body that the interface knows.
ServiceError unusableAnswer(const UpstreamReply &reply, const UpstreamAddress &address);

/// The conversation is longer than the model can read.
bool isContextTooLong(const UpstreamReply &reply);

/// The server refuses the request because of this member of it.
bool refusesMember(const UpstreamReply &reply, const char *member);

/// No more requests are paid for; waiting does not help.
bool isQuotaSpent(const UpstreamReply &reply);

} // namespace tavro::assistantservice
