#include "proxytest.h"
#include "samples.h"
#include "vectors.h"

#include <functional>

using ServerOperation = std::function<void(ControllerFixture &)>;
Q_DECLARE_METATYPE(ServerOperation)

namespace {

void compareItems(const ChatItemBasic &actual, const ChatItemBasic &expected)
{
    QCOMPARE(static_cast<int>(actual.type), static_cast<int>(expected.type));
    QCOMPARE(actual.question, expected.question);
    QCOMPARE(actual.picInfo.style, expected.picInfo.style);
    QCOMPARE(actual.picInfo.logoOpacity, expected.picInfo.logoOpacity);
    QCOMPARE(actual.message, expected.message);
}

} // namespace

/// What the serving machine sends for each outcome, and what a client makes of it.
class ProxyCompletionsTest : public ProxyTest {
    Q_OBJECT

private Q_SLOTS:
    void outcomeIsSent_data();
    void outcomeIsSent();
    void machineWithoutTheRoleSendsNothing_data();
    void machineWithoutTheRoleSendsNothing();
    void textReachesThePanel();
    void pictureIsFetchedByTheClient();
    void downloadedPictureReachesThePanel();
    void stopStopsTheClientToo();
    void deletedItemReachesThePanel();
    void failuresReachThePanel_data();
    void failuresReachThePanel();
    void failureStopsTheTimerOfAMachineThatExecutes();
    void timeoutOnAClientThatServesIsTold();
    void completionsWithoutAnArgumentTakeAnyPayload();
    void signalsFireOnTheRuntimesThread();
    void panelMayEndTheController_data() { failuresReachThePanel_data(); }
    void panelMayEndTheController();
};

void ProxyCompletionsTest::outcomeIsSent_data()
{
    QTest::addColumn<ServerOperation>("operation");
    QTest::addColumn<QByteArray>("payload");
    const auto add = [](const char *name, const ServerOperation &operation, const QByteArray &payload = {}) {
        QTest::newRow(name) << operation << payload;
    };
    const auto port = [](ControllerFixture &m) { return m.d.proxyServer.load(); };
    add(
        "GenerateTextFinished", [=](ControllerFixture &m) { port(m)->generateTextFinished(samples::text()); },
        packedVector("text", "filled"));
    add(
        "GenerateImageFinished", [=](ControllerFixture &m) { port(m)->generateImageFinished(samples::pictured()); },
        packedVector("pictured", "filled"));
    add(
        "DownloadPictureFinished",
        [=](ControllerFixture &m) { port(m)->downloadPictureFinished(QStringLiteral("hello")); },
        packedVector("string", "filled"));
    add("StopGenerateFinished", [=](ControllerFixture &m) { port(m)->stopGenerateFinished(); });
    add("DeleteGeneratingItem", [=](ControllerFixture &m) { port(m)->deleteGeneratingItem(); });
    add(
        "ActiveDeepseekFinished", [](ControllerFixture &m) { m.controller.activeDeepseekModel(true); }, "\xC3");
    add(
        "ActiveOnlineSearchFinished", [](ControllerFixture &m) { m.controller.activeOnlineSearch(false); }, "\xC2");
    add("ClearCatheFinished", [](ControllerFixture &m) { m.controller.clearCathe(); });
    add("ClearHistoryRecordFinished", [](ControllerFixture &m) { m.controller.clearHistoryRecord(); });
    add("ClearHeaderFinished", [=](ControllerFixture &m) { port(m)->clearHeaderFinished(); });
    add(
        "RequestFailed", [](ControllerFixture &m) { m.controller.requestFailed(samples::chatItem()); },
        packedVector("chatitem", "filled"));
    add(
        "ErrorOccured", [](ControllerFixture &m) { m.controller.errorOccured(samples::chatItem()); },
        packedVector("chatitem", "filled"));
    add(
        "RequestTimeout", [](ControllerFixture &m) { m.controller.requesetTimeout(samples::chatItem()); },
        packedVector("chatitem", "filled"));
}

void ProxyCompletionsTest::outcomeIsSent()
{
    QFETCH(ServerOperation, operation);
    QFETCH(QByteArray, payload);
    operation(*f);
    COMPARE_SENT(f->runtime, Call::Kind::ToClients, QTest::currentDataTag(), payload);
    QCOMPARE(f->runtime.names(Call::Kind::ToServer), Names());
    QCOMPARE(f->signalled.summary(), QString());
}

void ProxyCompletionsTest::machineWithoutTheRoleSendsNothing_data()
{
    QTest::addColumn<ServerOperation>("operation");
    QTest::newRow("flag") << ServerOperation([](ControllerFixture &m) { m.controller.activeDeepseekModel(true); });
    QTest::newRow("clear") << ServerOperation([](ControllerFixture &m) { m.controller.clearCathe(); });
    QTest::newRow("failure") << ServerOperation(
        [](ControllerFixture &m) { m.controller.requestFailed(samples::chatItem()); });
    QTest::newRow("timeout") << ServerOperation(
        [](ControllerFixture &m) { m.controller.requesetTimeout(samples::chatItem()); });
}

void ProxyCompletionsTest::machineWithoutTheRoleSendsNothing()
{
    QFETCH(ServerOperation, operation);
    f->runtime.setRoles({false, true, true});
    operation(*f);
    QCOMPARE(f->runtime.names(Call::Kind::ToClients), Names());
}

void ProxyCompletionsTest::textReachesThePanel()
{
    QVERIFY(client->runtime.deliver("GenerateTextFinished", packedVector("text", "filled")));
    QCOMPARE(client->signalled.summary(), QStringLiteral("generateTextFinished:1"));
    const TextGeneratedPack pack = client->signalled.generateTextFinished.argument<0>(0);
    QCOMPARE(pack.question, std::string("What is on layer 2?"));
    QCOMPARE(pack.answer, std::string("The harbour clip."));
}

void ProxyCompletionsTest::pictureIsFetchedByTheClient()
{
    f->server.expect("GET", "/p/1", ScriptedAnswer::bytes("no picture"));
    PicturedGeneratedPack pack = samples::pictured();
    pack.source.url = f->server.url().toStdString() + "/p/1";
    f->d.proxyServer.load()->generateImageFinished(pack);
    const QVector<Call> sent = f->runtime.calls(Call::Kind::ToClients);
    QVERIFY(client->runtime.deliver(sent.at(0).name, sent.at(0).payload));
    QCOMPARE(client->signalled.summary(), QString());
    QVERIFY(client->signalled.generatePictureFinished.waitFor(1));
    QCOMPARE(client->signalled.generatePictureFinished.argument<0>(0), QStringLiteral("a lake"));
    QCOMPARE(client->signalled.generatePictureFinished.argument<1>(0).style, std::string("Watercolor"));
    QCOMPARE(f->log.count(QStringLiteral("convert raw data to QPixmap object failed.")), 1);
}

void ProxyCompletionsTest::downloadedPictureReachesThePanel()
{
    QVERIFY(client->runtime.deliver("DownloadPictureFinished", packedVector("string", "chinese")));
    QCOMPARE(client->signalled.summary(), QStringLiteral("downloadPictureFinished:1"));
    QCOMPARE(client->signalled.downloadPictureFinished.argument<0>(0), std::string("\xe4\xb8\xad\xe6\x96\x87"));
}

void ProxyCompletionsTest::stopStopsTheClientToo()
{
    client->d.bQuerying = true;
    QVERIFY(client->runtime.deliver("StopGenerateFinished"));
    QVERIFY(client->d.bStopGenerate);
    QVERIFY(!client->d.bQuerying);
    QCOMPARE(client->runtime.names(Call::Kind::ToServer), Names());
}

void ProxyCompletionsTest::deletedItemReachesThePanel()
{
    QVERIFY(client->runtime.deliver("DeleteGeneratingItem"));
    QCOMPARE(client->signalled.summary(), QStringLiteral("deleteGeneratingItem:1"));
}

void ProxyCompletionsTest::failuresReachThePanel_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("failed") << QByteArray("RequestFailed") << QStringLiteral("requestFailed:1");
    QTest::newRow("error") << QByteArray("ErrorOccured") << QStringLiteral("errorOccured:1");
    QTest::newRow("timeout") << QByteArray("RequestTimeout") << QStringLiteral("requestTimeout:1");
}

void ProxyCompletionsTest::failuresReachThePanel()
{
    QFETCH(QByteArray, name);
    client->d.nTickCount = 5;
    QVERIFY(client->runtime.deliver(name, packedVector("chatitem", "filled")));
    QTEST(client->signalled.summary(), "expected");
    const ControllerSignals &seen = client->signalled;
    for (const auto *recorder : {&seen.requestFailed, &seen.errorOccured, &seen.requestTimeout}) {
        if (recorder->count() > 0)
            compareItems(recorder->argument<0>(0), samples::chatItem());
    }
    QCOMPARE(client->d.nTickCount, name == "RequestTimeout" ? 0 : 5);
}

void ProxyCompletionsTest::failureStopsTheTimerOfAMachineThatExecutes()
{
    for (const bool executes : {false, true}) {
        ClientMachine machine({false, true, executes});
        machine.controller.createTimer();
        machine.controller.startTimer();
        QVERIFY(machine.runtime.deliver("RequestFailed", packedVector("chatitem", "filled")));
        QCOMPARE(machine.d.pQueryTimer->isActive(), !executes);
    }
}

void ProxyCompletionsTest::timeoutOnAClientThatServesIsTold()
{
    ClientMachine machine({true, true, false});
    QVERIFY(machine.runtime.deliver("RequestTimeout", packedVector("chatitem", "filled")));
    QCOMPARE(machine.signalled.summary(), QString());
    COMPARE_SENT(machine.runtime, Call::Kind::ToClients, "RequestTimeout", packedVector("chatitem", "filled"));
}

void ProxyCompletionsTest::completionsWithoutAnArgumentTakeAnyPayload()
{
    for (const char *name : {"StopGenerateFinished", "DeleteGeneratingItem", "ClearCatheFinished"})
        QVERIFY(client->runtime.deliver(name, "\xC1"));
    QCOMPARE(client->signalled.summary(), QStringLiteral("deleteGeneratingItem:1"));
}

void ProxyCompletionsTest::signalsFireOnTheRuntimesThread()
{
    std::thread::id other;
    std::thread([&] {
        other = std::this_thread::get_id();
        client->runtime.deliver("GenerateTextFinished", packedVector("text", "filled"));
    }).join();
    QCOMPARE(client->signalled.generateTextFinished.count(), 1);
    QVERIFY(client->signalled.generateTextFinished.emission(0).thread == other);
}

void ProxyCompletionsTest::panelMayEndTheController()
{
    QFETCH(QByteArray, name);
    FakeRuntime runtime({false, true, false});
    auto controller = std::make_unique<AiController>();
    controller->setZVRuntime(&runtime);
    const auto end = [&](const ChatItemBasic &) { controller.reset(); };
    controller->sigRequestFailed.connect(end);
    controller->sigErrorOccured.connect(end);
    controller->sigRequestTimeout.connect(end);
    QVERIFY(runtime.deliver(name, packedVector("chatitem", "filled")));
    QVERIFY(!controller);
}

QTEST_GUILESS_MAIN(ProxyCompletionsTest)
#include "tst_proxycompletions.moc"
