#pragma once

#include "aicontroller/chatrecords.h"

#include <QByteArray>
#include <QJsonArray>
#include <QString>

#include <any>
#include <optional>

namespace tavro::aiassistant {

// The service's messages: the bodies of the three requests, and the two kinds of reply. Pure functions.

/// Paths of the endpoints, appended to the service's base address.
struct Endpoint {
    static QString text();
    static QString picture();
    static QString result();
};

/// One entry of the conversation.
enum class Author { User, Assistant };
QJsonValue message(Author author, const QString &content);

QByteArray textRequestBody(bool deepModel, bool onlineSearch, const QJsonArray &messages, const QJsonArray &mediaList);
QByteArray pictureRequestBody(const PictureGenerateInfo &info);
QByteArray resultRequestBody(bool pictureMode, const QString &reqId);

/// The reply to a text or picture request.
struct GenerationReply {
    enum class Kind { NotJson, NoCode, Refused, Accepted };

    Kind kind = Kind::NotJson;
    std::optional<QString> reqId; ///< Accepted only; without one there is nothing new to ask the result with
    QString message; ///< Refused only: the service's reason
};
GenerationReply readGenerationReply(const QByteArray &body);

/// The reply to a question for the result.
struct ResultReply {
    enum class Kind { NotJson, Working, Failed, NoAnswers, EmptyAnswers, Ready };

    Kind kind = Kind::NotJson;
    QString message; ///< Failed only: the service's reason
    QString answer; ///< Ready only: the text, or the picture's address
    QString description; ///< Ready only: of the picture
    QJsonArray agentCmds; ///< Ready only; empty where there are none
};
ResultReply readResultReply(const QByteArray &body);

/// Both readings of one body: which of them is asked for depends on the request.
struct ServiceReply {
    GenerationReply generation;
    ResultReply result;
};

/// A ServiceReply. For any thread: a body of the largest size takes far longer than a frame.
std::any readServiceReply(const QByteArray &body);

} // namespace tavro::aiassistant
