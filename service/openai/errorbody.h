#pragma once

#include "openai/upstreamreply.h"

#include <QString>

#include <initializer_list>

namespace tavro::assistantservice {

/// What an answer's body is, whatever its headers say.
enum class BodyKind { Empty, Page, EventStream, Json, Other };

BodyKind bodyKind(const UpstreamReply &reply);

/// What the server says of its failure, in one line; empty where it says nothing readable.
QString upstreamMessage(const QByteArray &body);

/// The code, the type and the member that a failure's body names, with blanks between.
QString upstreamErrorCode(const QByteArray &body);

/// Whether the text holds one of the parts, in capitals or not.
bool containsAny(const QString &text, std::initializer_list<const char *> parts);

} // namespace tavro::assistantservice
