#include "openai/upstreamoptions.h"

#include <QCommandLineParser>
#include <QRegularExpression>

#include <algorithm>

namespace tavro::assistantservice {

namespace {

struct OptionText {
    const char *name;
    const char *description;
    const char *value;
    const char *standard;
};

constexpr OptionText optionTexts[] = {
    {"upstream", "Address of the OpenAI-compatible server, such as http://127.0.0.1:11434/v1.", "url", ""},
    {"model", "Text model; without it the only one that the server has.", "name", ""},
    {"deep-model", "Text model for questions with the deep model switched on.", "name", ""},
    {"search-model", "Text model, one that searches the web, for questions with online search switched on.", "name",
     ""},
    {"tools", "Whether the text model has tools, for playback: on, or off (then playback goes by rules).", "on|off",
     "on"},
    {"picture-upstream", "Server for pictures; \"builtin\" draws them by rules. Without it the one for text.", "url",
     ""},
    {"picture-model", "Picture model; without it the server's own choice.", "name", ""},
    {"picture-sizes", "Sizes that the picture model offers, or \"any\".", "WxH,...", "1024x1024,1536x1024,1024x1536"},
    {"upstream-seconds", "How long a question or picture may take at the server.", "seconds", "60"},
};

UpstreamAddress readAddress(OptionValues &values, const char *name)
{
    const std::optional<UpstreamAddress> address = parseUpstreamAddress(values.text(name));
    if (!address) {
        values.fail(name,
                    QStringLiteral("must be a server's address such as http://127.0.0.1:11434/v1 (its key belongs in "
                                   "the environment)"));
    }
    return address.value_or(UpstreamAddress());
}

bool readSwitch(OptionValues &values, const char *name)
{
    const QString text = values.text(name);
    if (text != QLatin1String("on") && text != QLatin1String("off")) {
        values.fail(name, QStringLiteral("must be on or off"));
    }
    return text == QLatin1String("on");
}

QVector<QSize> readSizes(OptionValues &values, const char *name)
{
    static const QRegularExpression form(QStringLiteral("^([1-9][0-9]{1,4})x([1-9][0-9]{1,4})$"));
    QVector<QSize> sizes;
    if (values.text(name) == QLatin1String("any")) {
        return sizes;
    }
    const QStringList texts = values.text(name).split(QLatin1Char(','));
    for (const QString &text : texts) {
        const QRegularExpressionMatch match = form.match(text.trimmed());
        if (!match.hasMatch()) {
            values.fail(name, QStringLiteral("must be \"any\" or sizes such as 1024x1024,1536x1024"));
            return sizes;
        }
        sizes.append({match.captured(1).toInt(), match.captured(2).toInt()});
    }
    return sizes;
}

// It becomes a part of a header.
QByteArray readKey(OptionValues &values, const QByteArray &key, const char *option, const char *variable)
{
    const QByteArray word = key.trimmed();
    if (!std::all_of(word.begin(), word.end(), [](char c) { return c > ' ' && c < '\x7f'; })) {
        values.fail(
            option,
            QStringLiteral("has a key in %1 that is not one word of plain characters").arg(QLatin1String(variable)));
    }
    return word;
}

ChatSettings readChat(OptionValues &values, const QByteArray &key)
{
    ChatSettings chat;
    chat.address = readAddress(values, "upstream");
    chat.key = readKey(values, key, "upstream", "ASSISTANTSERVICE_UPSTREAM_KEY");
    chat.model = values.text("model");
    chat.deepModel = values.text("deep-model");
    chat.searchModel = values.text("search-model");
    chat.tools = readSwitch(values, "tools");
    chat.limit = std::chrono::seconds(values.number("upstream-seconds", 1, 3600));
    return chat;
}

PictureSettings readPictures(OptionValues &values, const ChatSettings &chat, const QByteArray &key)
{
    PictureSettings pictures;
    pictures.address = values.isGiven("picture-upstream") ? readAddress(values, "picture-upstream") : chat.address;
    const QByteArray own = readKey(values, key, "picture-upstream", "ASSISTANTSERVICE_PICTURE_KEY");
    pictures.key = own.isEmpty() && pictures.address == chat.address ? chat.key : own;
    pictures.model = values.text("picture-model");
    pictures.sizes = readSizes(values, "picture-sizes");
    pictures.limit = chat.limit;
    return pictures;
}

} // namespace

void addUpstreamOptions(QCommandLineParser &parser)
{
    for (const OptionText &option : optionTexts) {
        parser.addOption({QLatin1String(option.name), QLatin1String(option.description), QLatin1String(option.value),
                          QLatin1String(option.standard)});
    }
}

UpstreamOptions readUpstreamOptions(OptionValues &values, const UpstreamKeys &keys)
{
    UpstreamOptions options;
    options.chat = readChat(values, keys.chat);
    if (values.text("picture-upstream") != QLatin1String("builtin")) {
        options.pictures = readPictures(values, options.chat, keys.pictures);
    }
    return options;
}

const char *givenUpstreamOption(const OptionValues &values)
{
    const auto *const given = std::find_if(std::begin(optionTexts), std::end(optionTexts),
                                           [&](const OptionText &option) { return values.isGiven(option.name); });
    return given == std::end(optionTexts) ? nullptr : given->name;
}

} // namespace tavro::assistantservice
