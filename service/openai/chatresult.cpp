#include "openai/chatresult.h"

#include "builtin/agentcommands.h"
#include "builtin/wording.h"
#include "openai/notices.h"
#include "openai/playbackwish.h"
#include "openai/toolcalls.h"

namespace tavro::assistantservice {

namespace {

void append(QString &text, const QString &sentence)
{
    text += text.isEmpty() ? sentence : QStringLiteral("\n\n") + sentence;
}

// What is done is told by what was understood, whatever the model says that it does.
TextResult carriedOut(const ChatReply &reply, const TextRequest &request, const QVector<ShownItem> &shown,
                      Language language)
{
    const MediaNames names(request.mediaList);
    const Understanding understanding = understandCalls(reply.calls, names, request.mediaList, shown);
    const QString deed = describe(understanding, names, request.mediaList.size(), language);
    const bool clear = understanding.problem == Problem::None;
    const int unasked = clear ? firstUnasked(understanding.intents, PlaybackWish(request.messages, names)) : -1;
    TextResult result;
    result.answer = reply.text;
    append(result.answer, unasked < 0 ? deed : unaskedText(deed, understanding.intents[unasked], language));
    if (clear && unasked < 0) {
        result.agentCommands = agentCommands(understanding.intents, names);
    }
    return result;
}

} // namespace

TextResult chatResult(const ChatReply &reply, const TextRequest &request, const QVector<ShownItem> &shown,
                      Language language)
{
    TextResult result;
    if (reply.isCut) {
        result.answer = reply.text;
        append(result.answer, noticeText(Notice::Cut, language));
        return result;
    }
    if (!reply.calls.isEmpty()) {
        return carriedOut(reply, request, shown, language);
    }
    if (reply.callsAreText) {
        result.answer = noticeText(Notice::CallAsText, language);
        return result;
    }
    result.answer = reply.isFiltered && reply.text.isEmpty() ? noticeText(Notice::Withheld, language) : reply.text;
    if (result.answer.isEmpty()) {
        result.error = {ErrorCode::UpstreamFailed, QStringLiteral("The model gave an empty answer. Please try again.")};
    }
    if (reply.isShortened) {
        append(result.answer, noticeText(Notice::Shortened, language));
    }
    return result;
}

} // namespace tavro::assistantservice
