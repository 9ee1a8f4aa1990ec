// What a user may write: the first line is a question, its tabs stand between the messages of a conversation, the other
// lines are the names of the media items. Two lines alone are the description of a picture and its style, too.

#include "builtin/builtinengine.h"
#include "support/application.h"
#include "support/checks.h"
#include "support/input.h"

namespace {

using namespace tavro::assistantservice;

TextRequest question(const QStringList &lines)
{
    TextRequest request;
    for (const QString &turn : lines.first().split(QLatin1Char('\t')))
        request.messages.append({request.messages.size() % 2 == 1, turn});
    request.messages.last().fromAssistant = false;
    for (const QString &name : lines.mid(1))
        request.mediaList.append({QString::number(request.mediaList.size()), name});
    return request;
}

PictureRequest picture(const QStringList &lines)
{
    PictureRequest request;
    request.prompt = lines.first();
    request.style = lines.value(1);
    request.size = {16, 16};
    return request;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    needApplication();
    const std::atomic<bool> cancelled{false};
    const QStringList lines = Input(data, size).text().split(QLatin1Char('\n'));
    const TextResult text = BuiltinEngine().answer(question(lines), cancelled);
    demand(!text.error && !text.answer.isEmpty());
    demand(text.agentCommands.size() <= 100);
    if (lines.size() == 2)
        demand(!BuiltinEngine().draw(picture(lines), cancelled).bytes.isEmpty());
    return 0;
}
