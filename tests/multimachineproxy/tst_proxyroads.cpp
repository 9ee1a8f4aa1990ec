#include "clientmachine.h"
#include "controllerfixture.h"
#include "joinedruntime.h"

#include <QTest>

#include <memory>

using Delivery = JoinedRuntime::Delivery;
Q_DECLARE_METATYPE(Delivery)

/// Whole roads between two machines: asked on the client, done by the server, told to the client's panel. Each is gone
/// with every way in which a runtime may deliver.
class ProxyRoadsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void question_data() { addDeliveries(); }
    void question();
    void picture_data() { addDeliveries(); }
    void picture();
    void stopBeforeTheServiceAccepted_data() { addDeliveries(); }
    void stopBeforeTheServiceAccepted();
    void stopWhileAPollIsOut_data() { addDeliveries(); }
    void stopWhileAPollIsOut();
    void serviceThatCannotBeReached_data() { addDeliveries(); }
    void serviceThatCannotBeReached();
    void serviceThatReportsAnError_data() { addDeliveries(); }
    void serviceThatReportsAnError();
    void timeout_data() { addDeliveries(); }
    void timeout();
    void headersOfTheClientGoToTheService_data() { addDeliveries(); }
    void headersOfTheClientGoToTheService();
    void serverThatShowsAPanelToo_data() { addDeliveries(); }
    void serverThatShowsAPanelToo();
    void callsKeepTheirOrder_data() { addDeliveries(); }
    void callsKeepTheirOrder();

private:
    static void addDeliveries();
    void joinMachines(FakeRuntime::Roles serverRoles = {true, false, false});
    bool delivered();
    bool askFromClient();

    // A runtime outlives the controllers that were given it.
    std::unique_ptr<JoinedRuntime> serverRuntime;
    std::unique_ptr<JoinedRuntime> clientRuntime;
    std::unique_ptr<ControllerFixture> f;
    std::unique_ptr<AiController> panel;
    std::unique_ptr<ControllerSignals> seen;
};

void ProxyRoadsTest::addDeliveries()
{
    QTest::addColumn<Delivery>("delivery");
    QTest::newRow("direct") << Delivery::Direct;
    QTest::newRow("queued") << Delivery::Queued;
    QTest::newRow("other thread") << Delivery::OtherThread;
}

void ProxyRoadsTest::init()
{
    serverRuntime = std::make_unique<JoinedRuntime>();
    clientRuntime = std::make_unique<JoinedRuntime>(FakeRuntime::Roles{false, true, false});
    f = std::make_unique<ControllerFixture>();
    panel = std::make_unique<AiController>();
    seen = std::make_unique<ControllerSignals>(*panel);
}

void ProxyRoadsTest::cleanup()
{
    const bool quiet = delivered();
    seen.reset();
    panel.reset();
    const QStringList leftovers = f->leftovers();
    f.reset();
    clientRuntime.reset();
    serverRuntime.reset();
    QVERIFY(quiet);
    QCOMPARE(leftovers, QStringList());
}

void ProxyRoadsTest::joinMachines(FakeRuntime::Roles serverRoles)
{
    QFETCH(Delivery, delivery);
    serverRuntime->setRoles(serverRoles);
    JoinedRuntime::join(*serverRuntime, *clientRuntime, delivery);
    f->controller.setZVRuntime(serverRuntime.get());
    panel->setZVRuntime(clientRuntime.get());
}

/// Waits until what was sent has been delivered, and what that posted to the controllers has been done.
bool ProxyRoadsTest::delivered()
{
    settle();
    const bool drained = serverRuntime->drain() && clientRuntime->drain();
    settle();
    return drained;
}

/// Asks a text question on the client and waits until the service has accepted it.
bool ProxyRoadsTest::askFromClient()
{
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
    panel->textToGenerateText(QStringLiteral("What is on layer 2?"));
    return eventually([this] { return f->d.strReqId == QLatin1String("r1"); }) && f->repliesDone();
}

void ProxyRoadsTest::question()
{
    joinMachines();
    QVERIFY(askFromClient());
    QVERIFY(f->poll(ControllerFixture::working()));
    QVERIFY(f->poll(ControllerFixture::readyText(QStringLiteral("the harbour"))));
    QVERIFY(seen->generateTextFinished.waitFor(1));
    const TextGeneratedPack pack = seen->generateTextFinished.argument<0>(0);
    QCOMPARE(pack.question, std::string("What is on layer 2?"));
    QCOMPARE(pack.answer, std::string("the harbour"));
    QVERIFY(delivered());
    QCOMPARE(seen->summary(), QStringLiteral("generateTextFinished:1"));
    QCOMPARE(f->signalled.summary(), QString());
}

void ProxyRoadsTest::picture()
{
    joinMachines();
    f->server.expect("POST", ControllerFixture::picturePath(), ControllerFixture::accepted());
    f->server.expect("GET", "/p", ScriptedAnswer::bytes("no picture"));
    panel->textToGeneratePicture(ControllerFixture::pictureInfo());
    QVERIFY(eventually([this] { return f->d.strReqId == QLatin1String("r1"); }));
    QVERIFY(f->repliesDone());
    QVERIFY(f->poll(ControllerFixture::readyPicture(f->server.url() + QStringLiteral("/p"))));
    QVERIFY(seen->generatePictureFinished.waitFor(1));
    QCOMPARE(seen->generatePictureFinished.argument<0>(0), QStringLiteral("a mountain"));
    QCOMPARE(seen->generatePictureFinished.argument<1>(0).width, 640);
    QCOMPARE(f->server.requestCountTo("/p"), 1);
    QCOMPARE(f->signalled.summary(), QString());
}

void ProxyRoadsTest::stopBeforeTheServiceAccepted()
{
    joinMachines();
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted().held());
    panel->textToGenerateText(QStringLiteral("q"));
    QVERIFY(eventually([this] { return f->server.heldCount() == 1; }));
    panel->toStopGenerate();
    QVERIFY(eventually([this] { return f->d.bStopGenerate; }));
    QCOMPARE(seen->summary(), QString());
    f->server.releaseAll();
    QVERIFY(seen->deleteGeneratingItem.waitFor(1));
    QVERIFY(delivered());
    QCOMPARE(seen->summary(), QStringLiteral("deleteGeneratingItem:1"));
    QVERIFY(!f->isTimerActive());
}

void ProxyRoadsTest::stopWhileAPollIsOut()
{
    joinMachines();
    QVERIFY(askFromClient());
    f->server.expect("POST", ControllerFixture::resultPath(), ControllerFixture::readyText().held());
    f->tick();
    QVERIFY(eventually([this] { return f->server.heldCount() == 1; }));
    panel->toStopGenerate();
    QVERIFY(eventually([this] { return f->d.bStopGenerate; }));
    f->server.releaseAll();
    QVERIFY(seen->deleteGeneratingItem.waitFor(1));
    QVERIFY(delivered());
    QCOMPARE(seen->summary(), QStringLiteral("deleteGeneratingItem:1"));
}

void ProxyRoadsTest::serviceThatCannotBeReached()
{
    joinMachines();
    f->server.expect("POST", ControllerFixture::textPath(), ScriptedAnswer::status(500));
    panel->textToGenerateText(QStringLiteral("q"));
    QVERIFY(seen->requestFailed.waitFor(1));
    QVERIFY(f->repliesDone());
    QVERIFY(delivered());
    QCOMPARE(seen->summary(), QStringLiteral("requestFailed:1"));
    QCOMPARE(seen->requestFailed.argument<0>(0).question, std::string("q"));
    QCOMPARE(f->signalled.summary(), QString());
}

void ProxyRoadsTest::serviceThatReportsAnError()
{
    joinMachines();
    QVERIFY(askFromClient());
    QVERIFY(f->poll(ControllerFixture::failed(QStringLiteral("quota used up"))));
    QVERIFY(seen->errorOccured.waitFor(1));
    QVERIFY(delivered());
    QCOMPARE(seen->summary(), QStringLiteral("errorOccured:1"));
    QCOMPARE(seen->errorOccured.argument<0>(0).message, std::string("quota used up"));
    QVERIFY(seen->errorOccured.argument<0>(0).type == QuestionType::Text);
}

void ProxyRoadsTest::timeout()
{
    joinMachines();
    QVERIFY(askFromClient());
    f->controller.setTimeout(0);
    f->tick();
    QVERIFY(seen->requestTimeout.waitFor(1));
    QVERIFY(delivered());
    QCOMPARE(seen->summary(), QStringLiteral("requestTimeout:1"));
    QCOMPARE(seen->requestTimeout.argument<0>(0).question, std::string("What is on layer 2?"));
    QVERIFY(!f->isTimerActive());
    QCOMPARE(f->signalled.summary(), QString());
}

void ProxyRoadsTest::headersOfTheClientGoToTheService()
{
    joinMachines();
    panel->toUpdateHeaderInfo({"t", "u", "n"});
    QVERIFY(askFromClient());
    QCOMPARE(f->server.requests().at(0).header("token").value_or("none"), QByteArray("t"));
    QCOMPARE(f->server.requests().at(0).header("node").value_or("none"), QByteArray("n"));
    panel->toClearHeaderInfo();
    QVERIFY(eventually([this] { return f->d.resultRequest.rawHeader("token").isEmpty(); }));
    QVERIFY(delivered());
    QCOMPARE(seen->summary(), QString());
}

// The machine that serves may be a local executor too: then its own panel shows the answers as well, but for a failure
// and a time-out, which go to the clients only.
void ProxyRoadsTest::serverThatShowsAPanelToo()
{
    joinMachines({true, false, true});
    QVERIFY(askFromClient());
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QVERIFY(seen->generateTextFinished.waitFor(1));
    QCOMPARE(f->signalled.summary(), QStringLiteral("generateTextFinished:1"));
    f->controller.requestFailed({});
    f->controller.requesetTimeout({});
    QVERIFY(seen->requestFailed.waitFor(1));
    QVERIFY(seen->requestTimeout.waitFor(1));
    QCOMPARE(f->signalled.summary(), QStringLiteral("generateTextFinished:1"));
}

void ProxyRoadsTest::callsKeepTheirOrder()
{
    joinMachines();
    for (int round = 0; round < 50; ++round)
        panel->toActiveDeepSeekModel(round % 2 == 0);
    panel->toActiveOnlineSearch(true);
    QVERIFY(eventually([this] { return f->d.bEnableOnlineSearch; }));
    QVERIFY(!f->d.bEnableDeepModel);
    QVERIFY(eventually([this] { return AiControllerAccess::of(*panel).bEnableOnlineSearch; }));
    QVERIFY(!AiControllerAccess::of(*panel).bEnableDeepModel);
}

QTEST_GUILESS_MAIN(ProxyRoadsTest)
#include "tst_proxyroads.moc"
