#include "controllertest.h"
#include "roles.h"

#include <thread>

/// What becomes of an outcome on a machine of each role: forwarded, announced, both, neither.
class OutcomesTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void textAnswer_data() { addRoles(); }
    void textAnswer();
    void pictureAnswer_data() { addRoles(); }
    void pictureAnswer();
    void requestFailed_data() { addRoles(); }
    void requestFailed();
    void errorOccured_data() { addRoles(); }
    void errorOccured();
    void requesetTimeout_data() { addRoles(); }
    void requesetTimeout();
    void failedReplyOfTheService_data() { addRoles(); }
    void failedReplyOfTheService();
    void requestFailedFinished_data() { addRoles(); }
    void requestFailedFinished();
    void otherFinishedOperationsOnlyFire_data() { addRoles(); }
    void otherFinishedOperationsOnlyFire();
    void completionsFireOnTheCallingThread();
    void pictureCompletionFetchesOnly();
    void serverRoleTakenOnLaterIsReported();

private:
    static ChatItemBasic item();
    void checkItem(const ChatItemBasic &given) const;
};

ChatItemBasic OutcomesTest::item()
{
    return {QuestionType::Picture, "asked", ControllerFixture::pictureInfo(), "why"};
}

void OutcomesTest::checkItem(const ChatItemBasic &given) const
{
    QVERIFY(given.type == QuestionType::Picture);
    QCOMPARE(given.question, std::string("asked"));
    QCOMPARE(given.picInfo.style, std::string("oil"));
    QCOMPARE(given.message, std::string("why"));
}

void OutcomesTest::textAnswer()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    QVERIFY(f->askText(QStringLiteral("asked")));
    QVERIFY(f->poll(ControllerFixture::readyText(QStringLiteral("answer"))));
    QCOMPARE(f->serverPort.names(), server ? QVector<QByteArray>{"GenerateTextFinished"} : QVector<QByteArray>());
    QCOMPARE(f->signalled.summary(), local ? QStringLiteral("generateTextFinished:1") : QString());
    QVERIFY(f->clientPort.calls.isEmpty());
    if (server) {
        const auto pack = f->serverPort.calls.at(0).as<TextGeneratedPack>();
        QCOMPARE(pack.question, std::string("asked"));
        QCOMPARE(pack.answer, std::string("answer"));
    }
    if (server && local)
        QVERIFY(f->serverPort.calls.at(0).number < f->signalled.generateTextFinished.emission(0).number);
    QVERIFY(!f->isTimerActive());
    QCOMPARE(f->d.historyArray.size(), 2);
    QVERIFY(f->d.strReqId.isEmpty());
}

void OutcomesTest::pictureAnswer()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    const QString url = f->server.url() + QStringLiteral("/picture");
    if (local)
        f->server.expect("GET", "/picture", ScriptedAnswer::bytes("no picture"));
    QVERIFY(f->askPicture());
    QVERIFY(f->poll(ControllerFixture::readyPicture(url, QStringLiteral("a hill"))));
    QCOMPARE(f->serverPort.names(), server ? QVector<QByteArray>{"GenerateImageFinished"} : QVector<QByteArray>());
    if (server) {
        const auto pack = f->serverPort.calls.at(0).as<PicturedGeneratedPack>();
        QCOMPARE(pack.content, std::string("a mountain"));
        QCOMPARE(pack.picInfo.style, std::string("oil"));
        QCOMPARE(pack.source.description, std::string("a hill"));
        QCOMPARE(QString::fromStdString(pack.source.url), url);
    }
    if (local)
        QVERIFY(f->signalled.generatePictureFinished.waitFor(1));
    QCOMPARE(f->signalled.summary(), local ? QStringLiteral("generatePictureFinished:1") : QString());
    QVERIFY(!f->isTimerActive());
}

void OutcomesTest::requestFailed()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    f->controller.startTimer();
    f->controller.requestFailed(item());
    QVERIFY(!f->isTimerActive());
    QCOMPARE(f->serverPort.names(), server ? QVector<QByteArray>{"RequestFailed"} : QVector<QByteArray>());
    // The serving machine itself shows nothing, whatever else it is.
    QCOMPARE(f->signalled.summary(), local && !server ? QStringLiteral("requestFailed:1") : QString());
    if (server)
        checkItem(f->serverPort.calls.at(0).as<ChatItemBasic>());
    else if (local)
        checkItem(f->signalled.requestFailed.argument<0>(0));
}

void OutcomesTest::errorOccured()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    f->controller.startTimer();
    f->controller.errorOccured(item());
    QVERIFY(!f->isTimerActive());
    QCOMPARE(f->serverPort.names(), server ? QVector<QByteArray>{"ErrorOccured"} : QVector<QByteArray>());
    QCOMPARE(f->signalled.summary(), local ? QStringLiteral("errorOccured:1") : QString());
    if (server)
        checkItem(f->serverPort.calls.at(0).as<ChatItemBasic>());
    if (local)
        checkItem(f->signalled.errorOccured.argument<0>(0));
    if (server && local)
        QVERIFY(f->serverPort.calls.at(0).number < f->signalled.errorOccured.emission(0).number);
}

void OutcomesTest::requesetTimeout()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    f->controller.startTimer();
    f->d.nTickCount = 5;
    f->controller.requesetTimeout(item());
    QCOMPARE(f->d.nTickCount, 0);
    QCOMPARE(f->isTimerActive(), client);
    QCOMPARE(f->serverPort.names(), server ? QVector<QByteArray>{"RequestTimeout"} : QVector<QByteArray>());
    QCOMPARE(f->signalled.summary(), server ? QString() : QStringLiteral("requestTimeout:1"));
    checkItem(server ? f->serverPort.calls.at(0).as<ChatItemBasic>() : f->signalled.requestTimeout.argument<0>(0));
}

void OutcomesTest::failedReplyOfTheService()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    QVERIFY(f->askText(QStringLiteral("one"), ScriptedAnswer::status(500)));
    QVERIFY(f->askText(QStringLiteral("two"), ControllerFixture::failed(QStringLiteral("full"))));
    QVERIFY(f->askText(QStringLiteral("three")));
    QVERIFY(f->poll(ControllerFixture::failed(QStringLiteral("why"))));
    QCOMPARE(f->serverPort.names(),
             server ? (QVector<QByteArray>{"RequestFailed", "ErrorOccured", "ErrorOccured"}) : QVector<QByteArray>());
    QCOMPARE(f->signalled.requestFailed.count(), local && !server ? 1 : 0);
    QCOMPARE(f->signalled.errorOccured.count(), local ? 2 : 0);
    if (server) {
        QCOMPARE(f->serverPort.calls.at(1).as<ChatItemBasic>().message, std::string("full"));
        QCOMPARE(f->serverPort.calls.at(2).as<ChatItemBasic>().question, std::string("three"));
    }
}

void OutcomesTest::requestFailedFinished()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    f->controller.startTimer();
    f->controller.requestFailedFinished(item());
    QCOMPARE(f->isTimerActive(), !local);
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestFailed:1"));
    QVERIFY(f->serverPort.calls.isEmpty());
    checkItem(f->signalled.requestFailed.argument<0>(0));
}

void OutcomesTest::otherFinishedOperationsOnlyFire()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    f->controller.startTimer();
    f->d.nTickCount = 5;
    f->controller.generateTextFinished({"asked", "answer"});
    f->controller.downloadPictureFinished(QStringLiteral("/a/\u4e2d.jpg"));
    f->controller.errorOccuredFinished(item());
    f->controller.requestTimeoutFinished(item());
    f->controller.deleteGeneratingItem();
    QCOMPARE(f->signalled.summary(),
             QStringLiteral("downloadPictureFinished:1 generateTextFinished:1 errorOccured:1 requestTimeout:1 "
                            "deleteGeneratingItem:1"));
    QCOMPARE(f->signalled.generateTextFinished.argument<0>(0).answer, std::string("answer"));
    QCOMPARE(f->signalled.downloadPictureFinished.argument<0>(0), std::string("/a/\xE4\xB8\xAD.jpg"));
    checkItem(f->signalled.errorOccured.argument<0>(0));
    checkItem(f->signalled.requestTimeout.argument<0>(0));
    QVERIFY(f->isTimerActive());
    QCOMPARE(f->d.nTickCount, 5);
    QVERIFY(f->serverPort.calls.isEmpty() && f->clientPort.calls.isEmpty());
}

void OutcomesTest::completionsFireOnTheCallingThread()
{
    std::thread::id other;
    std::thread([&] {
        other = std::this_thread::get_id();
        f->controller.generateTextFinished({});
        f->controller.deleteGeneratingItem();
    }).join();
    QCOMPARE(f->signalled.summary(), QStringLiteral("generateTextFinished:1 deleteGeneratingItem:1"));
    QVERIFY(f->signalled.generateTextFinished.emission(0).thread == other);
    QVERIFY(f->signalled.deleteGeneratingItem.emission(0).thread == other);
}

void OutcomesTest::pictureCompletionFetchesOnly()
{
    f->server.expect("GET", "/picture", ScriptedAnswer::bytes("no picture").held());
    PicturedGeneratedPack pack;
    pack.content = "asked";
    pack.source.url = f->server.url().toStdString() + "/picture";
    std::thread([&] { f->controller.generatePictureFinished(pack); }).join();
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    QCOMPARE(f->signalled.summary(), QString());
    f->server.releaseAll();
    QVERIFY(f->signalled.generatePictureFinished.waitFor(1));
    QCOMPARE(f->signalled.generatePictureFinished.argument<0>(0), QStringLiteral("asked"));
    QVERIFY(f->signalled.generatePictureFinished.emission(0).thread == std::this_thread::get_id());
}

void OutcomesTest::serverRoleTakenOnLaterIsReported()
{
    f->controller.setZVRuntime(&f->runtime);
    f->runtime.setRoles({true, false, false});
    const ExpectedLog missing(f->log, QStringLiteral("there is no proxy server"), 2);
    f->controller.requestFailed(item());
    f->controller.clearHistoryRecord();
    QCOMPARE(f->signalled.summary(), QString());
}

QTEST_GUILESS_MAIN(OutcomesTest)
#include "tst_outcomes.moc"
