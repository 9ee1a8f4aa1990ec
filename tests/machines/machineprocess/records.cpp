#include "records.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

namespace tavro::machineprocess {

using namespace aiassistant;

namespace {

class Reader {
public:
    explicit Reader(const QJsonValue &value)
        : m_object(value.toObject())
    { }

    void read(const char *key, std::string &text) const
    {
        text = at(key).toString(QString::fromStdString(text)).toStdString();
    }
    void read(const char *key, std::int32_t &number) const { number = at(key).toInt(number); }
    void read(const char *key, std::uint8_t &number) const
    {
        number = static_cast<std::uint8_t>(at(key).toInt(number));
    }
    void read(const char *key, float &number) const { number = static_cast<float>(at(key).toDouble(double{number})); }
    void read(const char *key, bool &flag) const { flag = at(key).toBool(flag); }

private:
    QJsonValue at(const char *key) const { return m_object.value(QLatin1String(key)); }

    QJsonObject m_object;
};

} // namespace

PictureGenerateInfo readPictureInfo(const QJsonValue &value)
{
    PictureGenerateInfo info;
    const Reader reader(value);
    reader.read("style", info.style);
    reader.read("width", info.width);
    reader.read("height", info.height);
    reader.read("useSR", info.useSR);
    reader.read("content", info.content);
    reader.read("enableLogo", info.enableLogo);
    reader.read("logoPositon", info.logoPositon);
    reader.read("logoLanguage", info.logoLanguage);
    reader.read("logoOpacity", info.logoOpacity);
    reader.read("logoContent", info.logoContent);
    return info;
}

std::vector<std::string> readTexts(const QJsonValue &value)
{
    std::vector<std::string> texts;
    const QJsonArray list = value.toArray();
    for (const QJsonValue &text : list)
        texts.push_back(text.toString().toStdString());
    return texts;
}

QJsonValue toJson(const QString &text)
{
    return text;
}

QJsonValue toJson(const std::string &text)
{
    return QString::fromStdString(text);
}

QJsonValue toJson(const PictureGenerateInfo &info)
{
    return QJsonObject{{QStringLiteral("style"), toJson(info.style)},
                       {QStringLiteral("width"), info.width},
                       {QStringLiteral("height"), info.height},
                       {QStringLiteral("useSR"), info.useSR},
                       {QStringLiteral("content"), toJson(info.content)},
                       {QStringLiteral("enableLogo"), info.enableLogo},
                       {QStringLiteral("logoPositon"), info.logoPositon},
                       {QStringLiteral("logoLanguage"), info.logoLanguage},
                       {QStringLiteral("logoOpacity"), double{info.logoOpacity}},
                       {QStringLiteral("logoContent"), toJson(info.logoContent)}};
}

QJsonValue toJson(const ChatItemBasic &item)
{
    return QJsonObject{{QStringLiteral("type"), static_cast<int>(item.type)},
                       {QStringLiteral("question"), toJson(item.question)},
                       {QStringLiteral("picInfo"), toJson(item.picInfo)},
                       {QStringLiteral("message"), toJson(item.message)}};
}

QJsonValue toJson(const TextGeneratedPack &pack)
{
    return QJsonObject{{QStringLiteral("question"), toJson(pack.question)},
                       {QStringLiteral("answer"), toJson(pack.answer)}};
}

QJsonValue toJson(const AIImage &image)
{
    return QJsonObject{{QStringLiteral("width"), image.pixmap.width()},
                       {QStringLiteral("height"), image.pixmap.height()},
                       {QStringLiteral("description"), toJson(image.description)},
                       {QStringLiteral("url"), toJson(image.url)}};
}

QJsonValue toJson(const std::vector<AgentCmd> &commands)
{
    QJsonArray types;
    for (const AgentCmd &command : commands)
        types.append(command.cmdType);
    return types;
}

} // namespace tavro::machineprocess
