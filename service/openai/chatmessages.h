#pragma once

#include "engine.h"

#include <QJsonArray>

namespace tavro::assistantservice {

/// The conversation as chat templates want it: from the user's first message on, the two sides in turn. What one side
/// said several times in a row, as after a question that failed, becomes one message. Older messages are left out where
/// there are more than are sent.
QVector<ChatMessage> alternating(const QVector<ChatMessage> &messages);

/// Leaves out the older half, and begins with the user again. False where nothing can be left out.
bool dropOlderHalf(QVector<ChatMessage> &messages);

/// The messages of a chat request: what the model is told about its task, then the conversation, whose first message
/// begins with the data. A message of their own would be two of the user's in a row.
QJsonArray chatMessages(const QString &instructions, const QString &data, const QVector<ChatMessage> &messages);

} // namespace tavro::assistantservice
