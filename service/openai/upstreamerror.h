#pragma once

#include "openai/upstreamaddress.h"
#include "openai/upstreamreply.h"
#include "serviceerror.h"

namespace tavro::assistantservice {

/// The error of an exchange that brought no answer. `server`: see outcomeText().
ServiceError unansweredError(UpstreamReply::Outcome outcome, const QString &server);

/// The failure in words for the operator. `model`: the name that was asked for, empty where none was.
ServiceError upstreamError(const UpstreamReply &reply, const UpstreamAddress &address, const QString &model);

/// A good status, but nothing in the body that the interface knows. `member`: what should be there, such as "choices".
ServiceError unusableAnswer(const UpstreamReply &reply, const UpstreamAddress &address, const char *member);

/// The conversation is longer than the model can read.
bool isContextTooLong(const UpstreamReply &reply);

/// The server refuses the request because of this member of it. One that fails over it (status 500) counts, too.
bool refusesMember(const UpstreamReply &reply, const char *member);

/// The server has to be started in another way before it takes tools; asking again does not help.
bool lacksToolSetup(const UpstreamReply &reply);

/// No more requests are paid for; waiting does not help.
bool isQuotaSpent(const UpstreamReply &reply);

} // namespace tavro::assistantservice
