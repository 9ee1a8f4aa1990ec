#include "openai/chatreply.h"
#include "openai/textcalls.h"
#include "openai/thoughts.h"
#include "openai/upstreamjson.h"

#include <QJsonDocument>
#include <QTest>

using namespace tavro::assistantservice;

namespace {

ChatReply readMessage(const QByteArray &message, const QByteArray &finish = "stop")
{
    return readChatReply(R"({"choices":[{"message":)" + message + R"(,"finish_reason":")" + finish + R"("}]})")
        .value_or(ChatReply());
}

ToolCall readCall(const QByteArray &arguments)
{
    return readMessage(R"({"content":null,"tool_calls":[{"function":{"name":"f","arguments":)" + arguments + "}}]}")
        .calls.value(0);
}

} // namespace

class ChatReplyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void textIsRead_data();
    void textIsRead();
    void thoughtsAreLeftOut_data();
    void thoughtsAreLeftOut();
    void channelsAreRead_data();
    void channelsAreRead();
    void callsInTextAreSeen_data();
    void callsInTextAreSeen();
    void oldCallIsRead();
    void missingArgumentsAreNone();
    void costlyBodiesAreNotParsed_data();
    void costlyBodiesAreNotParsed();
    void argumentsAreRead_data();
    void argumentsAreRead();
    void callsCountWhateverTheReason();
    void reasonsAreRead();
    void otherBodiesAreNoAnswer_data();
    void otherBodiesAreNoAnswer();
};

void ChatReplyTest::textIsRead_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QString>("text");
    QTest::newRow("text") << QByteArray(R"({"content":" hello\n"})") << "hello";
    QTest::newRow("parts") << QByteArray(R"({"content":[{"type":"text","text":"a"},{"type":"text","text":"b"}]})")
                           << "ab";
    QTest::newRow("refusal") << QByteArray(R"({"content":null,"refusal":"No."})") << "No.";
    QTest::newRow("nothing") << QByteArray(R"({"content":null})") << "";
    QTest::newRow("reasoning beside it") << QByteArray(R"({"content":"a","reasoning_content":"b","reasoning":"c"})")
                                         << "a";
}

void ChatReplyTest::textIsRead()
{
    QFETCH(QByteArray, message);
    QFETCH(QString, text);
    QCOMPARE(readMessage(message).text, text);
}

void ChatReplyTest::thoughtsAreLeftOut_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("left");
    QTest::newRow("before the answer") << "<think>hm\nhm</think>\n\nYes."
                                       << "Yes.";
    QTest::newRow("twice") << "<think>a</think>Yes<think>b</think>, no."
                           << "Yes, no.";
    QTest::newRow("never closed") << "Yes.<think>but then"
                                  << "Yes.";
    QTest::newRow("opened by the template") << "hm hm</think>Yes."
                                            << "Yes.";
    QTest::newRow("nothing else") << "<think>hm</think>"
                                  << "";
    QTest::newRow("nested") << "<think>a<think>b</think>c</think>Yes."
                            << "Yes.";
    QTest::newRow("never closed within") << "<think>a<think>b</think>c"
                                         << "";
    QTest::newRow("thinking") << "<thinking>hm</thinking>Yes."
                              << "Yes.";
    QTest::newRow("in brackets") << "[THINK]hm[/THINK]Yes."
                                 << "Yes.";
    QTest::newRow("reasoning") << "<reasoning>hm</reasoning>Yes."
                               << "Yes.";
    QTest::newRow("in capitals") << "<THINK>hm</Think>Yes."
                                 << "Yes.";
    QTest::newRow("none") << "a < b > c"
                          << "a < b > c";
}

void ChatReplyTest::thoughtsAreLeftOut()
{
    QFETCH(QString, given);
    QFETCH(QString, left);
    QCOMPARE(withoutThoughts(given), left);
}

void ChatReplyTest::channelsAreRead_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("calls");
    QTest::newRow("final") << "<|channel|>analysis<|message|>hm<|end|><|start|>assistant<|channel|>final<|message|>Yes."
                              "<|return|>"
                           << "Yes." << false;
    QTest::newRow("final alone") << "<|channel|>final<|message|>Yes."
                                 << "Yes." << false;
    QTest::newRow("analysis alone") << "<|channel|>analysis<|message|>hm"
                                    << "" << false;
    QTest::newRow("a call") << "<|channel|>analysis<|message|>hm<|end|><|start|>assistant<|channel|>commentary "
                               "to=functions.stop_layer <|constrain|>json<|message|>{\"layer_id\":1}<|call|>"
                            << "" << true;
    QTest::newRow("none") << "Yes."
                          << "Yes." << false;
}

void ChatReplyTest::channelsAreRead()
{
    QFETCH(QString, given);
    const ChanneledText channels = readChannels(given);
    QTEST(channels.text, "text");
    QTEST(channels.calls, "calls");
}

void ChatReplyTest::callsInTextAreSeen_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isCall");
    const QByteArray call = R"({"name": "stop_layer", "arguments": {"layer_id": 1}})";
    const QByteArray llama = R"({"name": "stop_layer", "parameters": {"layer_id": 1}})";
    QTest::newRow("hermes") << "<tool_call>\n" + call + "\n</tool_call>" << true;
    QTest::newRow("hermes, behind words") << "Sure.\n<tool_call>" + call + "</tool_call>" << true;
    QTest::newRow("hermes, not closed") << QByteArray("<tool_call>{\"name\":") << true;
    QTest::newRow("function") << QByteArray("<function=stop_layer>{\"layer_id\": 1}</function>") << true;
    QTest::newRow("mistral") << "[TOOL_CALLS][" + call + "]" << true;
    QTest::newRow("python tag") << "<|python_tag|>" + llama << true;
    QTest::newRow("llama") << llama << true;
    QTest::newRow("fenced") << "```json\n" + call + "\n```" << true;
    QTest::newRow("fenced, behind words") << "I will do that:\n```json\n" + call + "\n```" << true;
    QTest::newRow("a list") << "[" + call + "," + call + "]" << true;
    QTest::newRow("OpenAI's own form") << QByteArray(R"({"type":"function","function":{"name":"f","arguments":"{}"}})")
                                       << true;
    QTest::newRow("functools") << "functools[" + call + "]" << true;
    QTest::newRow("granite") << "<|tool_call|>[" + call + "]" << true;
    QTest::newRow("a program's line") << QByteArray("[stop_layer(layer_id=1)]") << true;
    QTest::newRow("cut off") << QByteArray(R"({"name": "stop_layer", "arguments": {"layer)") << true;
    QTest::newRow("text") << QByteArray("Stopping layer 1 (as you asked).") << false;
    QTest::newRow("other JSON") << QByteArray(R"({"name": "Harbour", "length": 12})") << false;
    QTest::newRow("talk of it") << QByteArray("There is a tool named stop_layer, and functools in Python.") << false;
    QTest::newRow("nothing") << QByteArray("") << false;
}

void ChatReplyTest::callsInTextAreSeen()
{
    QFETCH(QByteArray, text);
    const QString shown = QString::fromUtf8(text);
    QFETCH(bool, isCall);
    QCOMPARE(holdsTextCall(shown), isCall);
    const QJsonObject message{{QStringLiteral("content"), shown}};
    const ChatReply reply = readMessage(QJsonDocument(message).toJson(QJsonDocument::Compact));
    QCOMPARE(reply.callsAreText, isCall);
    QCOMPARE(reply.text, isCall ? QString() : shown);
}

void ChatReplyTest::oldCallIsRead()
{
    const ChatReply reply =
        readMessage(R"({"content":null,"function_call":{"name":"stop_layer","arguments":"{\"layer_id\":1}"}})");
    QCOMPARE(reply.calls.size(), 1);
    QCOMPARE(reply.calls.first().name, QStringLiteral("stop_layer"));
    QCOMPARE(reply.calls.first().arguments.value(QLatin1String("layer_id")).toInt(), 1);
}

void ChatReplyTest::costlyBodiesAreNotParsed_data()
{
    QTest::addColumn<QByteArray>("values");
    QTest::addColumn<bool>("modest");
    const auto repeated = [](const char *value) { return QByteArray(value).repeated(200000) + '1'; };
    QTest::newRow("numbers") << repeated("1,") << true;
    QTest::newRow("words") << repeated("\"hello\",") << true;
    QTest::newRow("lists") << repeated("[1],") << false;
    QTest::newRow("empty lists") << repeated("[],") << false;
    QTest::newRow("objects") << repeated("{\"\":1},") << false;
    QTest::newRow("few lists") << QByteArray("[1],").repeated(500) + '1' << true;
    QTest::newRow("brackets in a text") << '"' + repeated("[") + '"' << true;
    QTest::newRow("64 deep") << QByteArray(62, '[') + QByteArray(62, ']') << true;
    QTest::newRow("deeper") << QByteArray(63, '[') + QByteArray(63, ']') << false;
    QTest::newRow("a list named twice") << QByteArray(R"({"a":[1],"a":2})") << false;
}

void ChatReplyTest::costlyBodiesAreNotParsed()
{
    QFETCH(QByteArray, values);
    QFETCH(bool, modest);
    const QByteArray json = "{\"values\":[" + values + "]}";
    QCOMPARE(isModestJson(json), modest);
    QCOMPARE(readUpstreamObject(json).isEmpty(), !modest);
}

void ChatReplyTest::argumentsAreRead_data()
{
    QTest::addColumn<QByteArray>("given");
    QTest::addColumn<bool>("readable");
    QTest::addColumn<int>("value");
    QTest::newRow("text") << QByteArray(R"("{\"x\":3}")") << true << 3;
    QTest::newRow("object") << QByteArray(R"({"x":3})") << true << 3;
    QTest::newRow("wrapped") << QByteArray(R"("{\"arguments\":{\"x\":3}}")") << true << 3;
    QTest::newRow("empty object") << QByteArray(R"("{}")") << true << 0;
    QTest::newRow("broken") << QByteArray(R"("{\"x\":3")") << false << 0;
    QTest::newRow("list") << QByteArray(R"("[3]")") << false << 0;
    QTest::newRow("null") << QByteArray("null") << true << 0;
    QTest::newRow("empty") << QByteArray(R"("")") << true << 0;
    QTest::newRow("blank") << QByteArray(R"(" \n")") << true << 0;
    QTest::newRow("null as text") << QByteArray(R"("null")") << true << 0;
    QTest::newRow("encoded twice") << QByteArray(R"("\"{\\\"x\\\":3}\"")") << true << 3;
    QTest::newRow("fenced") << QByteArray(R"("```json\n{\"x\":3}\n```")") << true << 3;
    QTest::newRow("wrapped as text") << QByteArray(R"({"arguments":"{\"x\":3}"})") << true << 3;
    QTest::newRow("wrapped in parameters") << QByteArray(R"("{\"parameters\":{\"x\":3}}")") << true << 3;
    QTest::newRow("the whole call once more")
        << QByteArray(R"("{\"name\":\"f\",\"arguments\":{\"x\":3}}")") << true << 3;
    QTest::newRow("an argument of that name") << QByteArray(R"("{\"arguments\":{\"x\":4},\"x\":3}")") << true << 3;
    QTest::newRow("two objects") << QByteArray(R"("{\"x\":3}{\"x\":4}")") << false << 0;
    QTest::newRow("two objects in a row") << QByteArray(R"("{\"x\":3},{\"x\":4}")") << false << 0;
    QTest::newRow("number") << QByteArray("3") << false << 0;
    QTest::newRow("words") << QByteArray(R"("layer 3")") << false << 0;
}

void ChatReplyTest::argumentsAreRead()
{
    QFETCH(QByteArray, given);
    QFETCH(bool, readable);
    QFETCH(int, value);
    const ToolCall call = readCall(given);
    const QByteArray under = R"({"tool_calls":[{"function":{"name":"f","parameters":)" + given + "}}]}";
    QCOMPARE(readMessage(under).calls.value(0).arguments, call.arguments);
    QCOMPARE(call.name, QStringLiteral("f"));
    QCOMPARE(call.isReadable, readable);
    QCOMPARE(call.arguments.value(QLatin1String("x")).toInt(), value);
}

void ChatReplyTest::missingArgumentsAreNone()
{
    const ToolCall call = readMessage(R"({"tool_calls":[{"function":{"name":"f"}}]})").calls.value(0);
    QVERIFY(call.isReadable);
    QVERIFY(call.arguments.isEmpty());
}

void ChatReplyTest::callsCountWhateverTheReason()
{
    const QByteArray message = R"({"tool_calls":[{"function":{"name":"f","arguments":"{}"}}]})";
    for (const char *reason : {"stop", "tool_calls", "tool_call", "tool_calling", "function_call"}) {
        QCOMPARE(readMessage(message, reason).calls.size(), 1);
    }
}

void ChatReplyTest::reasonsAreRead()
{
    QVERIFY(readMessage(R"({"content":"a"})", "length").isCut);
    QVERIFY(readMessage(R"({"content":"a"})", "content_filter").isFiltered);
    const ChatReply whole = readMessage(R"({"content":"a"})");
    QVERIFY(!whole.isCut && !whole.isFiltered);
}

void ChatReplyTest::otherBodiesAreNoAnswer_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("a page") << QByteArray("<html></html>");
    QTest::newRow("an error") << QByteArray(R"({"error":"Unexpected endpoint. Returning 200 anyway"})");
    QTest::newRow("no choices") << QByteArray(R"({"choices":[]})");
    QTest::newRow("choices null") << QByteArray(R"({"choices":null})");
    QTest::newRow("no message") << QByteArray(R"({"choices":[{"text":"old form"}]})");
    QTest::newRow("message is text") << QByteArray(R"({"choices":[{"message":"hello"}]})");
    QTest::newRow("a list") << QByteArray("[]");
}

void ChatReplyTest::otherBodiesAreNoAnswer()
{
    QFETCH(QByteArray, body);
    QVERIFY(!readChatReply(body).has_value());
}

QTEST_GUILESS_MAIN(ChatReplyTest)
#include "tst_chatreply.moc"
