#include "controllertest.h"
#include "roles.h"

#include <QJsonArray>

#include <limits>

/// The settings. Headers: tst_headers. The conversation: tst_conversation.
class ConfigurationTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void stateBeginsAsTheInterfaceSays();
    void timeoutIsTakenInSeconds_data();
    void timeoutIsTakenInSeconds();
    void pollIntervalIsTakenInSeconds_data();
    void pollIntervalIsTakenInSeconds();
    void negativePollIntervalIsRefused();
    void newDomainHoldsFromTheNextRequestOn();
    void mediaLibraryIsCopied();
    void mediaLibraryReplacesTheEarlierOne();
    void resetMainWidgetOnlyTellsThePanel();
    void switchedLanguageIsAnnounced();
    void withoutRuntimeTheMachineIsASingleOne();
    void stateChangesAreForwardedByAServerOnly_data();
    void stateChangesAreForwardedByAServerOnly();
};

void ConfigurationTest::stateBeginsAsTheInterfaceSays()
{
    AiController controller;
    const auto &d = AiControllerAccess::of(controller);
    QCOMPARE(d.controller, &controller);
    QVERIFY(!d.runtime && !d.proxyClient && !d.proxyServer);
    QVERIFY(d.historyArray.isEmpty());
    QVERIFY(d.resultRequest.url().isEmpty());
    QCOMPARE(d.resultRequest.rawHeaderList(), (QList<QByteArray>{"Content-Type", "deviceId"}));
    QVERIFY(d.requestManager && d.downloadManager);
    QVERIFY(!d.requestManager->parent() && !d.downloadManager->parent());
    QVERIFY(d.domain.isEmpty());
    QVERIFY(!d.pQueryTimer);
    QCOMPARE(d.nTickCount, 0);
    QCOMPARE(d.nTimeoutMs, 60000);
    QVERIFY(d.strPrompt.isEmpty() && d.strReqId.isEmpty() && d.strLastPictureUrl.isEmpty()
            && d.strDescription.isEmpty());
    QCOMPARE(d.pictureInfo.width, 3840);
    QVERIFY(!d.bQuerying);
    QVERIFY(d.bPictureMode);
    QVERIFY(!d.bStopGenerate);
    QVERIFY(!d.bEnableDeepModel && !d.bEnableOnlineSearch);
    QVERIFY(d.pendingImagePack.source.url.empty());
    QVERIFY(!d.textReply);
    QVERIFY(d.mediaResources.empty());
    QVERIFY(d.agentCmdList.empty());
    QVERIFY(!d.bPlayAfterDownload);
}

void ConfigurationTest::timeoutIsTakenInSeconds_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<int>("milliseconds");
    QTest::newRow("zero") << 0 << 0;
    QTest::newRow("one") << 1 << 1000;
    QTest::newRow("two minutes") << 120 << 120000;
    QTest::newRow("negative") << -3 << -3000;
    QTest::newRow("more than fits") << std::numeric_limits<int>::max() << std::numeric_limits<int>::max();
}

void ConfigurationTest::timeoutIsTakenInSeconds()
{
    QFETCH(int, seconds);
    QFETCH(int, milliseconds);
    f->controller.setTimeout(seconds);
    QCOMPARE(f->d.nTimeoutMs, milliseconds);
}

void ConfigurationTest::pollIntervalIsTakenInSeconds_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<int>("milliseconds");
    QTest::newRow("zero") << 0 << 0;
    QTest::newRow("one") << 1 << 1000;
    QTest::newRow("ten") << 10 << 10000;
}

void ConfigurationTest::pollIntervalIsTakenInSeconds()
{
    QFETCH(int, seconds);
    QFETCH(int, milliseconds);
    f->controller.setSingleTickTime(seconds);
    QCOMPARE(f->d.pQueryTimer->interval(), milliseconds);
    QVERIFY(!f->isTimerActive());
}

void ConfigurationTest::negativePollIntervalIsRefused()
{
    const ExpectedLog refused(f->log, QStringLiteral("poll interval"));
    f->controller.setSingleTickTime(-1);
    QCOMPARE(f->d.pQueryTimer->interval(), 5000);
}

void ConfigurationTest::newDomainHoldsFromTheNextRequestOn()
{
    QVERIFY(f->askText());
    f->controller.setDomain(f->server.url() + QStringLiteral("/deeper"));
    f->server.expect("POST", "/deeper" + ControllerFixture::resultPath(), ControllerFixture::readyText());
    f->tick();
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.generateTextFinished.count(), 1);
}

void ConfigurationTest::mediaLibraryIsCopied()
{
    std::vector<std::pair<std::string, std::string>> list{{"m1", "One"}};
    f->controller.setMediaLibAllResources(list);
    list[0].second = "changed by the host";
    QCOMPARE(f->d.mediaListArray().at(0).toObject().value(QLatin1String("name")).toString(), QStringLiteral("One"));
}

void ConfigurationTest::mediaLibraryReplacesTheEarlierOne()
{
    f->controller.setMediaLibAllResources({{"m1", "One"}, {"m2", "Two"}});
    QCOMPARE(f->d.mediaListArray().size(), 2);
    f->controller.setMediaLibAllResources({{"m1", "One"}, {"m2", "Two"}});
    QCOMPARE(f->d.mediaListArray().size(), 2);
    f->controller.setMediaLibAllResources({{"m3", "Three"}});
    QCOMPARE(f->d.mediaListArray().size(), 1);
    QCOMPARE(f->d.mediaListArray().at(0).toObject().value(QLatin1String("id")).toString(), QStringLiteral("m3"));
    f->controller.setMediaLibAllResources({});
    QVERIFY(f->d.mediaListArray().isEmpty());
}

void ConfigurationTest::resetMainWidgetOnlyTellsThePanel()
{
    QVERIFY(f->askText());
    f->controller.resetMainWidget();
    QCOMPARE(f->signalled.summary(), QStringLiteral("resetMainWidget:1"));
    QCOMPARE(f->d.strReqId, QStringLiteral("r1"));
}

void ConfigurationTest::switchedLanguageIsAnnounced()
{
    f->controller.switchLanguage("no such language");
    QCOMPARE(f->signalled.summary(), QStringLiteral("languageChanged:1"));
}

void ConfigurationTest::withoutRuntimeTheMachineIsASingleOne()
{
    QVERIFY(f->d.isLocalExecutor());
    QVERIFY(!f->d.isProxyClient() && !f->d.isProxyServer());
    f->useRoles({true, true, false});
    QVERIFY(!f->d.isLocalExecutor());
    f->controller.setZVRuntime(nullptr);
    QVERIFY(f->d.isLocalExecutor());
    QVERIFY(!f->d.isProxyClient() && !f->d.isProxyServer());
    f->controller.toClearHistoryRecord();
    QVERIFY(f->clientPort.calls.isEmpty() && f->serverPort.calls.isEmpty());
}

void ConfigurationTest::stateChangesAreForwardedByAServerOnly_data()
{
    addRoles();
}

void ConfigurationTest::stateChangesAreForwardedByAServerOnly()
{
    const auto [server, client, local] = fetchRoles();
    f->useRoles({server, client, local});
    f->controller.activeDeepseekModel(true);
    f->controller.activeOnlineSearch(true);
    f->controller.activeOnlineSearch(false);
    f->controller.clearHistoryRecord();
    f->controller.clearCathe();
    f->controller.stopGenerate();
    f->controller.updateHeaderInfo({"t", "u", "n"});
    f->controller.clearHeaderInfo();

    QVERIFY(f->clientPort.calls.isEmpty());
    if (!server) {
        QVERIFY(f->serverPort.calls.isEmpty());
        return;
    }
    QCOMPARE(f->serverPort.names(),
             (QVector<QByteArray>{"ActiveDeepseekFinished", "ActiveOnlineSearchFinished", "ActiveOnlineSearchFinished",
                                  "ClearHistoryRecordFinished", "ClearCatheFinished"}));
    QCOMPARE(f->serverPort.calls.at(0).as<bool>(), true);
    QCOMPARE(f->serverPort.calls.at(1).as<bool>(), true);
    QCOMPARE(f->serverPort.calls.at(2).as<bool>(), false);
}

QTEST_GUILESS_MAIN(ConfigurationTest)
#include "tst_configuration.moc"
