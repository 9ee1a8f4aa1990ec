#include "requestbodies.h"

#include "duplicatekeys.h"
#include "jsonreader.h"

#include <QJsonDocument>

namespace tavro::assistantservice {

namespace {

constexpr int longestRequestId = 100;

ServiceError parseObject(const QByteArray &body, QJsonObject &object)
{
    if (repeatsContainerKey(body)) {
        return {ErrorCode::BadRequest, QStringLiteral("The request names a member twice.")};
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(body, &error);
    if (error.error != QJsonParseError::NoError) {
        return {ErrorCode::BadRequest,
                QStringLiteral("The request is not valid JSON (at byte %1: %2).")
                    .arg(error.offset)
                    .arg(error.errorString())};
    }
    if (!document.isObject()) {
        return {ErrorCode::BadRequest, QStringLiteral("The request must be a JSON object.")};
    }
    object = document.object();
    return {};
}

// Reads every entry of a list of objects with `readEntry`, and stops at the first that is wrong.
template <typename ReadEntry>
ServiceError readObjects(const QJsonArray &array, const char *name, ReadEntry readEntry)
{
    int index = 0;
    for (const QJsonValue &value : array) {
        const QString where = QStringLiteral("%1[%2]").arg(QLatin1String(name)).arg(index++);
        if (!value.isObject()) {
            return {ErrorCode::BadRequest, QStringLiteral("\"%1\" must be an object.").arg(where)};
        }
        JsonReader reader(value.toObject(), where + QLatin1Char('.'));
        readEntry(reader);
        if (reader.error()) {
            return reader.error();
        }
    }
    return {};
}

ServiceError readMessages(const QJsonArray &array, const BodyLimits &limits, QVector<ChatMessage> &messages)
{
    messages.reserve(array.size());
    return readObjects(array, "messages", [&](JsonReader &reader) {
        const bool fromAssistant = reader.boolean("type");
        messages.append({fromAssistant, reader.text("content", limits.messageLength)});
    });
}

ServiceError readMediaList(const QJsonArray &array, const BodyLimits &limits, QVector<MediaItem> &mediaList)
{
    mediaList.reserve(array.size());
    return readObjects(array, "mediaList", [&](JsonReader &reader) {
        const QString id = reader.text("id", limits.mediaTextLength);
        mediaList.append({id, reader.text("name", limits.mediaTextLength)});
    });
}

ServiceError checkQuestion(const QVector<ChatMessage> &messages)
{
    if (messages.isEmpty()) {
        return {ErrorCode::BadRequest, QStringLiteral("\"messages\" is empty: there is no question to answer.")};
    }
    if (messages.last().fromAssistant) {
        return {ErrorCode::BadRequest, QStringLiteral("The last entry of \"messages\" must be the user's question.")};
    }
    return {};
}

ServiceError checkSize(const QSize &size, const BodyLimits &limits)
{
    const QSize &least = limits.smallestPicture;
    const QSize &most = limits.largestPicture;
    if (size.width() < least.width() || size.height() < least.height()) {
        return {ErrorCode::BadRequest,
                QStringLiteral("The picture is too small: at least %1 x %2 pixels are needed, %3 x %4 were asked for.")
                    .arg(least.width())
                    .arg(least.height())
                    .arg(size.width())
                    .arg(size.height())};
    }
    if (size.width() > most.width() || size.height() > most.height()) {
        return {ErrorCode::TooLarge,
                QStringLiteral("The picture is too large: at most %1 x %2 pixels are drawn, %3 x %4 were asked for.")
                    .arg(most.width())
                    .arg(most.height())
                    .arg(size.width())
                    .arg(size.height())};
    }
    return {};
}

} // namespace

ServiceError readTextRequest(const QByteArray &body, const BodyLimits &limits, TextRequest &request)
{
    QJsonObject object;
    if (const ServiceError error = parseObject(body, object)) {
        return error;
    }
    JsonReader reader(object);
    request.deepModel = reader.boolean("enableDS");
    request.onlineSearch = reader.boolean("enableNet");
    const QJsonArray messages = reader.array("messages", limits.messages);
    const QJsonArray mediaList = reader.array("mediaList", limits.mediaItems);
    if (reader.error()) {
        return reader.error();
    }
    if (const ServiceError error = readMessages(messages, limits, request.messages)) {
        return error;
    }
    if (const ServiceError error = readMediaList(mediaList, limits, request.mediaList)) {
        return error;
    }
    return checkQuestion(request.messages);
}

ServiceError readPictureRequest(const QByteArray &body, const BodyLimits &limits, PictureRequest &request)
{
    QJsonObject object;
    if (const ServiceError error = parseObject(body, object)) {
        return error;
    }
    constexpr int anyInt = 1000000000;
    JsonReader reader(object);
    request.style = reader.text("style", limits.shortTextLength);
    const int width = reader.wholeNumber("width", -anyInt, anyInt);
    request.size = {width, reader.wholeNumber("height", -anyInt, anyInt)};
    request.superResolution = reader.boolean("useSR");
    request.prompt = reader.text("content", limits.promptLength);
    request.logoEnabled = reader.boolean("enableLogo");
    request.logoPosition = reader.wholeNumber("logoPositon", 0, 255);
    reader.boolean("logoLanguage");
    request.logoOpacity = reader.number("logoOpacity", 0.0, 1.0);
    request.logoText = reader.text("logoContent", limits.shortTextLength);
    return reader.error() ? reader.error() : checkSize(request.size, limits);
}

ServiceError readPollRequest(const QByteArray &body, PollRequest &request)
{
    QJsonObject object;
    if (const ServiceError error = parseObject(body, object)) {
        return error;
    }
    JsonReader reader(object);
    request.picture = reader.boolean("type");
    request.requestId = reader.text("reqId", longestRequestId);
    return reader.error();
}

} // namespace tavro::assistantservice
