#pragma once

#include "aicontroller/chatrecords.h"

#include <QByteArray>

namespace tavro::playout {

/// True for the names of the two messages that carry a question.
bool isQuestion(const QByteArray &name);

/// True for the names of the messages that end a question.
bool isOutcome(const QByteArray &name);

/// The question in the payload of the message @p name, to tell the panel what became of it. A payload that is not one
/// gives a question without text.
aiassistant::ChatItemBasic questionIn(const QByteArray &name, const QByteArray &payload);

} // namespace tavro::playout
