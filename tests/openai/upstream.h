#pragma once

#include "openai/upstreamchat.h"
#include "openai/upstreamsettings.h"
#include "support/scriptedserver.h"

#include <QJsonArray>

/// A server with the OpenAI-compatible interface, as far as the tests script it.
namespace upstream {

using tavro::testsupport::ScriptedAnswer;
using tavro::testsupport::ScriptedServer;

inline const QByteArray chatTarget = QByteArrayLiteral("/v1/chat/completions");
inline const QByteArray pictureTarget = QByteArrayLiteral("/v1/images/generations");
inline const QByteArray modelsTarget = QByteArrayLiteral("/v1/models");

/// A chat completion with this message.
ScriptedAnswer message(const QJsonObject &message, const QString &finishReason = QStringLiteral("stop"));
/// One with this text.
ScriptedAnswer text(const QString &text, const QString &finishReason = QStringLiteral("stop"));
/// A message that calls one tool.
QJsonObject callingMessage(const QString &tool, const QJsonObject &arguments);
/// A failure in the interface's usual form.
ScriptedAnswer failure(int status, const QString &text, const QJsonValue &code = QJsonValue::Null);

tavro::assistantservice::UpstreamAddress addressOf(const ScriptedServer &server);
/// Settings with a model, a time-out that no test reaches, and waits of a millisecond.
tavro::assistantservice::ChatSettings chatSettings(const ScriptedServer &server);
/// One question, with a media library of three items: m1 "Harbour.mp4", m2 "Sunset Beach", m3 "Sunset City".
tavro::assistantservice::TextRequest question(const QString &text);
/// What the model makes of it.
tavro::assistantservice::TextResult ask(const ScriptedServer &server, const QString &question);

} // namespace upstream
