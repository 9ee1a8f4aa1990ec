#include "proxytest.h"
#include "vectors.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>

/// What the serving machine's controller does for each call that comes in.
class ProxyServerTest : public ProxyTest {
    Q_OBJECT

private Q_SLOTS:
    void generateTextAsksTheService();
    void generateImageAsksTheService();
    void shorterPictureRequestGetsTheDefaults();
    void downloadPictureSavesTheFileHere();
    void stopGenerateStops();
    void flags_data();
    void flags();
    void clearCatheForgetsAndTellsTheClients();
    void clearHistoryRecordBeginsAnewAndTellsNoClient();
    void widgetShowIsAnnounced();
    void widgetShowMayEndTheController();
    void widgetShowMayEndTheControllerAtTheSecondSignal();
    void callsWithoutAnArgumentTakeAnyPayload_data();
    void callsWithoutAnArgumentTakeAnyPayload();
    void bothRolesAnswerToBothTables();

private:
    void deliver(const QByteArray &name, const QByteArray &payload = {}) { QVERIFY(f->runtime.deliver(name, payload)); }
    QJsonObject bodyOfTheOnlyRequest(const QByteArray &path);
};

QJsonObject ProxyServerTest::bodyOfTheOnlyRequest(const QByteArray &path)
{
    const auto requests = f->server.requests();
    return requests.size() == 1 && requests.at(0).target == path ? requests.at(0).json() : QJsonObject();
}

void ProxyServerTest::generateTextAsksTheService()
{
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
    deliver("GenerateText", packedVector("string", "chinese"));
    QVERIFY(f->repliesDone());
    const QJsonArray messages =
        bodyOfTheOnlyRequest(ControllerFixture::textPath()).value(QLatin1String("messages")).toArray();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.at(0).toObject().value(QLatin1String("content")).toString(), QStringLiteral("\u4e2d\u6587"));
    QVERIFY(f->isTimerActive());
    QCOMPARE(f->runtime.names(Call::Kind::ToClients), Names());
}

void ProxyServerTest::generateImageAsksTheService()
{
    f->server.expect("POST", ControllerFixture::picturePath(), ControllerFixture::accepted());
    deliver("GenerateImage", packedVector("picture", "filled"));
    QVERIFY(f->repliesDone());
    const QJsonObject expected{{QStringLiteral("style"), QStringLiteral("Watercolor")},
                               {QStringLiteral("width"), 1920},
                               {QStringLiteral("height"), 1080},
                               {QStringLiteral("useSR"), false},
                               {QStringLiteral("content"), QStringLiteral("a lake at dawn")},
                               {QStringLiteral("enableLogo"), true},
                               {QStringLiteral("logoPositon"), 3},
                               {QStringLiteral("logoLanguage"), true},
                               {QStringLiteral("logoOpacity"), 0.5},
                               {QStringLiteral("logoContent"), QStringLiteral("ZV")}};
    QCOMPARE(bodyOfTheOnlyRequest(ControllerFixture::picturePath()), expected);
}

void ProxyServerTest::shorterPictureRequestGetsTheDefaults()
{
    f->server.expect("POST", ControllerFixture::picturePath(), ControllerFixture::accepted());
    deliver("GenerateImage",
            QByteArray::fromHex("95"
                                "a36f696c"
                                "cd0280"
                                "cd0168"
                                "c2"
                                "a161"));
    QVERIFY(f->repliesDone());
    const QJsonObject body = bodyOfTheOnlyRequest(ControllerFixture::picturePath());
    QCOMPARE(body.value(QLatin1String("width")).toInt(), 640);
    QCOMPARE(body.value(QLatin1String("height")).toInt(), 360);
    QCOMPARE(body.value(QLatin1String("useSR")).toBool(true), false);
    QCOMPARE(body.value(QLatin1String("content")).toString(), QStringLiteral("a"));
    QCOMPARE(body.value(QLatin1String("enableLogo")).toBool(true), false);
    QCOMPARE(body.value(QLatin1String("logoOpacity")).toDouble(), double{0.35F});
    QCOMPARE(body.value(QLatin1String("logoContent")).toString(), QStringLiteral("width"));
}

void ProxyServerTest::downloadPictureSavesTheFileHere()
{
    f->server.expect("GET", "/p", ScriptedAnswer::bytes("bytes"));
    const QByteArray url = f->server.url().toUtf8() + "/p";
    deliver("DownloadPicture", QByteArray(1, static_cast<char>(0xA0 + url.size())) + url);
    QVERIFY(f->signalled.downloadPictureFinished.waitFor(1));
    QVERIFY(f->repliesDone());
    QVERIFY(QFile::remove(QString::fromStdString(f->signalled.downloadPictureFinished.argument<0>(0))));
    QCOMPARE(f->runtime.names(Call::Kind::ToClients), Names());
}

void ProxyServerTest::stopGenerateStops()
{
    f->d.bQuerying = true;
    deliver("StopGenerate");
    QVERIFY(f->d.bStopGenerate);
    QVERIFY(!f->d.bQuerying);
    QCOMPARE(f->runtime.names(Call::Kind::ToClients), Names());
}

void ProxyServerTest::flags_data()
{
    QTest::addColumn<QByteArray>("call");
    QTest::addColumn<bool>("active");
    for (const bool active : {false, true}) {
        QTest::addRow("deep model %d", active) << QByteArray("ActiveDeepseek") << active;
        QTest::addRow("online search %d", active) << QByteArray("ActiveOnlineSearch") << active;
    }
}

void ProxyServerTest::flags()
{
    QFETCH(QByteArray, call);
    QFETCH(bool, active);
    const bool isDeepModel = call == "ActiveDeepseek";
    for (ControllerPrivate *d : {&f->d, &client->d}) {
        (isDeepModel ? d->bEnableDeepModel : d->bEnableOnlineSearch) = !active;
        d->historyArray = QJsonArray{1};
    }
    const QByteArray payload(1, active ? '\xC3' : '\xC2');
    deliver(call, payload);
    COMPARE_SENT(f->runtime, Call::Kind::ToClients, call + "Finished", payload);
    QVERIFY(client->runtime.deliver(call + "Finished", payload));
    for (const ControllerPrivate *d : {&f->d, &client->d}) {
        QCOMPARE(isDeepModel ? d->bEnableDeepModel : d->bEnableOnlineSearch, active);
        QCOMPARE(isDeepModel ? d->bEnableOnlineSearch : d->bEnableDeepModel, false);
        QVERIFY(d->historyArray.isEmpty());
    }
    QCOMPARE(client->runtime.names(Call::Kind::ToServer), Names());
}

void ProxyServerTest::clearCatheForgetsAndTellsTheClients()
{
    for (ControllerPrivate *d : {&f->d, &client->d}) {
        d->strLastPictureUrl = QStringLiteral("u");
        d->strReqId = QStringLiteral("r");
    }
    deliver("ClearCathe");
    COMPARE_SENT(f->runtime, Call::Kind::ToClients, "ClearCatheFinished");
    QVERIFY(client->runtime.deliver("ClearCatheFinished"));
    for (const ControllerPrivate *d : {&f->d, &client->d}) {
        QVERIFY(d->strLastPictureUrl.isEmpty());
        QVERIFY(d->strReqId.isEmpty());
    }
}

void ProxyServerTest::clearHistoryRecordBeginsAnewAndTellsNoClient()
{
    f->d.historyArray = QJsonArray{1};
    client->d.historyArray = QJsonArray{1};
    deliver("ClearHistoryRecord");
    QVERIFY(f->d.historyArray.isEmpty());
    COMPARE_SENT(f->runtime, Call::Kind::ToClients, "ClearHistoryRecordFinished");
    QVERIFY(!client->runtime.deliver("ClearHistoryRecordFinished"));
    QCOMPARE(client->d.historyArray.size(), 1);
}

void ProxyServerTest::widgetShowIsAnnounced()
{
    deliver("AiWidgetShow");
    QCOMPARE(f->signalled.summary(), QStringLiteral("aiNotify:1 notify:1"));
    QVERIFY(f->signalled.aiNotify.emission(0).number < f->signalled.notify.emission(0).number);
    QCOMPARE(f->runtime.names(Call::Kind::ToClients), Names());
}

void ProxyServerTest::widgetShowMayEndTheController()
{
    FakeRuntime runtime({true, false, false});
    auto controller = std::make_unique<AiController>();
    controller->setZVRuntime(&runtime);
    const SignalRecorder<> notified(controller->sigNotify);
    controller->sigAiNotify.connect([&] { controller.reset(); });
    QVERIFY(runtime.deliver("AiWidgetShow"));
    QVERIFY(!controller);
    QCOMPARE(notified.count(), 0);
}

void ProxyServerTest::widgetShowMayEndTheControllerAtTheSecondSignal()
{
    FakeRuntime runtime({true, false, false});
    auto controller = std::make_unique<AiController>();
    controller->setZVRuntime(&runtime);
    controller->sigNotify.connect([&] { controller.reset(); });
    QVERIFY(runtime.deliver("AiWidgetShow"));
    QVERIFY(!controller);
}

void ProxyServerTest::callsWithoutAnArgumentTakeAnyPayload_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("never used byte") << QByteArray("\xC1");
    QTest::newRow("a text") << QByteArray("\xA1x");
}

void ProxyServerTest::callsWithoutAnArgumentTakeAnyPayload()
{
    QFETCH(QByteArray, payload);
    for (const char *name : {"StopGenerate", "ClearCathe", "ClearHistoryRecord", "ClearHeader", "AiWidgetShow"})
        deliver(name, payload);
    QCOMPARE(f->runtime.names(Call::Kind::ToClients),
             (Names{"ClearCatheFinished", "ClearHistoryRecordFinished", "ClearHeaderFinished"}));
    QCOMPARE(f->signalled.summary(), QStringLiteral("aiNotify:1 notify:1"));
}

void ProxyServerTest::bothRolesAnswerToBothTables()
{
    ClientMachine machine({true, true, false});
    QVERIFY(machine.runtime.deliver("ActiveDeepseek", "\xC3"));
    COMPARE_SENT(machine.runtime, Call::Kind::ToClients, "ActiveDeepseekFinished", "\xC3");
    QVERIFY(machine.runtime.deliver("DeleteGeneratingItem"));
    QCOMPARE(machine.signalled.summary(), QStringLiteral("deleteGeneratingItem:1"));
    machine.controller.toStopGenerate();
    COMPARE_SENT(machine.runtime, Call::Kind::ToServer, "StopGenerate");
}

QTEST_GUILESS_MAIN(ProxyServerTest)
#include "tst_proxyserver.moc"
