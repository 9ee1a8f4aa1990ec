#include "assistant/callpayload.h"

#include <msgpack.hpp>

namespace tavro::playout {

using namespace aiassistant;

namespace {

constexpr char textQuestion[] = "GenerateText";
constexpr char pictureQuestion[] = "GenerateImage";

PictureGenerateInfo pictureIn(const msgpack::object &object)
{
    const auto fields = object.as<std::vector<msgpack::object>>();
    PictureGenerateInfo info;
    info.style = fields.at(0).as<std::string>();
    info.width = fields.at(1).as<int>();
    info.height = fields.at(2).as<int>();
    info.useSR = fields.at(3).as<bool>();
    info.content = fields.at(4).as<std::string>();
    return info;
}

} // namespace

bool isQuestion(const QByteArray &name)
{
    return name == textQuestion || name == pictureQuestion;
}

bool isOutcome(const QByteArray &name)
{
    return name == "GenerateTextFinished" || name == "GenerateImageFinished" || name == "DeleteGeneratingItem"
        || name == "RequestFailed" || name == "ErrorOccured" || name == "RequestTimeout";
}

ChatItemBasic questionIn(const QByteArray &name, const QByteArray &payload)
{
    const bool isPicture = name == pictureQuestion;
    ChatItemBasic item;
    item.type = isPicture ? QuestionType::Picture : QuestionType::Text;
    try {
        const auto size = static_cast<std::size_t>(payload.size());
        const msgpack::object_handle unpacked = msgpack::unpack(payload.constData(), size);
        if (isPicture) {
            item.picInfo = pictureIn(unpacked.get());
            item.question = item.picInfo.content;
        } else {
            item.question = unpacked.get().as<std::string>();
        }
    } catch (const std::exception &) {
        // What became of the question can be told without its text.
    }
    return item;
}

} // namespace tavro::playout
