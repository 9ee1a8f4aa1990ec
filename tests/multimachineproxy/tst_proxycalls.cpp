#include "proxytest.h"
#include "samples.h"
#include "vectors.h"

#include <functional>

using Operation = std::function<void(ClientMachine &)>;
Q_DECLARE_METATYPE(Operation)

/// What a client's controller sends for each operation of its panel.
class ProxyCallsTest : public ProxyTest {
    Q_OBJECT

private Q_SLOTS:
    void operationSendsItsCall_data();
    void operationSendsItsCall();
    void clientThatAlsoExecutesDoesBoth();
    void machineWithoutTheRoleSendsNothing_data() { operationSendsItsCall_data(); }
    void machineWithoutTheRoleSendsNothing();
    void downloadIsNotSent();
    void callsGoOutFromAnyThread();
};

void ProxyCallsTest::operationSendsItsCall_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QByteArray>("payload");
    const auto add = [](const char *name, const Operation &operation, const QByteArray &payload = {}) {
        QTest::newRow(name) << operation << payload;
    };
    add(
        "GenerateText", [](ClientMachine &m) { m.controller.textToGenerateText(QStringLiteral("hello")); },
        packedVector("string", "filled"));
    add(
        "GenerateImage", [](ClientMachine &m) { m.controller.textToGeneratePicture(samples::picture()); },
        packedVector("picture", "filled"));
    add("StopGenerate", [](ClientMachine &m) { m.controller.toStopGenerate(); });
    add(
        "ActiveDeepseek", [](ClientMachine &m) { m.controller.toActiveDeepSeekModel(true); }, "\xC3");
    add(
        "ActiveOnlineSearch", [](ClientMachine &m) { m.controller.toActiveOnlineSearch(false); }, "\xC2");
    add("ClearCathe", [](ClientMachine &m) { m.controller.toClearCathe(); });
    add("ClearHistoryRecord", [](ClientMachine &m) { m.controller.toClearHistoryRecord(); });
    add(
        "UpdateHeader", [](ClientMachine &m) { m.controller.toUpdateHeaderInfo(samples::list()); },
        packedVector("list", "filled"));
    add("ClearHeader", [](ClientMachine &m) { m.controller.toClearHeaderInfo(); });
    add("AiWidgetShow", [](ClientMachine &m) { m.controller.notifyAiWidgetShow(); });
}

void ProxyCallsTest::operationSendsItsCall()
{
    QFETCH(Operation, operation);
    QFETCH(QByteArray, payload);
    operation(*client);
    COMPARE_SENT(client->runtime, Call::Kind::ToServer, QTest::currentDataTag(), payload);
    QCOMPARE(client->runtime.names(Call::Kind::ToClients), Names());
    QCOMPARE(client->signalled.summary(), QString());
    QVERIFY(client->d.historyArray.isEmpty());
    QVERIFY(!client->d.resultRequest.hasRawHeader("token"));
}

void ProxyCallsTest::clientThatAlsoExecutesDoesBoth()
{
    ClientMachine machine({false, true, true});
    machine.controller.toUpdateHeaderInfo(samples::list());
    COMPARE_SENT(machine.runtime, Call::Kind::ToServer, "UpdateHeader", packedVector("list", "filled"));
    QCOMPARE(machine.d.resultRequest.rawHeader("userId"), QByteArray("user"));
}

void ProxyCallsTest::machineWithoutTheRoleSendsNothing()
{
    QFETCH(Operation, operation);
    ClientMachine machine({true, false, false});
    operation(machine);
    QCOMPARE(machine.runtime.names(Call::Kind::ToServer), Names());
    QCOMPARE(machine.runtime.names(Call::Kind::ToClients), Names());
    QCOMPARE(machine.signalled.summary(), QString());
}

// The call exists, for the tables' symmetry, but a user wants the file on the own machine.
void ProxyCallsTest::downloadIsNotSent()
{
    f->server.expect("GET", "/picture", ScriptedAnswer::status(404));
    const ExpectedLog unreachable(f->log, QStringLiteral("slotDownloadImageFinished_ errorcode"));
    client->controller.toDownloadPicture(f->server.url() + QStringLiteral("/picture"));
    QVERIFY(eventually([&] { return unreachable.seen() == 1; }));
    QCOMPARE(client->runtime.names(Call::Kind::ToServer), Names());
    client->d.proxyClient.load()->downloadPicture(QStringLiteral("hello"));
    COMPARE_SENT(client->runtime, Call::Kind::ToServer, "DownloadPicture", packedVector("string", "filled"));
}

void ProxyCallsTest::callsGoOutFromAnyThread()
{
    std::thread([&] { client->controller.textToGenerateText(QStringLiteral("hello")); }).join();
    COMPARE_SENT(client->runtime, Call::Kind::ToServer, "GenerateText", packedVector("string", "filled"));
}

QTEST_GUILESS_MAIN(ProxyCallsTest)
#include "tst_proxycalls.moc"
