#include "samples.h"

#include "multimachineproxy/callenvelope.h"

#include <QString>

#include <limits>

using namespace tavro::aiassistant;

namespace samples {

namespace {

template <typename T>
QByteArray packed(const T &value)
{
    const msgpack::sbuffer buffer = envelope::pack(value);
    return {buffer.data(), static_cast<int>(buffer.size())};
}

class Cases {
public:
    template <typename T>
    void add(const char *type, const QByteArray &name, const T &value)
    {
        m_list.append({type, name, packed(value)});
    }

    QVector<Packed> take() { return std::move(m_list); }

private:
    QVector<Packed> m_list;
};

void addTexts(Cases &cases)
{
    cases.add("bool", "false", false);
    cases.add("bool", "true", true);
    cases.add("string", "empty", QString());
    cases.add("string", "filled", QStringLiteral("hello"));
    cases.add("string", "chinese", QStringLiteral("\u4e2d\u6587"));
    cases.add("string", "emoji", QStringLiteral("\U0001f642"));
    cases.add("string", "nul-inside", QString(QStringLiteral("a%1b").arg(QChar(0))));
    for (const int length : {31, 32, 255, 256, 65535, 65536})
        cases.add("string", "length-" + QByteArray::number(length), QString(length, QLatin1Char('x')));
    cases.add("list", "empty", std::vector<std::string>());
    cases.add("list", "filled", list());
    cases.add("list", "chinese", std::vector<std::string>{"\xe4\xb8\xad", "", "n"});
    for (const int length : {15, 16, 1024})
        cases.add("list", "length-" + QByteArray::number(length),
                  std::vector<std::string>(static_cast<std::size_t>(length), "x"));
}

void addPictureNumbers(Cases &cases)
{
    PictureGenerateInfo info;
    for (const int width : {0, 127, 128, 255, 256, 32767, 32768, 65535, 65536, std::numeric_limits<int>::max(), -1, -32,
                            -33, -128, -129, -32768, -32769, std::numeric_limits<int>::min()}) {
        info.width = width;
        cases.add("picture", "width-" + QByteArray::number(width), info);
    }
    info = {};
    for (const int position : {127, 128, 255}) {
        info.logoPositon = static_cast<std::uint8_t>(position);
        cases.add("picture", "logo-position-" + QByteArray::number(position), info);
    }
}

void addPictureOpacities(Cases &cases)
{
    using Limits = std::numeric_limits<float>;
    const std::pair<const char *, float> opacities[] = {{"zero", 0.0F},
                                                        {"minus-zero", -0.0F},
                                                        {"one", 1.0F},
                                                        {"minus-one", -1.0F},
                                                        {"two", 2.0F},
                                                        {"1e10", 1e10F},
                                                        {"third", 1.0F / 3},
                                                        {"infinite", Limits::infinity()},
                                                        {"not-a-number", Limits::quiet_NaN()},
                                                        {"smallest", Limits::denorm_min()},
                                                        {"largest", Limits::max()}};
    for (const auto &[name, opacity] : opacities) {
        PictureGenerateInfo info;
        info.logoOpacity = opacity;
        cases.add("picture", QByteArray("opacity-") + name, info);
    }
}

void addOutcomes(Cases &cases)
{
    for (const int type : {1, 2, 7, -1}) {
        ChatItemBasic item;
        item.type = static_cast<QuestionType>(type);
        item.question = "q";
        cases.add("chatitem", "type-" + QByteArray::number(type), item);
    }
    TextGeneratedPack answer{"q", {}};
    for (int times = 0; times < 200; ++times)
        answer.answer += "long answer ";
    cases.add("text", "long", answer);
}

} // namespace

PictureGenerateInfo picture()
{
    return {"Watercolor", 1920, 1080, false, "a lake at dawn", true, 3, true, 0.5F, "ZV"};
}

ChatItemBasic chatItem()
{
    return {QuestionType::Picture, "a lake", picture(), "quota used up"};
}

TextGeneratedPack text()
{
    return {"What is on layer 2?", "The harbour clip."};
}

PicturedGeneratedPack pictured()
{
    return {"a lake", picture(), {"a lake with mist", "http://127.0.0.1/p/1"}};
}

std::vector<std::string> list()
{
    return {"token", "user", "node"};
}

QVector<Packed> all()
{
    Cases cases;
    addTexts(cases);
    cases.add("picture", "default", PictureGenerateInfo());
    cases.add("picture", "filled", picture());
    cases.add("chatitem", "default", ChatItemBasic());
    cases.add("chatitem", "filled", chatItem());
    cases.add("text", "default", TextGeneratedPack());
    cases.add("text", "filled", text());
    cases.add("pictured", "default", PicturedGeneratedPack());
    cases.add("pictured", "filled", pictured());
    addPictureNumbers(cases);
    addPictureOpacities(cases);
    addOutcomes(cases);
    return cases.take();
}

} // namespace samples
