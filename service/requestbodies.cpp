#include "requestbodies.h"

#include "jsonform.h"

namespace tavro::assistantservice {

namespace {

constexpr int longestRequestId = 100;

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
    ChatMessage message;
    JsonForm messageForm;
    messageForm.boolean("type", message.fromAssistant);
    messageForm.text("content", limits.messageLength, message.content);
    MediaItem item;
    JsonForm itemForm;
    itemForm.text("id", limits.mediaTextLength, item.id);
    itemForm.text("name", limits.mediaTextLength, item.name);
    JsonForm form;
    form.boolean("enableDS", request.deepModel);
    form.boolean("enableNet", request.onlineSearch);
    form.objects("messages", limits.messages, messageForm, [&] { request.messages.append(message); });
    form.objects("mediaList", limits.mediaItems, itemForm, [&] { request.mediaList.append(item); });
    const ServiceError error = form.fill(body);
    return error ? error : checkQuestion(request.messages);
}

ServiceError readPictureRequest(const QByteArray &body, const BodyLimits &limits, PictureRequest &request)
{
    constexpr int anyInt = 1000000000;
    bool logoLanguage = false;
    int width = 0;
    int height = 0;
    JsonForm form;
    form.text("style", limits.shortTextLength, request.style);
    form.wholeNumber("width", -anyInt, anyInt, width);
    form.wholeNumber("height", -anyInt, anyInt, height);
    form.boolean("useSR", request.superResolution);
    form.text("content", limits.promptLength, request.prompt);
    form.boolean("enableLogo", request.logoEnabled);
    form.wholeNumber("logoPositon", 0, 255, request.logoPosition);
    form.boolean("logoLanguage", logoLanguage);
    form.number("logoOpacity", 0.0, 1.0, request.logoOpacity);
    form.text("logoContent", limits.shortTextLength, request.logoText);
    const ServiceError error = form.fill(body);
    request.size = {width, height};
    return error ? error : checkSize(request.size, limits);
}

ServiceError readPollRequest(const QByteArray &body, PollRequest &request)
{
    JsonForm form;
    form.boolean("type", request.picture);
    form.text("reqId", longestRequestId, request.requestId);
    return form.fill(body);
}

} // namespace tavro::assistantservice
