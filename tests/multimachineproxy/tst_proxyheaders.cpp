#include "proxytest.h"
#include "vectors.h"

/// Token, user id and node as clients set them on the serving machine.
class ProxyHeadersTest : public ProxyTest {
    Q_OBJECT

private Q_SLOTS:
    void updateHeaderSetsAllThree();
    void updateHeaderOfAnotherLengthIsIgnored_data();
    void updateHeaderOfAnotherLengthIsIgnored();
    void clearHeaderEmptiesAllThree();
    void clearHeaderOnAMachineThatServesNoMoreSendsNothing();
    void valueThatNoHeaderCanHoldIsRefused();
};

void ProxyHeadersTest::updateHeaderSetsAllThree()
{
    QVERIFY(f->runtime.deliver("UpdateHeader", packedVector("list", "filled")));
    QCOMPARE(f->d.resultRequest.rawHeader("token"), QByteArray("token"));
    QCOMPARE(f->d.resultRequest.rawHeader("userId"), QByteArray("user"));
    QCOMPARE(f->d.resultRequest.rawHeader("node"), QByteArray("node"));
    const auto lines = f->log.hostLines();
    QCOMPARE(lines.size(), 1);
    QVERIFY(lines.at(0).level == LogLine::Level::Info);
    QVERIFY(lines.at(0).text.startsWith(
        QStringLiteral("--AIASSISTANT-- token is token, userId is user, node is node \n //multimachineproxyserver")));
    QVERIFY(lines.at(0).text.contains(QStringLiteral(":onUpdateAIControllerRequestHeader()#")));
    QCOMPARE(lines.at(0).file, QStringLiteral("multimachineproxy/multimachineproxyserver"));
    QCOMPARE(lines.at(0).function, QStringLiteral("onUpdateAIControllerRequestHeader"));
    QCOMPARE(f->runtime.names(Call::Kind::ToClients), Names());
}

void ProxyHeadersTest::updateHeaderOfAnotherLengthIsIgnored_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("none") << QByteArray::fromHex("90");
    QTest::newRow("two") << QByteArray::fromHex("92a174a175");
    QTest::newRow("four") << QByteArray::fromHex("94a174a175a16ea16f");
}

void ProxyHeadersTest::updateHeaderOfAnotherLengthIsIgnored()
{
    QFETCH(QByteArray, payload);
    f->controller.updateHeaderInfo({"t0", "u0", "n0"});
    QVERIFY(f->runtime.deliver("UpdateHeader", payload));
    QCOMPARE(f->d.resultRequest.rawHeader("token"), QByteArray("t0"));
    QCOMPARE(f->d.resultRequest.rawHeader("userId"), QByteArray("u0"));
    QCOMPARE(f->d.resultRequest.rawHeader("node"), QByteArray("n0"));
    QVERIFY(f->log.hostLines().isEmpty());
}

void ProxyHeadersTest::clearHeaderEmptiesAllThree()
{
    f->controller.updateHeaderInfo({"t0", "u0", "n0"});
    QVERIFY(f->runtime.deliver("ClearHeader"));
    for (const char *header : {"token", "userId", "node"}) {
        QVERIFY(f->d.resultRequest.hasRawHeader(header));
        QCOMPARE(f->d.resultRequest.rawHeader(header), QByteArray(""));
    }
    COMPARE_SENT(f->runtime, Call::Kind::ToClients, "ClearHeaderFinished");
    QVERIFY(!client->runtime.deliver("ClearHeaderFinished"));
    QCOMPARE(f->signalled.summary(), QString());
}

void ProxyHeadersTest::clearHeaderOnAMachineThatServesNoMoreSendsNothing()
{
    f->controller.updateHeaderInfo({"t0", "u0", "n0"});
    f->runtime.setRoles({false, false, true});
    QVERIFY(f->runtime.deliver("ClearHeader"));
    QCOMPARE(f->d.resultRequest.rawHeader("token"), QByteArray(""));
    QCOMPARE(f->runtime.names(Call::Kind::ToClients), Names());
}

void ProxyHeadersTest::valueThatNoHeaderCanHoldIsRefused()
{
    f->controller.updateHeaderInfo({"t0", "u0", "n0"});
    const ExpectedLog refused(f->log, QStringLiteral("refused a value with a line break"));
    QVERIFY(f->runtime.deliver("UpdateHeader",
                               QByteArray::fromHex("93"
                                                   "a3610a62"
                                                   "a175"
                                                   "a16e")));
    QCOMPARE(f->d.resultRequest.rawHeader("token"), QByteArray("t0"));
    QCOMPARE(f->d.resultRequest.rawHeader("userId"), QByteArray("u"));
}

QTEST_GUILESS_MAIN(ProxyHeadersTest)
#include "tst_proxyheaders.moc"
