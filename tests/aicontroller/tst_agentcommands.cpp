#include "agentcmdtext.h"
#include "cachefolder.h"
#include "controllertest.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

const QByteArray picturePath = QByteArrayLiteral("/pictures/1");

// The commands of a picture that is to be played, and of a media item.
QByteArray needsPicture()
{
    return R"([{"cmdType":0,"params":{"bPlay":true,"layerId":2}}])";
}

QJsonArray arrayOf(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).array();
}

QString line(const char *text)
{
    return QString::fromUtf8(text);
}

QString defaults(int type)
{
    return QStringLiteral("%1 stop way=0 program=-1 layer=-1 output=-1 media= volume=-1 path=").arg(type);
}

} // namespace

class AgentCommandsTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void commandsAreReadAndAnnounced_data();
    void commandsAreReadAndAnnounced();
    void withoutAnEarlierPictureNothingIsDownloaded();
    void pictureIsDownloadedFirst();
    void everyCommandOnThePictureGetsItsPath();
    void mediaItemNeedsNoPicture();
    void failedDownloadLeavesTheCommandsWaiting_data();
    void failedDownloadLeavesTheCommandsWaiting();
    void downloadByTheUserCompletesTheCommands();
    void newListReplacesTheOneThatWaits();
    void slotMayChangeTheList();
    void announcedForEveryRole_data();
    void announcedForEveryRole();

private:
    bool analyse(const QByteArray &json);
    QString pictureUrl() const { return f->server.url() + QString::fromLatin1(picturePath); }
    QStringList announced(int index = 0) const { return textOf(f->signalled.agentCmds.argument<0>(index)); }
};

bool AgentCommandsTest::analyse(const QByteArray &json)
{
    const QJsonArray array = arrayOf(json);
    return QMetaObject::invokeMethod(&f->d, "analyseAgentCmds", Qt::DirectConnection, Q_ARG(QJsonArray, array));
}

void AgentCommandsTest::commandsAreReadAndAnnounced_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const char *json, const QStringList &expected) {
        QTest::newRow(name) << QByteArray(json) << expected;
    };
    const auto params = [](const char *name, const char *json, const char *expected) {
        QTest::newRow(name) << QByteArray(R"([{"cmdType":5,"params":)") + json + "}]" << QStringList(line(expected));
    };

    row("no command", "[]", {});
    row("nothing but rubbish", R"([5, "x"])", {});
    row("null, array, bool", "[null, [], true, [{}]]", {});
    row("rubbish between", R"([5, {"cmdType":1}, "x", {"cmdType":2}, null])", {defaults(1), defaults(2)});
    row("empty object", "[{}]", {defaults(1000)});
    row("no type", R"([{"params":{"outputId":3}}])",
        {line("1000 stop way=0 program=-1 layer=-1 output=3 media= volume=-1 path=")});
    row("library media", R"([{"cmdType":0,"params":{"mediaId":"m7","bPlay":true}}])",
        {line("999 play way=0 program=-1 layer=-1 output=-1 media=m7 volume=-1 path=")});
    row("999 as sent", R"([{"cmdType":999,"params":{"mediaId":"m7"}}])",
        {line("999 stop way=0 program=-1 layer=-1 output=-1 media=m7 volume=-1 path=")});
    row("999 without media", R"([{"cmdType":999}])", {defaults(999)});
    row("1000 as sent", R"([{"cmdType":1000}])", {defaults(1000)});
    row("other type with media", R"([{"cmdType":7,"params":{"mediaId":"m7"}}])",
        {line("7 stop way=0 program=-1 layer=-1 output=-1 media=m7 volume=-1 path=")});
    row("negative type", R"([{"cmdType":-3}])", {defaults(-3)});
    row("largest type", R"([{"cmdType":2147483647}])", {defaults(2147483647)});
    row("no type, with media", R"([{"params":{"mediaId":"m7"}}])",
        {line("1000 stop way=0 program=-1 layer=-1 output=-1 media=m7 volume=-1 path=")});

    // A type that is no integer reads as 0.
    row("type as text", R"([{"cmdType":"5"}])", {defaults(0)});
    row("type as text, with media", R"([{"cmdType":"5","params":{"mediaId":"m7"}}])",
        {line("999 stop way=0 program=-1 layer=-1 output=-1 media=m7 volume=-1 path=")});
    row("type with a fraction", R"([{"cmdType":2.5}])", {defaults(0)});
    row("type null", R"([{"cmdType":null}])", {defaults(0)});
    row("type bool", R"([{"cmdType":true}])", {defaults(0)});
    row("type out of range", R"([{"cmdType":4294967296}])", {defaults(0)});
    row("type as a whole decimal", R"([{"cmdType":3.0}])", {defaults(3)});

    row("params is text", R"([{"cmdType":5,"params":"bPlay"}])", {defaults(5)});
    row("params is an array", R"([{"cmdType":5,"params":[{"bPlay":true}]}])", {defaults(5)});
    row("params is null", R"([{"cmdType":5,"params":null}])", {defaults(5)});
    row("members outside params", R"([{"cmdType":5,"bPlay":true,"mediaId":"m7"}])", {defaults(5)});
    row("other keys", R"([{"cmdtype":5,"params":{"bplay":true,"MediaId":"x","localPath":"/etc/passwd"}}])",
        {defaults(1000)});

    params("all given",
           R"({"bPlay":true,"playWay":3,"programId":1,"layerId":2,"outputId":4,"mediaId":"m7","volume":0.5})",
           "5 play way=3 program=1 layer=2 output=4 media=m7 volume=0.5 path=");
    params("zeros", R"({"bPlay":false,"playWay":0,"programId":0,"layerId":0,"outputId":0,"mediaId":"","volume":0})",
           "5 stop way=0 program=0 layer=0 output=0 media= volume=0 path=");
    params("texts for numbers", R"({"playWay":"3","programId":"1","layerId":"2","outputId":"4","volume":"0.5"})",
           "5 stop way=0 program=0 layer=0 output=0 media= volume=0 path=");
    params("nulls", R"({"bPlay":null,"playWay":null,"programId":null,"mediaId":null,"volume":null})",
           "5 stop way=0 program=0 layer=-1 output=-1 media= volume=0 path=");
    params("numbers for others", R"({"bPlay":1,"mediaId":7})",
           "5 stop way=0 program=-1 layer=-1 output=-1 media= volume=-1 path=");
    params("fractions for integers", R"({"playWay":1.5,"programId":2.5,"layerId":-0.5,"outputId":3.0})",
           "5 stop way=0 program=0 layer=0 output=3 media= volume=-1 path=");
    params("whole volume", R"({"volume":80})", "5 stop way=0 program=-1 layer=-1 output=-1 media= volume=80 path=");
    params("negative", R"({"playWay":-1,"layerId":-7,"volume":-2.5})",
           "5 stop way=-1 program=-1 layer=-7 output=-1 media= volume=-2.5 path=");
    params("id in Chinese", R"({"mediaId":"\u5c71"})",
           "5 stop way=0 program=-1 layer=-1 output=-1 media=\u5c71 volume=-1 path=");
}

void AgentCommandsTest::commandsAreReadAndAnnounced()
{
    QFETCH(QByteArray, json);
    QFETCH(QStringList, expected);
    QVERIFY(QJsonDocument::fromJson(json).isArray());
    QVERIFY(analyse(json));
    QCOMPARE(f->signalled.summary(), QStringLiteral("agentCmds:1"));
    QCOMPARE(announced().join(QLatin1Char('\n')), expected.join(QLatin1Char('\n')));
    QCOMPARE(f->server.requestCount(), 0);
    QVERIFY(!f->d.bPlayAfterDownload);
}

void AgentCommandsTest::withoutAnEarlierPictureNothingIsDownloaded()
{
    QVERIFY(analyse(needsPicture()));
    QCOMPARE(announced(), QStringList(line("0 play way=0 program=-1 layer=2 output=-1 media= volume=-1 path=")));
    QVERIFY(!f->d.bPlayAfterDownload);
    QCOMPARE(f->openReplies(), 0);
}

void AgentCommandsTest::pictureIsDownloadedFirst()
{
    const CacheFolder cache;
    f->d.strLastPictureUrl = pictureUrl();
    f->server.expect("GET", picturePath, ScriptedAnswer::bytes("picture").held());
    QVERIFY(analyse(needsPicture()));
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    QCOMPARE(f->signalled.summary(), QString());
    QVERIFY(f->d.bPlayAfterDownload);

    f->server.releaseNext();
    QVERIFY(f->repliesDone());
    QCOMPARE(announced(),
             QStringList(line("0 play way=0 program=-1 layer=2 output=-1 media= volume=-1 path=") + cache.pathOf(1)));
    QCOMPARE(CacheFolder::contentOf(cache.pathOf(1)), QByteArray("picture"));
    QCOMPARE(f->signalled.summary(), QStringLiteral("agentCmds:1"));
    QVERIFY(!f->d.bPlayAfterDownload);

    // An ordinary download is announced again as such.
    f->server.expect("GET", picturePath, ScriptedAnswer::bytes("picture"));
    f->controller.downloadPicture(pictureUrl());
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QStringLiteral("downloadPictureFinished:1 agentCmds:1"));
}

void AgentCommandsTest::everyCommandOnThePictureGetsItsPath()
{
    const CacheFolder cache;
    f->d.strLastPictureUrl = pictureUrl();
    f->server.expect("GET", picturePath, ScriptedAnswer::bytes("picture"));
    QVERIFY(analyse(R"([{"cmdType":3},{"cmdType":0},{"cmdType":0,"params":{"mediaId":"m7"}},
                        {"cmdType":"x","params":{"layerId":4}},{}])"));
    QVERIFY(f->repliesDone());
    QCOMPARE(f->server.requestCount(), 1);
    const QStringList expected{
        defaults(3), defaults(0) + cache.pathOf(1),
        line("999 stop way=0 program=-1 layer=-1 output=-1 media=m7 volume=-1 path="),
        line("0 stop way=0 program=-1 layer=4 output=-1 media= volume=-1 path=") + cache.pathOf(1), defaults(1000)};
    QCOMPARE(announced().join(QLatin1Char('\n')), expected.join(QLatin1Char('\n')));
}

void AgentCommandsTest::mediaItemNeedsNoPicture()
{
    f->d.strLastPictureUrl = pictureUrl();
    QVERIFY(analyse(R"([{"cmdType":0,"params":{"mediaId":"m7"}},{"cmdType":5},{}])"));
    QCOMPARE(f->signalled.summary(), QStringLiteral("agentCmds:1"));
    QCOMPARE(announced().size(), 3);
    QCOMPARE(f->openReplies(), 0);
}

void AgentCommandsTest::failedDownloadLeavesTheCommandsWaiting_data()
{
    QTest::addColumn<bool>("folderIsMissing");
    QTest::newRow("404") << false;
    QTest::newRow("file cannot be written") << true;
}

void AgentCommandsTest::failedDownloadLeavesTheCommandsWaiting()
{
    QFETCH(bool, folderIsMissing);
    const CacheFolder cache;
    QFile inTheWay(cache.path());
    if (folderIsMissing)
        QVERIFY(QDir().mkpath(QFileInfo(cache.path()).path()) && inTheWay.open(QFile::WriteOnly));
    f->d.strLastPictureUrl = pictureUrl();
    f->server.expect("GET", picturePath,
                     folderIsMissing ? ScriptedAnswer::bytes("picture") : ScriptedAnswer::status(404));
    const ExpectedLog failure(f->log, QStringLiteral("slotDownloadImageFinished_ errorcode 203 url ") + pictureUrl(),
                              folderIsMissing ? 0 : 1);
    const ExpectedLog notSaved(f->log, QStringLiteral("the picture could not be saved in "), folderIsMissing ? 1 : 0);
    QVERIFY(analyse(needsPicture()));
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QString());
    QVERIFY(f->d.bPlayAfterDownload);

    if (folderIsMissing)
        QVERIFY(inTheWay.remove());
    f->server.expect("GET", "/pictures/2", ScriptedAnswer::bytes("another"));
    f->controller.downloadPicture(f->server.url() + QStringLiteral("/pictures/2"));
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QStringLiteral("agentCmds:1"));
    QVERIFY(announced().first().endsWith(QStringLiteral("path=") + cache.pathOf(1)));
    QVERIFY(!f->d.bPlayAfterDownload);
}

// Which download ends first does not matter: the commands take its file, and the other one is an ordinary download.
void AgentCommandsTest::downloadByTheUserCompletesTheCommands()
{
    const CacheFolder cache;
    f->d.strLastPictureUrl = pictureUrl();
    f->server.expect("GET", picturePath, ScriptedAnswer::bytes("of the commands").held());
    f->server.expect("GET", "/pictures/2", ScriptedAnswer::bytes("of the user"));
    QVERIFY(analyse(needsPicture()));
    f->controller.downloadPicture(f->server.url() + QStringLiteral("/pictures/2"));
    QVERIFY(f->signalled.agentCmds.waitFor(1));
    QVERIFY(announced().first().endsWith(QStringLiteral("path=") + cache.pathOf(1)));
    QCOMPARE(CacheFolder::contentOf(cache.pathOf(1)), QByteArray("of the user"));
    QVERIFY(f->server.releaseNext());
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QStringLiteral("downloadPictureFinished:1 agentCmds:1"));
    QCOMPARE(f->signalled.downloadPictureFinished.argument<0>(0), cache.pathOf(2).toStdString());
}

void AgentCommandsTest::newListReplacesTheOneThatWaits()
{
    const CacheFolder cache;
    f->d.strLastPictureUrl = pictureUrl();
    f->server.expect("GET", picturePath, ScriptedAnswer::bytes("picture").held());
    QVERIFY(analyse(needsPicture()));
    QVERIFY(analyse(R"([{"cmdType":4}])"));
    QCOMPARE(announced(0), QStringList(defaults(4)));
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    f->server.releaseNext();
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QStringLiteral("agentCmds:2"));
    QCOMPARE(announced(1), QStringList(defaults(4)));
}

void AgentCommandsTest::slotMayChangeTheList()
{
    QStringList seenBySecond;
    f->controller.sigAgentCmds.connect([](std::vector<AgentCmd> &commands) {
        commands.front().layerId = 9;
        commands.pop_back();
    });
    f->controller.sigAgentCmds.connect([&](std::vector<AgentCmd> &commands) { seenBySecond = textOf(commands); });
    QVERIFY(analyse(R"([{"cmdType":4},{"cmdType":5}])"));
    QCOMPARE(seenBySecond, QStringList(line("4 stop way=0 program=-1 layer=9 output=-1 media= volume=-1 path=")));
    QVERIFY(analyse(R"([{"cmdType":6},{"cmdType":7}])"));
    QCOMPARE(seenBySecond, QStringList(line("6 stop way=0 program=-1 layer=9 output=-1 media= volume=-1 path=")));
}

void AgentCommandsTest::announcedForEveryRole_data()
{
    QTest::addColumn<bool>("server");
    QTest::addColumn<bool>("client");
    QTest::addColumn<bool>("local");
    QTest::newRow("server only") << true << false << false;
    QTest::newRow("client only") << false << true << false;
    QTest::newRow("server and local") << true << false << true;
    QTest::newRow("none") << false << false << false;
}

void AgentCommandsTest::announcedForEveryRole()
{
    QFETCH(bool, server);
    QFETCH(bool, client);
    QFETCH(bool, local);
    f->useRoles({server, client, local});
    QVERIFY(analyse(R"([{"cmdType":4}])"));
    QCOMPARE(f->signalled.summary(), QStringLiteral("agentCmds:1"));
    QCOMPARE(f->clientPort.names().size() + f->serverPort.names().size(), 0);
}

QTEST_GUILESS_MAIN(AgentCommandsTest)

#include "tst_agentcommands.moc"
