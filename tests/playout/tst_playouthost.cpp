#include "playout/hostfixture.h"
#include "playout/samplefiles.h"
#include "support/waiting.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QLabel>
#include <QListView>
#include <QSlider>
#include <QStandardPaths>
#include <QTest>

using namespace tavro::playout;
using namespace tavro::testsupport;
using tavro::aiassistant::AgentCmd;
using tavro::playout::Role;

Q_DECLARE_METATYPE(tavro::playout::Role)

namespace {

ScriptedAnswer accepted()
{
    const QJsonObject data{{QStringLiteral("reqId"), QStringLiteral("r")}};
    return ScriptedAnswer::json({{QStringLiteral("code"), 0}, {QStringLiteral("data"), data}});
}

ScriptedAnswer ready(const QJsonArray &answers)
{
    const QJsonObject data{{QStringLiteral("answers"), answers}};
    return ScriptedAnswer::json({{QStringLiteral("code"), 0}, {QStringLiteral("data"), data}});
}

} // namespace

class PlayoutHostTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { f.reset(); }
    void panelGetsTheFinishedSheet();
    void commandIsCarriedOutAndShown();
    void refusedCommandIsLoggedAndChangesNothing();
    void commandTextIsNoMarkup();
    void savedPictureJoinsTheLibraryAndTheAssistantsList_data() { roles(); }
    void savedPictureJoinsTheLibraryAndTheAssistantsList();
    void pictureThatCannotBeSavedIsTold_data() { roles(); }
    void pictureThatCannotBeSavedIsTold();
    void fileInTheMediaFolderJoinsTheLibraryAndTheAssistantsList_data() { roles(); }
    void fileInTheMediaFolderJoinsTheLibraryAndTheAssistantsList();
    void unreachableServiceIsShown_data() { roles(); }
    void unreachableServiceIsShown();
    void everyQuestionGetsTheWholeTime_data() { roles(); }
    void everyQuestionGetsTheWholeTime();
    void unreadableAnswerDoesNotHoldUpTheNextQuestion_data() { roles(); }
    void unreadableAnswerDoesNotHoldUpTheNextQuestion();
    void theEndTakesAllWithIt_data() { roles(); }
    void theEndTakesAllWithIt();

private:
    static void roles();
    bool startInRole();

    std::unique_ptr<HostFixture> f;
};

void PlayoutHostTest::init()
{
    f = std::make_unique<HostFixture>();
    QVERIFY(f->start());
}

// As one controller, and as two with the messages of several machines between them.
void PlayoutHostTest::roles()
{
    QTest::addColumn<Role>("role");
    for (const Role role : {Role::Local, Role::All})
        QTest::newRow(qPrintable(nameOf(role))) << role;
}

bool PlayoutHostTest::startInRole()
{
    QFETCH(Role, role);
    f->options.role = role;
    return f->start();
}

void PlayoutHostTest::panelGetsTheFinishedSheet()
{
    QVERIFY(HostFixture::panelSheet.contains(QStringLiteral("#askArea")));
    QVERIFY(!HostFixture::panelSheet.contains(QStringLiteral("aiassistant.theme.")));
    QVERIFY(!f->host->window().styleSheet().contains(QStringLiteral("playout.theme.")));
    // What the theme lacks becomes transparent; "background" is so by intention only.
    QVERIFY(!f->host->window().styleSheet().contains(QStringLiteral(" color: transparent")));
}

void PlayoutHostTest::commandIsCarriedOutAndShown()
{
    AgentCmd command;
    command.cmdType = AgentCmd::LibraryMedia;
    command.bPlay = true;
    command.mediaId = "harbour.png";
    command.layerId = 2;
    command.volume = 0.5;
    std::vector<AgentCmd> commands{command};
    HostFixture::controller->sigAgentCmds(commands);
    QCOMPARE(f->labelText("layer2Media"), QStringLiteral("harbour"));
    QCOMPARE(f->labelText("layer2State"), QStringLiteral("PLAYING"));
    QCOMPARE(f->labelText("layer2Volume"), QStringLiteral("50 %"));
    QCOMPARE(f->child<QSlider>("layer2Fader").value(), 50);
    QCOMPARE(f->labelText("statusCommand"), QStringLiteral("Program 1, layer 2: plays harbour at 50 %"));
    QVERIFY2(f->log().endsWith(QStringLiteral("Program 1, layer 2: plays harbour at 50 %")), qPrintable(f->log()));
}

void PlayoutHostTest::refusedCommandIsLoggedAndChangesNothing()
{
    AgentCmd command;
    command.cmdType = AgentCmd::LibraryMedia;
    command.bPlay = true;
    command.mediaId = "harbour.png";
    command.layerId = 9;
    std::vector<AgentCmd> commands{command};
    HostFixture::controller->sigAgentCmds(commands);
    QVERIFY2(f->log().endsWith(QStringLiteral("Refused: there is no layer 9, only 1 to 4")), qPrintable(f->log()));
    QCOMPARE(f->labelText("statusCommand"), QStringLiteral("Refused: there is no layer 9, only 1 to 4"));
    for (int layer = 1; layer <= 4; ++layer)
        QCOMPARE(f->child<QLabel>(qPrintable(QStringLiteral("layer%1State").arg(layer))).text(),
                 QStringLiteral("EMPTY"));
}

void PlayoutHostTest::commandTextIsNoMarkup()
{
    AgentCmd command;
    command.cmdType = AgentCmd::LibraryMedia;
    command.mediaId = "<b>bold</b>";
    f->host->carryOut(command);
    QVERIFY2(f->log().contains(QStringLiteral("\"<b>bold</b>\" is not in the media library")), qPrintable(f->log()));
}

void PlayoutHostTest::savedPictureJoinsTheLibraryAndTheAssistantsList()
{
    QVERIFY(startInRole());
    QFile file(f->media.filePath(QStringLiteral("harbour.png")));
    QVERIFY(file.open(QFile::ReadOnly));
    f->server.expect("GET", "/picture", ScriptedAnswer::bytes(file.readAll(), "image/png"));
    f->server.always("POST", "/ai/texttotext/generate/", ScriptedAnswer::status(500));
    HostFixture::controller->toDownloadPicture(f->server.url() + QStringLiteral("/picture"));
    auto &list = f->child<QListView>("mediaList");
    QTRY_COMPARE_WITH_TIMEOUT(list.model()->rowCount(), 4, 20000);
    QCOMPARE(list.model()->index(3, 0).data().toString(), QStringLiteral("generated 1"));
    HostFixture::controller->textToGenerateText(QStringLiteral("what is there?"));
    QVERIFY(eventually([&] { return f->server.requestCountTo("/ai/texttotext/generate/") == 1; }));
    const QByteArray body = f->server.requestsTo("/ai/texttotext/generate/").first().body;
    QVERIFY2(body.contains("generated 1") && body.contains("generated:download_1.jpg"), body.constData());
}

void PlayoutHostTest::pictureThatCannotBeSavedIsTold()
{
    QVERIFY(startInRole());
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    QVERIFY(QDir(folder + QStringLiteral("/imageCathe")).removeRecursively() && QDir().mkpath(folder));
    QFile inTheWay(folder + QStringLiteral("/imageCathe"));
    QVERIFY(inTheWay.open(QFile::WriteOnly));
    f->server.expect("GET", "/picture", ScriptedAnswer::bytes("picture", "image/png"));
    HostFixture::controller->toDownloadPicture(f->server.url() + QStringLiteral("/picture"));
    const QString told = QStringLiteral("the picture could not be saved in ") + inTheWay.fileName();
    const bool isTold = eventually([&] { return f->labelText("statusCommand").startsWith(told); });
    QVERIFY(inTheWay.remove());
    QVERIFY2(isTold, qPrintable(f->labelText("statusCommand")));
    QVERIFY2(f->log().contains(told), qPrintable(f->log()));
}

void PlayoutHostTest::fileInTheMediaFolderJoinsTheLibraryAndTheAssistantsList()
{
    QVERIFY(startInRole());
    f->server.always("POST", "/ai/texttotext/generate/", ScriptedAnswer::status(500));
    auto &list = f->child<QListView>("mediaList");
    const int before = list.model()->rowCount();
    QVERIFY(writePicture(f->media.filePath(QStringLiteral("late arrival.png"))));
    QTRY_COMPARE_WITH_TIMEOUT(list.model()->rowCount(), before + 1, 20000);
    QCOMPARE(list.model()->index(before, 0).data().toString(), QStringLiteral("late arrival"));
    HostFixture::controller->textToGenerateText(QStringLiteral("what is there?"));
    QVERIFY(eventually([&] { return f->server.requestCountTo("/ai/texttotext/generate/") == 1; }));
    const QByteArray body = f->server.requestsTo("/ai/texttotext/generate/").first().body;
    QVERIFY2(body.contains("late arrival.png"), body.constData());
}

void PlayoutHostTest::unreachableServiceIsShown()
{
    QVERIFY(startInRole());
    QCOMPARE(f->labelText("statusService"), QStringLiteral("Service: not asked yet"));
    f->server.stopListening();
    HostFixture::controller->textToGenerateText(QStringLiteral("hello"));
    QTRY_COMPARE_WITH_TIMEOUT(f->labelText("statusService"), QStringLiteral("Service: not reachable"), 20000);
}

// The controller counts its polls over all questions; four questions of two polls each would run out of six seconds.
void PlayoutHostTest::everyQuestionGetsTheWholeTime()
{
    f->options.timeout = std::chrono::seconds(6);
    QVERIFY(startInRole());
    f->server.always("POST", "/ai/texttotext/generate/", accepted());
    int answers = 0;
    bool timedOut = false;
    HostFixture::controller->sigGenerateTextFinished.connect(
        [&](const tavro::aiassistant::TextGeneratedPack &) { ++answers; });
    HostFixture::controller->sigRequestTimeout.connect(
        [&](const tavro::aiassistant::ChatItemBasic &) { timedOut = true; });
    for (int question = 1; question <= 4; ++question) {
        f->server.expect("POST", "/ai/result/filter/", ScriptedAnswer::json({{QStringLiteral("code"), 1}}));
        f->server.expect("POST", "/ai/result/filter/", ready({QStringLiteral("yes")}));
        HostFixture::controller->textToGenerateText(QStringLiteral("question"));
        QVERIFY(eventually([&] { return answers == question || timedOut; }));
        QVERIFY(!timedOut);
    }
    QCOMPARE(f->labelText("statusService"), QStringLiteral("Service: answering"));
}

// The controller leaves such a poll open, and no other follows while one is open.
void PlayoutHostTest::unreadableAnswerDoesNotHoldUpTheNextQuestion()
{
    QVERIFY(startInRole());
    f->server.always("POST", "/ai/texttotext/generate/", accepted());
    f->server.expect("POST", "/ai/result/filter/", ready({}));
    HostFixture::controller->textToGenerateText(QStringLiteral("one"));
    QTRY_COMPARE_WITH_TIMEOUT(f->labelText("statusService"), QStringLiteral("Service: not reachable"), 20000);
    f->server.expect("POST", "/ai/result/filter/", ready({QStringLiteral("yes")}));
    HostFixture::controller->textToGenerateText(QStringLiteral("two"));
    QTRY_COMPARE_WITH_TIMEOUT(f->labelText("statusService"), QStringLiteral("Service: answering"), 20000);
}

void PlayoutHostTest::theEndTakesAllWithIt()
{
    QVERIFY(startInRole());
    const QPointer<QWidget> panel = &f->child<QWidget>("panel");
    bool panelWentFirst = false;
    connect(HostFixture::controller, &QObject::destroyed, this, [&] { panelWentFirst = panel.isNull(); });
    f->host->state().put(1, 1, QStringLiteral("station ident.gif"), true);
    f->host.reset();
    QVERIFY(panel.isNull());
    QVERIFY(HostFixture::controller.isNull());
    QVERIFY(panelWentFirst);
}

QTEST_MAIN(PlayoutHostTest)
#include "tst_playouthost.moc"
