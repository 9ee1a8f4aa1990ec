#include "controllertest.h"

#include <QJsonArray>

/// The operations that begin a new conversation.
class ConversationTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void flagsEmptyTheHistoryWhateverTheirValue_data();
    void flagsEmptyTheHistoryWhateverTheirValue();
    void flagsStayUntilChanged();
    void historyIsClearedOnly();
    void clearCatheResetsTheConversation();
    void clearCatheLeavesTimerTicksAndDownloadAlone();
    void clearCatheLetsPollsGoOutAgain();

private:
    void fillState();
};

void ConversationTest::flagsEmptyTheHistoryWhateverTheirValue_data()
{
    QTest::addColumn<bool>("isDeepModel");
    QTest::addColumn<bool>("value");
    QTest::newRow("deep model on") << true << true;
    QTest::newRow("deep model off") << true << false;
    QTest::newRow("online search on") << false << true;
    QTest::newRow("online search off") << false << false;
}

void ConversationTest::flagsEmptyTheHistoryWhateverTheirValue()
{
    QFETCH(bool, isDeepModel);
    QFETCH(bool, value);
    for (int question = 0; question < 3; ++question)
        QVERIFY(f->askText());
    QCOMPARE(f->d.historyArray.size(), 3);

    if (isDeepModel)
        f->controller.activeDeepseekModel(value);
    else
        f->controller.activeOnlineSearch(value);
    QVERIFY(f->d.historyArray.isEmpty());
    QVERIFY(f->askText());
    const QJsonObject body = f->server.requests().last().json();
    QCOMPARE(body.value(QLatin1String("messages")).toArray().size(), 1);
    QCOMPARE(body.value(QLatin1String("enableDS")).toBool(), isDeepModel && value);
    QCOMPARE(body.value(QLatin1String("enableNet")).toBool(), !isDeepModel && value);
    QCOMPARE(f->signalled.summary(), QString());
}

void ConversationTest::flagsStayUntilChanged()
{
    f->controller.activeDeepseekModel(true);
    f->controller.activeOnlineSearch(true);
    f->controller.clearHistoryRecord();
    f->controller.stopGenerate();
    QVERIFY(f->askText());
    const QJsonObject body = f->server.requests().last().json();
    QVERIFY(body.value(QLatin1String("enableDS")).toBool());
    QVERIFY(body.value(QLatin1String("enableNet")).toBool());
}

void ConversationTest::historyIsClearedOnly()
{
    QVERIFY(f->askText());
    f->controller.clearHistoryRecord();
    QVERIFY(f->d.historyArray.isEmpty());
    QCOMPARE(f->d.strReqId, QStringLiteral("r1"));
    QCOMPARE(f->d.strPrompt, QStringLiteral("question"));
    QVERIFY(f->isTimerActive());
}

void ConversationTest::fillState()
{
    f->d.historyArray = QJsonArray{1};
    f->d.strReqId = f->d.strLastPictureUrl = f->d.strDescription = f->d.strPrompt = QStringLiteral("x");
    f->d.pictureInfo.width = 1;
    f->d.bQuerying = true;
    f->d.bPictureMode = false;
    f->d.bStopGenerate = true;
    f->d.bEnableDeepModel = true;
    f->d.bEnableOnlineSearch = true;
    f->d.nTickCount = 4;
    f->d.pendingImagePack.source.url = "u";
    f->d.bPlayAfterDownload = true;
    f->d.mediaResources = {{"m", "n"}};
}

void ConversationTest::clearCatheResetsTheConversation()
{
    fillState();
    f->controller.clearCathe();
    QVERIFY(f->d.historyArray.isEmpty());
    QVERIFY(f->d.strReqId.isEmpty() && f->d.strLastPictureUrl.isEmpty() && f->d.strDescription.isEmpty());
    QVERIFY(f->d.strPrompt.isEmpty());
    QCOMPARE(f->d.pictureInfo.width, 3840);
    QVERIFY(!f->d.bQuerying);
    QVERIFY(f->d.bPictureMode);
    QVERIFY(!f->d.bStopGenerate);
    QVERIFY(!f->d.bEnableDeepModel);
    QVERIFY(!f->d.bEnableOnlineSearch);
    QCOMPARE(f->signalled.summary(), QString());
}

void ConversationTest::clearCatheLeavesTimerTicksAndDownloadAlone()
{
    fillState();
    f->controller.startTimer();
    f->controller.clearCathe();
    QCOMPARE(f->d.nTickCount, 4);
    QVERIFY(f->isTimerActive());
    QVERIFY(f->d.bPlayAfterDownload);
    QCOMPARE(f->d.pendingImagePack.source.url, std::string("u"));
    QCOMPARE(f->d.mediaResources.size(), std::size_t(1));
}

void ConversationTest::clearCatheLetsPollsGoOutAgain()
{
    f->d.bQuerying = true;
    QVERIFY(f->askText());
    f->tick();
    QCOMPARE(f->openReplies(), 0);
    f->controller.clearCathe();
    QVERIFY(f->askText());
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QCOMPARE(f->signalled.generateTextFinished.count(), 1);
}

QTEST_GUILESS_MAIN(ConversationTest)
#include "tst_conversation.moc"
