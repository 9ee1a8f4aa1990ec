#include "builtin/builtinengine.h"

#include "builtin/agentcommands.h"
#include "builtin/conversation.h"
#include "builtin/picturewish.h"
#include "builtin/wording.h"
#include "pictures/picturepainter.h"

namespace tavro::assistantservice {

namespace {

QString exampleName(const QVector<MediaItem> &media)
{
    return media.isEmpty() || media.first().name.isEmpty() ? QStringLiteral("Harbour") : media.first().name;
}

} // namespace

TextResult BuiltinEngine::answer(const TextRequest &request, const std::atomic<bool> &) const
{
    const QString &question = request.messages.last().content;
    const Language language = detectLanguage(question);
    const MediaNames names(request.mediaList);
    Understanding understanding = understandConversation(request.messages, names);
    if (understanding.problem == Problem::None && isTooMuch(understanding.intents)) {
        understanding.problem = Problem::Unclear;
        understanding.troubled = 0;
        understanding.phrase = question;
    }
    TextResult result;
    if (!understanding.isPlayback()) {
        const bool switches = request.deepModel || request.onlineSearch;
        result.answer = explainNoModel(language, switches, exampleName(request.mediaList));
        return result;
    }
    result.answer = describe(understanding, names, request.mediaList.size(), language);
    if (understanding.problem == Problem::None) {
        result.agentCommands = agentCommands(understanding.intents, names);
    }
    return result;
}

PictureResult BuiltinEngine::draw(const PictureRequest &request, const std::atomic<bool> &cancelled) const
{
    PictureResult result;
    const QImage image = paintPicture(request, cancelled);
    result.bytes = image.isNull() ? QByteArray() : encodePng(image, cancelled);
    if (result.bytes.isEmpty()) {
        result.error = {ErrorCode::EngineFailed,
                        QStringLiteral("The picture could not be drawn. Please ask for a smaller one.")};
        return result;
    }
    result.mediaType = QByteArrayLiteral("image/png");
    result.description = describePicture(request.prompt, request.style);
    addPlayback(result, request.prompt);
    return result;
}

} // namespace tavro::assistantservice
