#include "assistant/questionwatch.h"
#include "inprocess/inprocessruntime.h"
#include "support/waiting.h"

#include <QTest>

#include <memory>
#include <vector>

using namespace tavro::aiassistant;
using namespace tavro::playout;
using namespace tavro::runtime;
using namespace tavro::testsupport;

/// A showing machine's question, and what its watch makes of what happens to it.
class PlayoutQuestionWatchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void questionThatNobodyServesIsGivenUp();
    void pictureQuestionKeepsWhatWasAskedFor();
    void questionThatCannotBeReadIsGivenUpWithoutItsText();
    void questionIsGivenUpWhenTheServingMachineGoes();
    void questionIsGivenUpWhenItsTimeIsOver();
    void outcomeEndsTheQuestion_data();
    void outcomeEndsTheQuestion();
    void otherMessagesDoNotEndTheQuestion();
    void stoppedQuestionIsNotFollowed();
    void lostMessageThatIsNoQuestionIsNone();

private:
    void follow(std::chrono::milliseconds limit = std::chrono::hours(1));
    void serve();
    void askText();

    std::unique_ptr<InProcessBus> bus;
    std::unique_ptr<InProcessRuntime> server;
    std::unique_ptr<InProcessRuntime> client;
    std::unique_ptr<WatchedRuntime> watched;
    std::unique_ptr<QuestionWatch> watch;
    std::vector<ChatItemBasic> givenUp;
};

namespace {

// "who?", and ["Monet", 1920, 1080, true, "a boat", ...] as the module packs them.
const QByteArray textPayload = QByteArrayLiteral("\xa4who?");
const QByteArray picturePayload = QByteArrayLiteral("\x9a\xa5Monet\xcd\x07\x80\xcd\x04\x38\xc3\xa6") + "a boat"
    + QByteArrayLiteral("\xc2\x00\xc2\xca\x3e\xb3\x33\x33\xa5width");

void send(WatchedRuntime &runtime, const char *name, const QByteArray &payload = {})
{
    runtime.sendToServer(name, payload.isEmpty() ? nullptr : payload.constData(),
                         static_cast<unsigned>(payload.size()));
}

} // namespace

void PlayoutQuestionWatchTest::init()
{
    bus = std::make_unique<InProcessBus>();
    client = std::make_unique<InProcessRuntime>(*bus, tavro::runtime::Role::ProxyClient);
    watched = std::make_unique<WatchedRuntime>(*client);
    givenUp.clear();
    follow();
}

void PlayoutQuestionWatchTest::cleanup()
{
    watch.reset();
    watched.reset();
    client.reset();
    server.reset();
}

void PlayoutQuestionWatchTest::follow(std::chrono::milliseconds limit)
{
    watch = std::make_unique<QuestionWatch>(*watched, *client, limit);
    connect(watch.get(), &QuestionWatch::sigGivenUp, this,
            [this](const ChatItemBasic &question) { givenUp.push_back(question); });
}

void PlayoutQuestionWatchTest::serve()
{
    server = std::make_unique<InProcessRuntime>(*bus, tavro::runtime::Role::ProxyServer);
    QVERIFY(eventually([this] { return client->isServerPresent(); }));
}

void PlayoutQuestionWatchTest::askText()
{
    send(*watched, "GenerateText", textPayload);
}

void PlayoutQuestionWatchTest::questionThatNobodyServesIsGivenUp()
{
    askText();
    QVERIFY(eventually([this] { return !givenUp.empty(); }));
    QCOMPARE(givenUp.size(), std::size_t{1});
    QCOMPARE(givenUp.front().type, QuestionType::Text);
    QCOMPARE(QString::fromStdString(givenUp.front().question), QStringLiteral("who?"));
    const QString message = QString::fromStdString(givenUp.front().message);
    QVERIFY2(message.startsWith(QStringLiteral("The question was not sent: ")), qPrintable(message));
}

void PlayoutQuestionWatchTest::pictureQuestionKeepsWhatWasAskedFor()
{
    send(*watched, "GenerateImage", picturePayload);
    QVERIFY(eventually([this] { return !givenUp.empty(); }));
    QCOMPARE(givenUp.front().type, QuestionType::Picture);
    QCOMPARE(QString::fromStdString(givenUp.front().question), QStringLiteral("a boat"));
    QCOMPARE(QString::fromStdString(givenUp.front().picInfo.style), QStringLiteral("Monet"));
    QCOMPARE(givenUp.front().picInfo.width, 1920);
    QCOMPARE(givenUp.front().picInfo.height, 1080);
}

void PlayoutQuestionWatchTest::questionThatCannotBeReadIsGivenUpWithoutItsText()
{
    send(*watched, "GenerateText", QByteArrayLiteral("\xd9\xff"));
    QVERIFY(eventually([this] { return !givenUp.empty(); }));
    QVERIFY(givenUp.front().question.empty());
    QVERIFY(!givenUp.front().message.empty());
}

void PlayoutQuestionWatchTest::questionIsGivenUpWhenTheServingMachineGoes()
{
    serve();
    askText();
    settle();
    QVERIFY(givenUp.empty());
    server.reset();
    QVERIFY(eventually([this] { return !givenUp.empty(); }));
    QCOMPARE(QString::fromStdString(givenUp.front().message),
             QStringLiteral("The connection to the serving machine was lost. Please ask again."));
    QCOMPARE(givenUp.size(), std::size_t{1});
}

void PlayoutQuestionWatchTest::questionIsGivenUpWhenItsTimeIsOver()
{
    serve();
    follow(std::chrono::milliseconds(1));
    askText();
    QVERIFY(eventually([this] { return !givenUp.empty(); }));
    QCOMPARE(QString::fromStdString(givenUp.front().message),
             QStringLiteral("The serving machine did not answer in time."));
}

void PlayoutQuestionWatchTest::outcomeEndsTheQuestion_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {"GenerateTextFinished", "GenerateImageFinished", "DeleteGeneratingItem", "RequestFailed",
                             "ErrorOccured", "RequestTimeout"})
        QTest::newRow(name) << QByteArray(name);
}

void PlayoutQuestionWatchTest::outcomeEndsTheQuestion()
{
    QFETCH(QByteArray, name);
    int received = 0;
    watched->registerCallHandler(name.constData(), [&](const char *, const char *, unsigned int) { ++received; });
    serve();
    askText();
    server->sendToClients(name.constData(), nullptr, 0);
    QVERIFY(eventually([&] { return received == 1; }));
    server.reset();
    QVERIFY(eventually([this] { return !client->isServerPresent(); }));
    QVERIFY(givenUp.empty());
}

void PlayoutQuestionWatchTest::otherMessagesDoNotEndTheQuestion()
{
    int received = 0;
    watched->registerCallHandler("ClearCatheFinished", [&](const char *, const char *, unsigned int) { ++received; });
    serve();
    askText();
    server->sendToClients("ClearCatheFinished", nullptr, 0);
    QVERIFY(eventually([&] { return received == 1; }));
    server.reset();
    QVERIFY(eventually([this] { return givenUp.size() == 1; }));
}

void PlayoutQuestionWatchTest::stoppedQuestionIsNotFollowed()
{
    serve();
    askText();
    send(*watched, "StopGenerate");
    server.reset();
    QVERIFY(eventually([this] { return !client->isServerPresent(); }));
    QVERIFY(givenUp.empty());
}

void PlayoutQuestionWatchTest::lostMessageThatIsNoQuestionIsNone()
{
    QStringList lost;
    connect(client.get(), &MachineRuntime::sigMessageLost, this, [&](const QString &name) { lost << name; });
    send(*watched, "ClearCathe");
    QVERIFY(eventually([&] { return lost == QStringList{QStringLiteral("ClearCathe")}; }));
    QVERIFY(givenUp.empty());
}

QTEST_GUILESS_MAIN(PlayoutQuestionWatchTest)
#include "tst_playoutquestionwatch.moc"
