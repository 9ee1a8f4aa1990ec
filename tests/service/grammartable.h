#pragma once

#include "engine.h"

#include <QJsonArray>

#include <initializer_list>

/// What the tables of sentences share: rows of what a user says, the commands that come of it and a part of the answer.
namespace grammartable {

using tavro::assistantservice::ChatMessage;
using tavro::assistantservice::MediaItem;
using tavro::assistantservice::TextResult;

/// "0 layerId=2 mediaId=m1", the commands with "; " between them.
QString written(const QJsonArray &commands);

/// The user's messages, with " || " between them; what the assistant said in between does not count.
QVector<ChatMessage> conversation(const QString &messages);

TextResult ask(const QString &messages, const QVector<MediaItem> &media);

/// Items whose ids are their names.
QVector<MediaItem> libraryOf(std::initializer_list<const char *> names);

void columns();
void row(const char *messages, const char *commands, const char *answer = "");
/// Checks the current row.
void check(const QVector<MediaItem> &media);

} // namespace grammartable
