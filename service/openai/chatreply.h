#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QVector>

#include <optional>

namespace tavro::assistantservice {

/// A function that the model wants called.
struct ToolCall {
    QString name;
    QJsonObject arguments;
    /// The arguments are a JSON object.
    bool isReadable = false;
};

/// What a model answered.
struct ChatReply {
    /// Without what the model thought to itself, free of invisible characters, and of a bounded length.
    QString text;
    QVector<ToolCall> calls;
    /// The text held a call, in place of calling. It is left out.
    bool callsAreText = false;
    /// The text was longer than is taken.
    bool isShortened = false;
    /// The answer came to the limit of its length.
    bool isCut = false;
    /// The server's filter held the answer back.
    bool isFiltered = false;
};

/// Reads the body of a chat completion; nothing where it holds no answer.
std::optional<ChatReply> readChatReply(const QByteArray &body);

} // namespace tavro::assistantservice
