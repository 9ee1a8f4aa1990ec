// What every runtime tells of the machine that serves, and that only one does.

#include "support/logcatcher.h"
#include "support/waiting.h"
#include "testgroup.h"

#include <QSignalSpy>
#include <QTest>

using namespace tavro::runtime;
using namespace tavro::testsupport;

class tst_RuntimePresence : public GroupTest {
    Q_OBJECT

private Q_SLOTS:
    void serverServesWhereThereIsNone();
    void clientSeesTheServerComeAndGo();
    void clientThatComesLaterSeesTheServer();
    void secondServerStandsBy();
    void secondServersCompletionsAreRefused();
    void secondServerTakesOver();
    void manyThatStartAtOnceAgreeOnOne();
};

void tst_RuntimePresence::serverServesWhereThereIsNone()
{
    const auto server = m_group->join(Role::ProxyServer, QStringLiteral("studio"));
    QSignalSpy serving(server.get(), &MachineRuntime::sigServingChanged);
    QVERIFY(isReady(*server, true));
    QCOMPARE(serving.count(), 1);
    QCOMPARE(serving.at(0).at(0).toBool(), true);
    QVERIFY(server->isServerPresent());
    QCOMPARE(server->anotherServer(), QString());
}

void tst_RuntimePresence::clientSeesTheServerComeAndGo()
{
    const auto client = m_group->join(Role::ProxyClient);
    QVERIFY(isReady(*client));
    QVERIFY(!client->isServerPresent());
    QSignalSpy present(client.get(), &MachineRuntime::sigServerPresentChanged);
    auto server = m_group->join(Role::ProxyServer);
    QVERIFY(eventually([&client] { return client->isServerPresent(); }));
    server.reset();
    QVERIFY(eventually([&client] { return !client->isServerPresent(); }));
    QCOMPARE(present.count(), 2);
    QVERIFY(!client->isServing());
}

void tst_RuntimePresence::clientThatComesLaterSeesTheServer()
{
    const auto server = m_group->join(Role::ProxyServer);
    QVERIFY(isReady(*server, true));
    const auto client = m_group->join(Role::ProxyClient);
    QVERIFY(eventually([&client] { return client->isServerPresent(); }));
}

void tst_RuntimePresence::secondServerStandsBy()
{
    Receiver atFirst;
    Receiver atSecond;
    const auto first = m_group->join(Role::ProxyServer, QStringLiteral("studio one"));
    QVERIFY(isReady(*first, true));
    const ExpectedLog announced(*m_log, QStringLiteral("standing by: studio one serves the group already"));
    const auto second = m_group->join(Role::ProxyServer, QStringLiteral("studio two"));
    QSignalSpy another(second.get(), &MachineRuntime::sigAnotherServer);
    QVERIFY(eventually([&another] { return another.count() > 0; }));
    QCOMPARE(another.at(0).at(0).toString(), QStringLiteral("studio one"));
    QVERIFY(!second->isServing());
    QVERIFY(second->isServerPresent());
    const auto client = m_group->join(Role::ProxyClient);
    QVERIFY(eventually([&client] { return client->isServerPresent(); }));
    atFirst.listen(*first, "Call");
    atSecond.listen(*second, "Call");
    for (int i = 0; i < 10; ++i)
        client->sendToServer("Call", nullptr, 0);
    QVERIFY(eventually([&atFirst] { return atFirst.count() == 10; }));
    QCOMPARE(atSecond.count(), 0);
    QVERIFY(first->isServing());
}

void tst_RuntimePresence::secondServersCompletionsAreRefused()
{
    Receiver atClient;
    const auto first = m_group->join(Role::ProxyServer, QStringLiteral("studio one"));
    QVERIFY(isReady(*first, true));
    const ExpectedLog standby(*m_log, QStringLiteral("standing by"));
    const auto second = m_group->join(Role::ProxyServer, QStringLiteral("studio two"));
    QVERIFY(eventually([&second] { return !second->anotherServer().isEmpty(); }));
    const auto client = m_group->join(Role::ProxyClient);
    QVERIFY(isReady(*client));
    atClient.listen(*client, "FromFirst");
    atClient.listen(*client, "FromSecond");
    QSignalSpy lost(second.get(), &MachineRuntime::sigMessageLost);
    const ExpectedLog announced(*m_log, QStringLiteral("this machine stands by for studio one"));
    second->sendToClients("FromSecond", nullptr, 0);
    QVERIFY(eventually([&lost] { return lost.count() == 1; }));
    first->sendToClients("FromFirst", nullptr, 0);
    QVERIFY(eventually([&atClient] { return atClient.count() > 0; }));
    QCOMPARE(atClient.names(), QVector<QByteArray>{"FromFirst"});
}

void tst_RuntimePresence::secondServerTakesOver()
{
    Receiver atSecond;
    auto first = m_group->join(Role::ProxyServer, QStringLiteral("studio one"));
    QVERIFY(isReady(*first, true));
    const ExpectedLog standby(*m_log, QStringLiteral("standing by"));
    const auto second = m_group->join(Role::ProxyServer, QStringLiteral("studio two"));
    QVERIFY(eventually([&second] { return !second->anotherServer().isEmpty(); }));
    first.reset();
    QVERIFY(eventually([&second] { return second->isServing(); }));
    QCOMPARE(second->anotherServer(), QString());
    const auto client = m_group->join(Role::ProxyClient);
    QVERIFY(eventually([&client] { return client->isServerPresent(); }));
    atSecond.listen(*second, "Call");
    client->sendToServer("Call", nullptr, 0);
    QVERIFY(eventually([&atSecond] { return atSecond.count() == 1; }));
}

void tst_RuntimePresence::manyThatStartAtOnceAgreeOnOne()
{
    const ExpectedLog standby(*m_log, QStringLiteral("standing by"), 5);
    std::vector<std::unique_ptr<MachineRuntime>> servers;
    for (int i = 0; i < 6; ++i)
        servers.push_back(m_group->join(Role::ProxyServer, QStringLiteral("studio %1").arg(i)));
    const auto serving = [&servers] {
        return std::count_if(servers.begin(), servers.end(), [](auto &server) { return server->isServing(); });
    };
    const auto standingBy = [&servers] {
        return std::count_if(servers.begin(), servers.end(),
                             [](auto &server) { return !server->anotherServer().isEmpty(); });
    };
    QVERIFY(eventually([&] { return serving() == 1 && standingBy() == 5; }));
}

QTEST_GUILESS_MAIN(tst_RuntimePresence)
#include "tst_runtimepresence.moc"
