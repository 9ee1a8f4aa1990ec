#include "proxytest.h"
#include "vectors.h"

/// Payloads that do not fit their message: a line in the log, and nothing else.
class ProxyPayloadsTest : public ProxyTest {
    Q_OBJECT

private Q_SLOTS:
    void payloadThatDoesNotFitIsRefused_data();
    void payloadThatDoesNotFitIsRefused();
    void handlerGoesOnAfterARefusal();
    void reasonIsLogged();
    void receiversOwnExceptionIsNotTakenForABadPayload();

private:
    static void addRows(const char *name, bool isCall, const QByteArray &type);
};

void ProxyPayloadsTest::addRows(const char *name, bool isCall, const QByteArray &type)
{
    const QByteArray whole = type == "bool" ? QByteArray("\xC3") : packedVector(type, "filled");
    const auto add = [&](const char *what, const QByteArray &payload) {
        QTest::addRow("%s %s", name, what) << QByteArray(name) << isCall << payload;
    };
    add("nothing", {});
    add("never used byte", "\xC1");
    add("nil", "\xC0");
    add("integer", "\x05");
    add("map", QByteArray::fromHex("8100c0"));
    add("array of arrays", QByteArray::fromHex("929090"));
    add("array that announces too much", QByteArray::fromHex("ddffffffff"));
    add("text that announces too much", QByteArray::fromHex("dbffffffff61"));
    if (whole.size() > 1)
        add("broken off", whole.left(whole.size() - 1));
}

void ProxyPayloadsTest::payloadThatDoesNotFitIsRefused_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("isCall");
    QTest::addColumn<QByteArray>("payload");
    addRows("GenerateText", true, "string");
    addRows("GenerateImage", true, "picture");
    addRows("DownloadPicture", true, "string");
    addRows("ActiveDeepseek", true, "bool");
    addRows("ActiveOnlineSearch", true, "bool");
    addRows("UpdateHeader", true, "list");
    addRows("GenerateTextFinished", false, "text");
    addRows("GenerateImageFinished", false, "pictured");
    addRows("DownloadPictureFinished", false, "string");
    addRows("ActiveDeepseekFinished", false, "bool");
    addRows("ActiveOnlineSearchFinished", false, "bool");
    addRows("RequestFailed", false, "chatitem");
    addRows("ErrorOccured", false, "chatitem");
    addRows("RequestTimeout", false, "chatitem");
}

void ProxyPayloadsTest::payloadThatDoesNotFitIsRefused()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, isCall);
    QFETCH(QByteArray, payload);
    FakeRuntime &runtime = isCall ? f->runtime : client->runtime;
    const ExpectedLog refused(f->log,
                              QStringLiteral("the message %1 is not carried out: ").arg(QString::fromLatin1(name)));
    QVERIFY(runtime.deliver(name, payload));
    QCOMPARE(refused.seen(), 1);
    QVERIFY(f->log.hostLines().at(0).level == LogLine::Level::Error);
    settle();
    for (const auto &[controller, signalled] :
         {std::pair<ControllerPrivate &, ControllerSignals &>(f->d, f->signalled), {client->d, client->signalled}}) {
        QCOMPARE(signalled.summary(), QString());
        QVERIFY(controller.historyArray.isEmpty());
        QVERIFY(!controller.resultRequest.hasRawHeader("token"));
        QVERIFY(!controller.bEnableDeepModel && !controller.bEnableOnlineSearch);
        QVERIFY(controller.pendingImagePack.source.url.empty());
    }
    QCOMPARE(f->openReplies(), 0);
    QVERIFY(!f->isTimerActive());
    QCOMPARE(f->runtime.names(Call::Kind::ToClients), Names());
    QCOMPARE(client->runtime.names(Call::Kind::ToServer), Names());
}

void ProxyPayloadsTest::handlerGoesOnAfterARefusal()
{
    {
        const ExpectedLog refused(f->log, QStringLiteral("the message ActiveDeepseek is not carried out"));
        QVERIFY(f->runtime.deliver("ActiveDeepseek", "\x01"));
    }
    QVERIFY(f->runtime.deliver("ActiveDeepseek", "\xC3"));
    QVERIFY(f->d.bEnableDeepModel);
}

void ProxyPayloadsTest::reasonIsLogged()
{
    const ExpectedLog wrongType(
        f->log, QStringLiteral("the message ActiveDeepseek is not carried out: unpack failed: Args not match!"));
    const ExpectedLog brokenOff(f->log, QStringLiteral("the message ActiveDeepseek is not carried out: insufficient"));
    QVERIFY(f->runtime.deliver("ActiveDeepseek", "\x01"));
    QVERIFY(f->runtime.deliver("ActiveDeepseek"));
}

void ProxyPayloadsTest::receiversOwnExceptionIsNotTakenForABadPayload()
{
    client->controller.sigRequestFailed.connect(
        [](const ChatItemBasic &) { throw std::logic_error("the host's own"); });
    QVERIFY_EXCEPTION_THROWN(client->runtime.deliver("RequestFailed", packedVector("chatitem", "filled")),
                             std::logic_error);
    QVERIFY(f->log.hostLines().isEmpty());
}

QTEST_GUILESS_MAIN(ProxyPayloadsTest)
#include "tst_proxypayloads.moc"
