#include "controllertest.h"
#include "roles.h"

#include <QFile>
#include <QJsonArray>

/// The operations that the panel calls: sent, done here, both, neither.
class RoutingTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void textQuestion_data() { addRoles(); }
    void textQuestion();
    void pictureRequest_data() { addRoles(); }
    void pictureRequest();
    void flags_data() { addRoles(); }
    void flags();
    void clearing_data() { addRoles(); }
    void clearing();
    void headers_data() { addRoles(); }
    void headers();
    void wrongHeaderListIsSentButNotTaken();
    void stop_data() { addRoles(); }
    void stop();
    void downloadIsAlwaysDoneHere_data() { addRoles(); }
    void downloadIsAlwaysDoneHere();
    void widgetShowIsSentByAClientOnly_data() { addRoles(); }
    void widgetShowIsSentByAClientOnly();
    void rolesAreAskedForEachCall();
    void clientRoleTakenOnLaterIsReported();
    void withoutRuntimeEverythingIsDoneHere();

private:
    using Names = QVector<QByteArray>;
};

void RoutingTest::textQuestion()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    if (local)
        f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
    f->controller.textToGenerateText(QStringLiteral("q \u4e2d"));
    QVERIFY(f->repliesDone());
    QCOMPARE(f->clientPort.names(), client ? Names{"GenerateText"} : Names());
    if (client)
        QCOMPARE(f->clientPort.calls.at(0).as<QString>(), QStringLiteral("q \u4e2d"));
    QCOMPARE(f->server.requestCount(), local ? 1 : 0);
    QCOMPARE(f->d.historyArray.size(), local ? 1 : 0);
    QCOMPARE(f->isTimerActive(), local);
    QVERIFY(f->serverPort.calls.isEmpty());
}

void RoutingTest::pictureRequest()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    if (local)
        f->server.expect("POST", ControllerFixture::picturePath(), ControllerFixture::accepted());
    f->controller.textToGeneratePicture(ControllerFixture::pictureInfo());
    QVERIFY(f->repliesDone());
    QCOMPARE(f->clientPort.names(), client ? Names{"GenerateImage"} : Names());
    if (client)
        QCOMPARE(f->clientPort.calls.at(0).as<PictureGenerateInfo>().style, std::string("oil"));
    QCOMPARE(f->server.requestCount(), local ? 1 : 0);
}

void RoutingTest::flags()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    f->controller.toActiveDeepSeekModel(true);
    f->controller.toActiveOnlineSearch(true);
    f->controller.toActiveOnlineSearch(false);
    QCOMPARE(f->clientPort.names(),
             client ? (Names{"ActiveDeepseek", "ActiveOnlineSearch", "ActiveOnlineSearch"}) : Names());
    if (client) {
        QCOMPARE(f->clientPort.calls.at(0).as<bool>(), true);
        QCOMPARE(f->clientPort.calls.at(1).as<bool>(), true);
        QCOMPARE(f->clientPort.calls.at(2).as<bool>(), false);
    }
    QCOMPARE(f->d.bEnableDeepModel, local);
    QCOMPARE(f->d.bEnableOnlineSearch, false);
    const Names forwarded{"ActiveDeepseekFinished", "ActiveOnlineSearchFinished", "ActiveOnlineSearchFinished"};
    QCOMPARE(f->serverPort.names(), server && local ? forwarded : Names());
    if (client && server && local)
        QVERIFY(f->clientPort.calls.at(0).number < f->serverPort.calls.at(0).number);
}

void RoutingTest::clearing()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    f->d.historyArray = QJsonArray{1};
    f->d.strLastPictureUrl = QStringLiteral("u");
    f->controller.toClearHistoryRecord();
    QCOMPARE(f->d.historyArray.isEmpty(), local);
    QVERIFY(!f->d.strLastPictureUrl.isEmpty());
    f->controller.toClearCathe();
    QCOMPARE(f->d.strLastPictureUrl.isEmpty(), local);
    QCOMPARE(f->clientPort.names(), client ? (Names{"ClearHistoryRecord", "ClearCathe"}) : Names());
    QCOMPARE(f->serverPort.names(),
             server && local ? (Names{"ClearHistoryRecordFinished", "ClearCatheFinished"}) : Names());
}

void RoutingTest::headers()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    f->controller.toUpdateHeaderInfo({"t", "u", "n"});
    QCOMPARE(f->d.resultRequest.rawHeader("userId"), QByteArray(local ? "u" : ""));
    f->controller.toClearHeaderInfo();
    QCOMPARE(f->d.resultRequest.rawHeader("userId"), QByteArray());
    QCOMPARE(f->d.resultRequest.hasRawHeader("userId"), local);
    QCOMPARE(f->clientPort.names(), client ? (Names{"UpdateHeader", "ClearHeader"}) : Names());
    if (client)
        QCOMPARE(f->clientPort.calls.at(0).as<std::vector<std::string>>(), (std::vector<std::string>{"t", "u", "n"}));
    QCOMPARE(f->signalled.summary(), local ? QStringLiteral("resetMainWidget:1") : QString());
    QVERIFY(f->serverPort.calls.isEmpty());
}

void RoutingTest::wrongHeaderListIsSentButNotTaken()
{
    f->useRoles({false, true, true});
    f->controller.toUpdateHeaderInfo({"t", "u"});
    QCOMPARE(f->clientPort.names(), Names{"UpdateHeader"});
    QVERIFY(!f->d.resultRequest.hasRawHeader("token"));
}

void RoutingTest::stop()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    f->d.bQuerying = true;
    f->controller.toStopGenerate();
    QCOMPARE(f->clientPort.names(), client ? Names{"StopGenerate"} : Names());
    QCOMPARE(f->d.bStopGenerate, local);
    QCOMPARE(f->d.bQuerying, !local);
    QVERIFY(f->serverPort.calls.isEmpty());
    QCOMPARE(f->signalled.summary(), QString());
}

void RoutingTest::downloadIsAlwaysDoneHere()
{
    f->useRoles(fetchRoles());
    f->server.expect("GET", "/picture", ScriptedAnswer::bytes("bytes"));
    f->controller.toDownloadPicture(f->server.url() + QStringLiteral("/picture"));
    QVERIFY(f->signalled.downloadPictureFinished.waitFor(1));
    QVERIFY(f->repliesDone());
    QVERIFY(f->clientPort.calls.isEmpty() && f->serverPort.calls.isEmpty());
    QVERIFY(QFile::remove(QString::fromStdString(f->signalled.downloadPictureFinished.argument<0>(0))));
}

void RoutingTest::widgetShowIsSentByAClientOnly()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    f->controller.notifyAiWidgetShow();
    QCOMPARE(f->clientPort.names(), client ? Names{"AiWidgetShow"} : Names());
    QVERIFY(f->serverPort.calls.isEmpty());
    QCOMPARE(f->signalled.summary(), QString());
}

void RoutingTest::rolesAreAskedForEachCall()
{
    f->useRoles({false, true, false});
    f->controller.toClearHistoryRecord();
    f->runtime.setRoles({false, false, true});
    f->d.historyArray = QJsonArray{1};
    f->controller.toClearHistoryRecord();
    QCOMPARE(f->clientPort.calls.size(), 1);
    QVERIFY(f->d.historyArray.isEmpty());
}

void RoutingTest::clientRoleTakenOnLaterIsReported()
{
    f->controller.setZVRuntime(&f->runtime);
    f->runtime.setRoles({false, true, true});
    const ExpectedLog missing(f->log, QStringLiteral("there is no proxy client"));
    f->controller.toActiveDeepSeekModel(true);
    QVERIFY(f->d.bEnableDeepModel);
}

void RoutingTest::withoutRuntimeEverythingIsDoneHere()
{
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
    f->controller.textToGenerateText(QStringLiteral("q"));
    QVERIFY(f->repliesDone());
    f->controller.toStopGenerate();
    QVERIFY(f->d.bStopGenerate);
    f->controller.notifyAiWidgetShow();
    QVERIFY(f->clientPort.calls.isEmpty() && f->serverPort.calls.isEmpty());
}

QTEST_GUILESS_MAIN(RoutingTest)
#include "tst_routing.moc"
