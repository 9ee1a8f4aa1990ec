#include "controllertest.h"

class HeadersTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void requestBeginsWithTheTwoFixedHeaders();
    void valuesGoOutAsUtf8();
    void emptyAndNullSendAnEmptyHeader_data();
    void emptyAndNullSendAnEmptyHeader();
    void unsendableValueIsRefused_data();
    void unsendableValueIsRefused();
    void updateTakesExactlyThreeEntries_data();
    void updateTakesExactlyThreeEntries();
    void updateGoesThroughTheVirtualOperationsInOrder();
    void clearSetsEmptyValuesAndResetsThePanelOnce();
    void everyRequestToTheServiceCarriesThem();
    void headersSetWhileAPollIsOutGoWithTheNext();
    void pictureFetchesCarryNone();

private:
    HttpRequest lastRequest() const { return f->server.requests().last(); }
};

namespace {

QByteArray sent(const HttpRequest &request, const char *name)
{
    return request.header(name).value_or("(absent)");
}

class OverridingController : public AiController {
public:
    void setToken(const QString &token) override { calls.append(QStringLiteral("token ") + token); }
    void setUserId(const QString &userId) override { calls.append(QStringLiteral("userId ") + userId); }
    void setNode(const QString &node) override { calls.append(QStringLiteral("node ") + node); }

    QStringList calls;
};

} // namespace

void HeadersTest::requestBeginsWithTheTwoFixedHeaders()
{
    QCOMPARE(f->d.resultRequest.rawHeaderList().size(), 2);
    QVERIFY(f->askText());
    QCOMPARE(sent(lastRequest(), "Content-Type"), QByteArrayLiteral("application/json"));
    QCOMPARE(sent(lastRequest(), "deviceId"), QByteArrayLiteral("device123"));
    for (const char *name : {"token", "userId", "node"})
        QVERIFY(!lastRequest().header(name));
    QVERIFY(lastRequest().head.contains("\r\ndeviceId: device123\r\n"));
}

void HeadersTest::valuesGoOutAsUtf8()
{
    f->controller.setToken(QStringLiteral("t-\u00e4\u4e2d"));
    f->controller.setUserId(QStringLiteral("u"));
    f->controller.setNode(QStringLiteral("n"));
    QVERIFY(f->askText());
    QCOMPARE(sent(lastRequest(), "token"), QByteArrayLiteral("t-\xC3\xA4\xE4\xB8\xAD"));
    QCOMPARE(sent(lastRequest(), "userId"), QByteArrayLiteral("u"));
    QCOMPARE(sent(lastRequest(), "node"), QByteArrayLiteral("n"));
    QVERIFY(lastRequest().head.contains("\r\nuserId: u\r\n"));
    for (const char *name : {"token", "userId", "node", "deviceId", "Content-Type"})
        QCOMPARE(lastRequest().headerCount(name), 1);
}

void HeadersTest::emptyAndNullSendAnEmptyHeader_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("empty") << QString(QLatin1String(""));
    QTest::newRow("null") << QString();
}

void HeadersTest::emptyAndNullSendAnEmptyHeader()
{
    QFETCH(QString, value);
    f->controller.setToken(QStringLiteral("before"));
    f->controller.setToken(value);
    f->controller.setUserId(value);
    f->controller.setNode(value);
    QVERIFY(f->askText());
    for (const char *name : {"token", "userId", "node"})
        QCOMPARE(lastRequest().header(name), std::make_optional(QByteArray("")));
}

void HeadersTest::unsendableValueIsRefused_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("carriage return") << QStringLiteral("a\rb");
    QTest::newRow("line feed") << QStringLiteral("a\nb");
    QTest::newRow("another header") << QStringLiteral("a\r\nnode: b");
    QTest::newRow("NUL") << QString(QChar::Null);
    QTest::newRow("at the end") << QStringLiteral("a\n");
}

void HeadersTest::unsendableValueIsRefused()
{
    QFETCH(QString, value);
    f->controller.updateHeaderInfo({"t", "u", "n"});
    {
        const ExpectedLog refused(f->log, QStringLiteral("refused"), 3);
        f->controller.setToken(value);
        f->controller.setUserId(value);
        f->controller.setNode(value);
        QCOMPARE(refused.seen(), 3);
    }
    QVERIFY(!f->log.contains(value)); // a token has no place in a log
    QVERIFY(f->askText());
    QCOMPARE(sent(lastRequest(), "token"), QByteArrayLiteral("t"));
    QCOMPARE(sent(lastRequest(), "userId"), QByteArrayLiteral("u"));
    QCOMPARE(sent(lastRequest(), "node"), QByteArrayLiteral("n"));
    QCOMPARE(lastRequest().headerCount("node"), 1);
}

void HeadersTest::updateTakesExactlyThreeEntries_data()
{
    QTest::addColumn<int>("entries");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("none") << 0 << false;
    QTest::newRow("two") << 2 << false;
    QTest::newRow("three") << 3 << true;
    QTest::newRow("four") << 4 << false;
}

void HeadersTest::updateTakesExactlyThreeEntries()
{
    QFETCH(int, entries);
    QFETCH(bool, isTaken);
    f->controller.updateHeaderInfo({"old", "old", "old"});
    const std::vector<std::string> four{"t", "u", "n", "x"};
    f->controller.updateHeaderInfo({four.begin(), four.begin() + entries});
    QVERIFY(f->askText());
    QCOMPARE(sent(lastRequest(), "token"), QByteArray(isTaken ? "t" : "old"));
    QCOMPARE(sent(lastRequest(), "userId"), QByteArray(isTaken ? "u" : "old"));
    QCOMPARE(sent(lastRequest(), "node"), QByteArray(isTaken ? "n" : "old"));
    QCOMPARE(f->signalled.summary(), QString());
}

void HeadersTest::updateGoesThroughTheVirtualOperationsInOrder()
{
    OverridingController controller;
    controller.updateHeaderInfo({"t", "\xC3\xA4", "n"});
    QCOMPARE(controller.calls,
             (QStringList{QStringLiteral("token t"), QStringLiteral("userId \u00e4"), QStringLiteral("node n")}));
    controller.calls.clear();
    controller.clearHeaderInfo();
    QCOMPARE(controller.calls,
             (QStringList{QStringLiteral("token "), QStringLiteral("userId "), QStringLiteral("node ")}));
}

void HeadersTest::clearSetsEmptyValuesAndResetsThePanelOnce()
{
    f->controller.updateHeaderInfo({"t", "u", "n"});
    f->controller.clearHeaderInfo();
    QCOMPARE(f->signalled.summary(), QStringLiteral("resetMainWidget:1"));
    QVERIFY(f->askText());
    for (const char *name : {"token", "userId", "node"})
        QCOMPARE(sent(lastRequest(), name), QByteArray(""));
}

void HeadersTest::everyRequestToTheServiceCarriesThem()
{
    f->controller.updateHeaderInfo({"t", "u", "n"});
    QVERIFY(f->askText());
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QVERIFY(f->askPicture());
    QCOMPARE(f->server.requestCount(), 3);
    const QVector<HttpRequest> requests = f->server.requests();
    for (const HttpRequest &request : requests) {
        QCOMPARE(sent(request, "Content-Type"), QByteArrayLiteral("application/json"));
        QCOMPARE(sent(request, "deviceId"), QByteArrayLiteral("device123"));
        QCOMPARE(sent(request, "token"), QByteArrayLiteral("t"));
        QCOMPARE(sent(request, "userId"), QByteArrayLiteral("u"));
        QCOMPARE(sent(request, "node"), QByteArrayLiteral("n"));
    }
}

void HeadersTest::headersSetWhileAPollIsOutGoWithTheNext()
{
    f->controller.setToken(QStringLiteral("first"));
    QVERIFY(f->askText());
    f->server.expect("POST", ControllerFixture::resultPath(), ControllerFixture::working().held());
    f->tick();
    QVERIFY(eventually([&] { return f->server.heldCount() == 1; }));
    f->controller.setToken(QStringLiteral("second"));
    f->server.releaseAll();
    QVERIFY(f->repliesDone());
    QCOMPARE(sent(lastRequest(), "token"), QByteArrayLiteral("first"));
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QCOMPARE(sent(lastRequest(), "token"), QByteArrayLiteral("second"));
}

void HeadersTest::pictureFetchesCarryNone()
{
    f->controller.updateHeaderInfo({"t", "u", "n"});
    f->server.expect("GET", "/picture", ScriptedAnswer::bytes("no picture"));
    PicturedGeneratedPack pack;
    pack.source.url = f->server.url().toStdString() + "/picture";
    f->controller.queryImageData(pack);
    QVERIFY(f->signalled.generatePictureFinished.waitFor(1));
    for (const char *name : {"token", "userId", "node", "deviceId"})
        QVERIFY(!lastRequest().header(name));
}

QTEST_GUILESS_MAIN(HeadersTest)
#include "tst_headers.moc"
