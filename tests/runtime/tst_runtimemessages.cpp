// What every runtime promises of the messages: who receives them, what they hold, and in which order they come.

#include "support/logcatcher.h"
#include "support/waiting.h"
#include "testgroup.h"

#include <QSignalSpy>
#include <QTest>

#include <cstring>
#include <thread>

using namespace tavro::runtime;
using namespace tavro::testsupport;

class tst_RuntimeMessages : public GroupTest {
    Q_OBJECT

private Q_SLOTS:
    void rolesAreTheGivenOnes();
    void callsReachTheServerOnly();
    void completionsReachAllClients();
    void messagesNeverReachTheirSender();
    void payloadsArriveByteForByte();
    void emptyPayloadsArriveAsNull();
    void payloadAtTheLimitArrives();
    void payloadOverTheLimitIsRefused();
    void tenThousandMessagesArriveInOrder();
    void eachSendersOrderIsKept();
    void messagesOfOtherNamesAreNotHeard();
    void callThatNobodyServesIsReported();

private:
    std::unique_ptr<MachineRuntime> server(const QString &name = QStringLiteral("studio"));
    std::unique_ptr<MachineRuntime> client();
};

std::unique_ptr<MachineRuntime> tst_RuntimeMessages::server(const QString &name)
{
    auto runtime = m_group->join(Role::ProxyServer, name);
    return isReady(*runtime, true) ? std::move(runtime) : nullptr;
}

std::unique_ptr<MachineRuntime> tst_RuntimeMessages::client()
{
    auto runtime = m_group->join(Role::ProxyClient);
    const bool isServed = isReady(*runtime) && eventually([&runtime] { return runtime->isServerPresent(); });
    return isServed ? std::move(runtime) : nullptr;
}

void tst_RuntimeMessages::rolesAreTheGivenOnes()
{
    const auto all = m_group->join(Role::ProxyServer | Role::ProxyClient | Role::LocalExecutor);
    QVERIFY(all->isProxyServer() && all->isProxyClient() && all->isLocalExecutor());
    const auto serverOnly = m_group->join(Role::ProxyServer);
    QVERIFY(serverOnly->isProxyServer() && !serverOnly->isProxyClient() && !serverOnly->isLocalExecutor());
    const auto none = m_group->join({});
    QVERIFY(!none->isProxyServer() && !none->isProxyClient() && !none->isLocalExecutor());
    ExpectedLog standby(*m_log, QStringLiteral("standing by"), 0);
    QVERIFY(isReady(*none));
}

void tst_RuntimeMessages::callsReachTheServerOnly()
{
    Receiver atServer;
    Receiver atOther;
    const auto serving = server();
    const auto sender = client();
    const auto other = client();
    QVERIFY(serving && sender && other);
    atServer.listen(*serving, "GenerateText");
    atOther.listen(*other, "GenerateText");
    atOther.listen(*other, "Done");
    sender->sendToServer("GenerateText", "why", 3);
    QVERIFY(eventually([&] { return atServer.count() == 1; }));
    serving->sendToClients("Done", nullptr, 0);
    QVERIFY(eventually([&] { return atOther.count() > 0; }));
    QCOMPARE(atOther.names(), QVector<QByteArray>{"Done"});
    QCOMPARE(atServer.at(0).payload, QByteArray("why"));
}

void tst_RuntimeMessages::completionsReachAllClients()
{
    Receiver first;
    Receiver second;
    const auto serving = server();
    const auto one = client();
    const auto two = client();
    QVERIFY(serving && one && two);
    first.listen(*one, "GenerateTextFinished");
    second.listen(*two, "GenerateTextFinished");
    serving->sendToClients("GenerateTextFinished", "because", 7);
    QVERIFY(eventually([&] { return first.count() == 1 && second.count() == 1; }));
    QCOMPARE(first.at(0).payload, QByteArray("because"));
    QCOMPARE(second.at(0).payload, QByteArray("because"));
}

// The sender's own copies would come before the answer of the other machine.
void tst_RuntimeMessages::messagesNeverReachTheirSender()
{
    Receiver atBoth;
    Receiver atClient;
    const auto both = m_group->join(Role::ProxyServer | Role::ProxyClient);
    QVERIFY(isReady(*both, true));
    const auto other = client();
    QVERIFY(other);
    atBoth.listen(*both, "StopGenerate");
    atBoth.listen(*both, "StopGenerateFinished");
    atBoth.listen(*both, "Done");
    atClient.listen(*other, "StopGenerateFinished");
    both->sendToServer("StopGenerate", nullptr, 0);
    both->sendToClients("StopGenerateFinished", nullptr, 0);
    QVERIFY(eventually([&] { return atClient.count() == 1; }));
    other->sendToServer("Done", nullptr, 0);
    QVERIFY(eventually([&] { return atBoth.count() > 0; }));
    QCOMPARE(atBoth.names(), QVector<QByteArray>{"Done"});
}

void tst_RuntimeMessages::payloadsArriveByteForByte()
{
    QByteArray bytes;
    for (int i = 0; i < 256; ++i)
        bytes += static_cast<char>(i);
    Receiver atServer;
    const auto serving = server();
    const auto sender = client();
    QVERIFY(serving && sender);
    atServer.listen(*serving, "Bytes");
    sender->sendToServer("Bytes", bytes.constData(), static_cast<unsigned int>(bytes.size()));
    QVERIFY(eventually([&] { return atServer.count() == 1; }));
    QCOMPARE(atServer.at(0).payload, bytes);
}

void tst_RuntimeMessages::emptyPayloadsArriveAsNull()
{
    Receiver atServer;
    Receiver atClient;
    const auto serving = server();
    const auto sender = client();
    QVERIFY(serving && sender);
    atServer.listen(*serving, "StopGenerate");
    atClient.listen(*sender, "DeleteGeneratingItem");
    sender->sendToServer("StopGenerate", nullptr, 0);
    sender->sendToServer("StopGenerate", "never looked at", 0);
    serving->sendToClients("DeleteGeneratingItem", nullptr, 0);
    QVERIFY(eventually([&] { return atServer.count() == 2 && atClient.count() == 1; }));
    for (const Receiver::Received &received : {atServer.at(0), atServer.at(1), atClient.at(0)}) {
        QVERIFY(received.dataWasNull);
        QCOMPARE(received.payload.size(), 0);
    }
}

void tst_RuntimeMessages::payloadAtTheLimitArrives()
{
    const QByteArray bytes(static_cast<int>(TestGroup::maxPayload), 'x');
    Receiver atServer;
    const auto serving = server();
    const auto sender = client();
    QVERIFY(serving && sender);
    atServer.listen(*serving, "Large");
    sender->sendToServer("Large", bytes.constData(), TestGroup::maxPayload);
    QVERIFY(eventually([&] { return atServer.count() == 1; }));
    QCOMPARE(atServer.at(0).payload, bytes);
}

void tst_RuntimeMessages::payloadOverTheLimitIsRefused()
{
    const QByteArray bytes(static_cast<int>(TestGroup::maxPayload) + 1, 'x');
    Receiver atServer;
    const auto serving = server();
    const auto sender = client();
    QVERIFY(serving && sender);
    atServer.listen(*serving, "Large");
    atServer.listen(*serving, "Small");
    QSignalSpy lost(sender.get(), &MachineRuntime::sigMessageLost);
    QSignalSpy lostByServer(serving.get(), &MachineRuntime::sigMessageLost);
    const ExpectedLog announced(*m_log, QStringLiteral("1048577 bytes"), 2);
    sender->sendToServer("Large", bytes.constData(), TestGroup::maxPayload + 1);
    serving->sendToClients("LargeToo", bytes.constData(), TestGroup::maxPayload + 1);
    sender->sendToServer("Small", "x", 1);
    QVERIFY(eventually([&] { return atServer.count() > 0 && lost.count() > 0 && lostByServer.count() > 0; }));
    QCOMPARE(atServer.names(), QVector<QByteArray>{"Small"});
    QCOMPARE(lost.at(0).at(0).toString(), QStringLiteral("Large"));
    QCOMPARE(lostByServer.at(0).at(0).toString(), QStringLiteral("LargeToo"));
}

void tst_RuntimeMessages::tenThousandMessagesArriveInOrder()
{
    constexpr int count = 10'000;
    Receiver atServer;
    const auto serving = server();
    const auto sender = client();
    QVERIFY(serving && sender);
    // Two names: StopGenerate must not overtake GenerateText.
    atServer.listen(*serving, "Even");
    atServer.listen(*serving, "Odd");
    QVector<QByteArray> sent;
    for (int i = 0; i < count; ++i) {
        sent += QByteArray::number(i);
        sender->sendToServer(i % 2 ? "Odd" : "Even", sent.last().constData(),
                             static_cast<unsigned int>(sent.last().size()));
    }
    QVERIFY(eventually([&] { return atServer.count() >= count; }, waitLimit * 3));
    QCOMPARE(atServer.payloads(), sent);
}

void tst_RuntimeMessages::eachSendersOrderIsKept()
{
    constexpr unsigned int count = 2'000;
    Receiver atServer;
    const auto serving = server();
    const auto one = client();
    const auto two = client();
    QVERIFY(serving && one && two);
    atServer.listen(*serving, "One");
    atServer.listen(*serving, "Two");
    const auto send = [](MachineRuntime &runtime, const char *name) {
        for (unsigned int i = 0; i < count; ++i)
            runtime.sendToServer(name, reinterpret_cast<const char *>(&i), sizeof i);
    };
    std::thread first(send, std::ref(*one), "One");
    std::thread second(send, std::ref(*two), "Two");
    const bool haveAllCome = eventually([&] { return atServer.count() >= int(2 * count); }, waitLimit * 3);
    first.join();
    second.join();
    QVERIFY(haveAllCome);
    QHash<QByteArray, unsigned int> next;
    for (int i = 0; i < atServer.count(); ++i) {
        unsigned int number = 0;
        std::memcpy(&number, atServer.at(i).payload.constData(), sizeof number);
        QCOMPARE(number, next[atServer.at(i).name]++);
    }
}

void tst_RuntimeMessages::messagesOfOtherNamesAreNotHeard()
{
    Receiver atServer;
    const auto serving = server();
    const auto sender = client();
    QVERIFY(serving && sender);
    atServer.listen(*serving, "Generate");
    for (const char *name : {"GenerateText", "generate", "Generat", "Generate"})
        sender->sendToServer(name, nullptr, 0);
    QVERIFY(eventually([&] { return atServer.count() > 0; }));
    QCOMPARE(atServer.names(), QVector<QByteArray>{"Generate"});
}

void tst_RuntimeMessages::callThatNobodyServesIsReported()
{
    const auto sender = m_group->join(Role::ProxyClient);
    QVERIFY(isReady(*sender));
    QSignalSpy lost(sender.get(), &MachineRuntime::sigMessageLost);
    const ExpectedLog announced(*m_log, QStringLiteral("lost GenerateText: no machine serves the group"));
    sender->sendToServer("GenerateText", "why", 3);
    QVERIFY(eventually([&] { return lost.count() > 0; }));
    QCOMPARE(lost.at(0).at(0).toString(), QStringLiteral("GenerateText"));
    QCOMPARE(lost.at(0).at(1).toString(), QStringLiteral("no machine serves the group"));
}

QTEST_GUILESS_MAIN(tst_RuntimeMessages)
#include "tst_runtimemessages.moc"
