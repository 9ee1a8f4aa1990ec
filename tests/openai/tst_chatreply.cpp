#include "openai/chatreply.h"

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
    QTest::newRow("none") << "a < b > c"
                          << "a < b > c";
}

void ChatReplyTest::thoughtsAreLeftOut()
{
    QFETCH(QString, given);
    QFETCH(QString, left);
    QCOMPARE(withoutThoughts(given), left);
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
    QTest::newRow("missing") << QByteArray("null") << false << 0;
}

void ChatReplyTest::argumentsAreRead()
{
    QFETCH(QByteArray, given);
    QFETCH(bool, readable);
    QFETCH(int, value);
    const ToolCall call = readCall(given);
    QCOMPARE(call.name, QStringLiteral("f"));
    QCOMPARE(call.isReadable, readable);
    QCOMPARE(call.arguments.value(QLatin1String("x")).toInt(), value);
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
