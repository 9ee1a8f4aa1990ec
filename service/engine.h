#pragma once

#include "serviceerror.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QSize>
#include <QString>
#include <QVector>

#include <atomic>

namespace tavro::assistantservice {

struct ChatMessage {
    bool fromAssistant = false;
    QString content;
};

struct MediaItem {
    QString id;
    QString name;
};

/// A text question: the conversation so far, oldest first, whose last entry is the question.
struct TextRequest {
    bool deepModel = false;
    bool onlineSearch = false;
    QVector<ChatMessage> messages;
    QVector<MediaItem> mediaList;
};

struct PictureRequest {
    QString style;
    QSize size;
    bool superResolution = false;
    QString prompt;
    bool logoEnabled = false;
    int logoPosition = 0;
    double logoOpacity = 0.0;
    QString logoText;
};

/// What an engine made of a request. With an error set, nothing else counts.
struct TextResult {
    ServiceError error;
    QString answer;
    QJsonArray agentCommands;
};

struct PictureResult {
    ServiceError error;
    /// An encoded picture file and its media type.
    QByteArray bytes;
    QByteArray mediaType;
    QString description;
    QJsonArray agentCommands;
};

/// Answers questions and makes pictures. The workers call it from several threads at once; a call may take as long as
/// it needs, and gives up early (with any error) once `cancelled` is set.
class Engine {
public:
    virtual ~Engine() = default;
    virtual TextResult answer(const TextRequest &request, const std::atomic<bool> &cancelled) const = 0;
    virtual PictureResult draw(const PictureRequest &request, const std::atomic<bool> &cancelled) const = 0;
    /// What whoever watches the service should know of the engine. Must not block.
    virtual QJsonObject state() const { return {}; }
};

} // namespace tavro::assistantservice
