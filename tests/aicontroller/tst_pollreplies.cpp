#include "controllertest.h"

/// Replies to a poll that are no plain answer.
class PollRepliesTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void strangeReplyEndsAsTheInterfaceSays_data();
    void strangeReplyEndsAsTheInterfaceSays();
    void codeIsReadAsAnInteger_data();
    void codeIsReadAsAnInteger();
};

namespace {

enum class After { Idle, IdleButQuerying, StillRunning, StillRunningQuerying };

void addReplies()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("ending");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("after");

    const auto row = [](const QByteArray &name, const QByteArray &reply, const char *ending, const char *line,
                        const QString &message, After after) {
        QTest::newRow(name.constData()) << reply << QString::fromLatin1(ending) << QString::fromLatin1(line) << message
                                        << int(after);
    };
    const char *const noLine = "";
    for (const char *noDocument : {"", "busy", "{\"code\":0", "7", "\"0\"", "null", "{\"code\":0,\"x\":\"\xFF\"}"})
        row(QByteArray("no document: ") + QByteArray(noDocument).left(12), noDocument, "", noLine, {},
            After::StillRunningQuerying);

    row("working", R"({"code":1})", "", "Thinking...", {}, After::StillRunning);
    row("working with answers", R"({"code":1,"data":{"answers":["a"]}})", "", "Thinking...", {}, After::StillRunning);
    row("failed", R"({"code":2,"message":"why"})", "errorOccured:1", "Query Answer Failed:", QStringLiteral("why"),
        After::Idle);
    row("failed, negative", R"({"code":-1,"message":"why"})", "errorOccured:1",
        "Query Answer Failed:", QStringLiteral("why"), After::Idle);
    row("failed, no message", R"({"code":500})", "errorOccured:1", "Query Answer Failed:", {}, After::Idle);
    row("failed, message an array", R"({"code":5,"message":["x"]})", "errorOccured:1", "Query Answer Failed:", {},
        After::Idle);

    const char *const noAnswers = "dataObj not Contains answers!";
    row("no data", R"({"code":0})", "requestFailed:1", noAnswers, {}, After::IdleButQuerying);
    row("data an array", R"({"code":0,"data":["answers"]})", "requestFailed:1", noAnswers, {}, After::IdleButQuerying);
    row("data a string", R"({"code":0,"data":"answers"})", "requestFailed:1", noAnswers, {}, After::IdleButQuerying);
    row("data null", R"({"code":0,"data":null})", "requestFailed:1", noAnswers, {}, After::IdleButQuerying);
    row("no answers", R"({"code":0,"data":{"description":"d"}})", "requestFailed:1", noAnswers, {},
        After::IdleButQuerying);

    const char *const empty = "Query Answer list is empty:";
    row("empty answers", R"({"code":0,"data":{"answers":[]}})", "requestFailed:1", empty, {}, After::IdleButQuerying);
    row("answers a string", R"({"code":0,"data":{"answers":"a"}})", "requestFailed:1", empty, {},
        After::IdleButQuerying);
    row("answers null", R"({"code":0,"data":{"answers":null}})", "requestFailed:1", empty, {}, After::IdleButQuerying);
    row("answers an object", R"({"code":0,"data":{"answers":{"0":"a"}}})", "requestFailed:1", empty, {},
        After::IdleButQuerying);
}

} // namespace

void PollRepliesTest::strangeReplyEndsAsTheInterfaceSays_data()
{
    addReplies();
}

void PollRepliesTest::strangeReplyEndsAsTheInterfaceSays()
{
    QFETCH(QByteArray, reply);
    QFETCH(QString, ending);
    QFETCH(QString, line);
    QFETCH(QString, message);
    QFETCH(int, after);

    QVERIFY(f->askText(QStringLiteral("asked")));
    QVERIFY(f->poll(ScriptedAnswer::bytes(reply)));
    QCOMPARE(f->signalled.summary(), ending);
    if (!line.isEmpty())
        QCOMPARE(f->log.count(line), 1);
    QCOMPARE(f->isTimerActive(), after == int(After::StillRunning) || after == int(After::StillRunningQuerying));
    QCOMPARE(f->d.bQuerying, after == int(After::IdleButQuerying) || after == int(After::StillRunningQuerying));
    QCOMPARE(f->d.historyArray.size(), 1);
    if (f->signalled.errorOccured.count() == 1) {
        const auto item = f->signalled.errorOccured.argument<0>(0);
        QVERIFY(item.type == QuestionType::Text);
        QCOMPARE(item.question, std::string("asked"));
        QCOMPARE(QString::fromStdString(item.message), message);
        QVERIFY(f->log.texts().filter(QStringLiteral("Query Answer Failed:")).at(0).contains(message));
    }
    if (f->signalled.requestFailed.count() == 1) {
        QCOMPARE(f->signalled.requestFailed.argument<0>(0).question, std::string("asked"));
        QVERIFY(f->signalled.requestFailed.argument<0>(0).message.empty());
    }
}

// Qt's conversion: what is no whole number reads as 0, and the reply counts as ready.
void PollRepliesTest::codeIsReadAsAnInteger_data()
{
    QTest::addColumn<QByteArray>("code");
    QTest::newRow("as a string") << QByteArray("\"1\"");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("true") << QByteArray("true");
    QTest::newRow("a fraction") << QByteArray("1.5");
    QTest::newRow("0.0") << QByteArray("0.0");
}

void PollRepliesTest::codeIsReadAsAnInteger()
{
    QFETCH(QByteArray, code);
    QVERIFY(f->askText());
    QVERIFY(f->poll(ScriptedAnswer::bytes("{\"code\":" + code + ",\"data\":{\"answers\":[\"a\"]}}")));
    QCOMPARE(f->signalled.summary(), QStringLiteral("generateTextFinished:1"));
}

QTEST_GUILESS_MAIN(PollRepliesTest)
#include "tst_pollreplies.moc"
