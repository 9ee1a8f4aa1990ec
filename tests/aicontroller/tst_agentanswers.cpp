#include "agentcmdtext.h"
#include "cachefolder.h"
#include "controllertest.h"
#include "picturebytes.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

const QByteArray picturePath = QByteArrayLiteral("/pictures/1");

ScriptedAnswer answerWith(const QString &answer, const QByteArray &commands)
{
    return ControllerFixture::ready({{QStringLiteral("answers"), QJsonArray{answer}},
                                     {QStringLiteral("description"), QStringLiteral("rock")},
                                     {QStringLiteral("agentCmds"), QJsonDocument::fromJson(commands).array()}});
}

QByteArray playPicture()
{
    return R"([{"cmdType":0,"params":{"bPlay":true,"layerId":2}}])";
}

} // namespace

/// Commands as they come with answers, over the whole exchange.
class AgentAnswersTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void textAnswerIsAnnouncedBeforeItsCommands();
    void answerWithoutCommandsAnnouncesNone_data();
    void answerWithoutCommandsAnnouncesNone();
    void pictureAnswerIsDownloadedForItsCommands();
    void textAnswerActsOnTheEarlierPicture();
    void repeatedPictureBringsNoCommands();
    void serverWithoutAPanelStillAnnouncesCommands();
    void tooManyCommandsAreNoneAtAll_data();
    void tooManyCommandsAreNoneAtAll();

private:
    QString pictureUrl() const { return f->server.url() + QString::fromLatin1(picturePath); }
    void servePicture()
    {
        f->server.always("GET", picturePath, ScriptedAnswer::bytes(picturebytes::encoded("png"), "image/png"));
    }
    QStringList announced(int index = 0) const { return textOf(f->signalled.agentCmds.argument<0>(index)); }
};

void AgentAnswersTest::textAnswerIsAnnouncedBeforeItsCommands()
{
    QVERIFY(f->askText());
    QVERIFY(f->poll(answerWith(QStringLiteral("playing"), R"([{"cmdType":0,"params":{"mediaId":"m7"}}, 5])")));
    QCOMPARE(f->signalled.summary(), QStringLiteral("agentCmds:1 generateTextFinished:1"));
    QCOMPARE(announced(),
             QStringList(QStringLiteral("999 stop way=0 program=-1 layer=-1 output=-1 media=m7 volume=-1 path=")));
    QVERIFY(f->signalled.generateTextFinished.emission(0).number < f->signalled.agentCmds.emission(0).number);
    QVERIFY(!f->isTimerActive());
    QCOMPARE(f->d.strReqId, QString());
    QVERIFY(!f->d.bQuerying);
}

void AgentAnswersTest::answerWithoutCommandsAnnouncesNone_data()
{
    QTest::addColumn<QByteArray>("commands");
    QTest::newRow("empty") << QByteArray("[]");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("object") << QByteArray("{\"cmdType\":1}");
    QTest::newRow("text") << QByteArray("\"play\"");
}

void AgentAnswersTest::answerWithoutCommandsAnnouncesNone()
{
    QFETCH(QByteArray, commands);
    QVERIFY(f->askText());
    QVERIFY(f->poll(ScriptedAnswer::bytes(R"({"code":0,"data":{"answers":["hello"],"agentCmds":)" + commands + "}}")));
    QCOMPARE(f->signalled.summary(), QStringLiteral("generateTextFinished:1"));
    QVERIFY(!f->isTimerActive());
}

void AgentAnswersTest::pictureAnswerIsDownloadedForItsCommands()
{
    const CacheFolder cache;
    servePicture();
    QVERIFY(f->askPicture());
    QVERIFY(f->poll(answerWith(pictureUrl(), playPicture())));
    QVERIFY(f->signalled.generatePictureFinished.waitFor(1));
    QCOMPARE(announced(),
             QStringList(QStringLiteral("0 play way=0 program=-1 layer=2 output=-1 media= volume=-1 path=")
                         + cache.pathOf(1)));
    QCOMPARE(CacheFolder::contentOf(cache.pathOf(1)), picturebytes::encoded("png"));
    QCOMPARE(f->server.requestCountTo(picturePath), 2);
    QCOMPARE(f->signalled.summary(), QStringLiteral("agentCmds:1 generatePictureFinished:1"));
    QVERIFY(!f->isTimerActive());
}

void AgentAnswersTest::textAnswerActsOnTheEarlierPicture()
{
    const CacheFolder cache;
    servePicture();
    QVERIFY(f->askPicture());
    QVERIFY(f->poll(ControllerFixture::readyPicture(pictureUrl())));
    QVERIFY(f->signalled.generatePictureFinished.waitFor(1));
    QCOMPARE(f->signalled.agentCmds.count(), 0);

    QVERIFY(f->askText(QStringLiteral("play it")));
    QVERIFY(f->poll(answerWith(QStringLiteral("playing"), playPicture())));
    QVERIFY(announced().first().endsWith(cache.pathOf(1)));
    QCOMPARE(f->signalled.summary(), QStringLiteral("agentCmds:1 generateTextFinished:1 generatePictureFinished:1"));

    f->controller.clearCathe();
    QVERIFY(f->askText(QStringLiteral("play it again")));
    QVERIFY(f->poll(answerWith(QStringLiteral("playing"), playPicture())));
    QVERIFY(announced(1).first().endsWith(QStringLiteral("path=")));
    QCOMPARE(f->server.requestCountTo(picturePath), 2);
}

void AgentAnswersTest::repeatedPictureBringsNoCommands()
{
    servePicture();
    QVERIFY(f->askPicture());
    QVERIFY(f->poll(ControllerFixture::readyPicture(pictureUrl())));
    QVERIFY(f->signalled.generatePictureFinished.waitFor(1));
    QVERIFY(f->askPicture());
    QVERIFY(f->poll(answerWith(pictureUrl(), playPicture())));
    QCOMPARE(f->signalled.summary(), QStringLiteral("generatePictureFinished:1"));
    QCOMPARE(f->server.requestCountTo(picturePath), 1);
}

void AgentAnswersTest::serverWithoutAPanelStillAnnouncesCommands()
{
    f->useRoles({true, false, false});
    QVERIFY(f->askText());
    QVERIFY(f->poll(answerWith(QStringLiteral("playing"), R"([{"cmdType":4}])")));
    QCOMPARE(f->signalled.summary(), QStringLiteral("agentCmds:1"));
    QCOMPARE(f->serverPort.names(), QVector<QByteArray>{"GenerateTextFinished"});
}

void AgentAnswersTest::tooManyCommandsAreNoneAtAll_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("as many as there may be") << 1000;
    QTest::newRow("one more") << 1001;
}

void AgentAnswersTest::tooManyCommandsAreNoneAtAll()
{
    QFETCH(int, count);
    const bool isTooMany = count > 1000;
    const ExpectedLog refusal(f->log, QStringLiteral("an answer brought 1001 commands"), isTooMany ? 1 : 0);
    QVERIFY(f->askText());
    QVERIFY(f->poll(answerWith(QStringLiteral("all of it"),
                               '[' + QByteArray("{\"cmdType\":4},").repeated(count - 1) + "{\"cmdType\":4}]")));
    QCOMPARE(f->signalled.summary(),
             isTooMany ? QStringLiteral("generateTextFinished:1")
                       : QStringLiteral("agentCmds:1 generateTextFinished:1"));
    QCOMPARE(isTooMany ? 0 : f->signalled.agentCmds.argument<0>(0).size(), std::size_t(isTooMany ? 0 : 1000));
    QVERIFY(!f->isTimerActive());
    QVERIFY(!f->d.bQuerying);
}

QTEST_MAIN(AgentAnswersTest)

#include "tst_agentanswers.moc"
