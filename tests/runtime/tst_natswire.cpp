// What goes over the broker, as another program there sees it, and what such a program can do to a machine.

#include "nats/natsruntime.h"
#include "rawpeer.h"
#include "support/logcatcher.h"
#include "support/natsserver.h"
#include "support/waiting.h"
#include "testgroup.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace tavro::runtime;
using namespace tavro::testsupport;

class tst_NatsWire : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void callsAndCompletionsHaveTheirSubjects();
    void presenceStaysOffTheCalls();
    void foreignMessagesAreDelivered();
    void malformedPresenceIsIgnored();
    void serverThatFallsSilentIsGone();
    void callToASilentServerIsNotSent();
    void machineWithoutAPrintableNameIsHeard();
    void standingByEndsWhenTheOtherFallsSilent();
    void foreignGoodbyeDoesNotStopTheServer();

private:
    NatsOptions options() const;

    std::unique_ptr<LogCatcher> m_log;
    std::unique_ptr<NatsServer> m_broker;
    std::unique_ptr<RawPeer> m_peer;
};

void tst_NatsWire::init()
{
    m_log = std::make_unique<LogCatcher>();
    m_broker = std::make_unique<NatsServer>();
    QVERIFY2(m_broker->start(), qPrintable(m_broker->errorText()));
    m_peer = std::make_unique<RawPeer>(m_broker->url());
    QVERIFY(m_peer->isConnected());
}

void tst_NatsWire::cleanup()
{
    m_peer.reset();
    m_broker.reset();
    const QStringList complaints = m_log->complaints();
    m_log.reset();
    QVERIFY2(complaints.isEmpty(), qPrintable(complaints.join(QLatin1Char('\n'))));
}

NatsOptions tst_NatsWire::options() const
{
    NatsOptions options;
    options.servers = QStringList{m_broker->url()};
    options.prefix = QStringLiteral("site.assistant");
    options.group = QStringLiteral("news");
    // The peer hears the question who serves and gives no answer; a machine waits one interval for it.
    options.presenceInterval = std::chrono::milliseconds(200);
    return options;
}

void tst_NatsWire::callsAndCompletionsHaveTheirSubjects()
{
    NatsRuntime server(Role::ProxyServer, options());
    NatsRuntime client(Role::ProxyClient, options());
    QVERIFY(eventually([&client] { return client.isServerPresent(); }));
    client.sendToServer("GenerateText", "\xa3why", 4);
    server.sendToClients("GenerateTextFinished", "\x92\x00", 2);
    const std::string root = "site.assistant.news.";
    QVERIFY(eventually([&] { return m_peer->heard(root + "server.").size() == 1; }));
    QVERIFY(eventually([&] { return m_peer->heard(root + "clients.").size() == 1; }));
    const RawPeer::Heard call = m_peer->heard(root + "server.").front();
    QCOMPARE(call.subject, root + "server.GenerateText");
    QCOMPARE(call.data, std::string("\xa3why"));
    const RawPeer::Heard completion = m_peer->heard(root + "clients.").front();
    QCOMPARE(completion.subject, root + "clients.GenerateTextFinished");
    QCOMPARE(completion.data, std::string("\x92\x00", 2));
    QCOMPARE(completion.replyTo, std::string());
}

void tst_NatsWire::presenceStaysOffTheCalls()
{
    {
        NatsRuntime server(Role::ProxyServer, options());
        NatsRuntime client(Role::ProxyClient, options());
        QVERIFY(eventually([&client] { return client.isServerPresent(); }));
    }
    QVERIFY(eventually([this] { return m_peer->heard("site.assistant.news.presence").size() >= 2; }));
    QCOMPARE(m_peer->heard("site.assistant.news.server").size(), std::size_t(0));
    QCOMPARE(m_peer->heard("site.assistant.news.clients").size(), std::size_t(0));
    const auto others =
        m_peer->heard("").size() - m_peer->heard("site.assistant.news.").size() - m_peer->heard("$SYS.").size();
    QCOMPARE(others, std::size_t(0));
}

void tst_NatsWire::foreignMessagesAreDelivered()
{
    Receiver atServer;
    NatsRuntime server(Role::ProxyServer, options());
    atServer.listen(server, "Call");
    QVERIFY(isReady(server, true));
    QVERIFY(m_peer->send("site.assistant.news.server.NoSuchCall", "x"));
    QVERIFY(m_peer->send("site.assistant.news.server.Call.more", "x"));
    QVERIFY(m_peer->send("site.assistant.news.server.Call", "x", "reply.to"));
    QVERIFY(eventually([&atServer] { return atServer.count() > 0; }));
    QCOMPARE(atServer.payloads(), QVector<QByteArray>{"x"});
}

void tst_NatsWire::malformedPresenceIsIgnored()
{
    Receiver atServer;
    NatsRuntime server(Role::ProxyServer, options());
    atServer.listen(server, "Call");
    QVERIFY(isReady(server, true));
    for (const QByteArray &data : {QByteArray(), QByteArray("serving"), QByteArray("serving  "), QByteArray(9999, ' '),
                                   QByteArray("\x00\xff\x80", 3)}) {
        QVERIFY(m_peer->send("site.assistant.news.presence", data));
        QVERIFY(m_peer->send("site.assistant.news.presence.question", data, "reply.to"));
    }
    QVERIFY(m_peer->send("site.assistant.news.presence.question", "asking ~ peer", "answer.to.peer"));
    QVERIFY(eventually([this] { return m_peer->heard("answer.to.peer").size() == 1; }));
    QVERIFY(server.isServing());
    QVERIFY(m_peer->send("site.assistant.news.server.Call", "x"));
    QVERIFY(eventually([&atServer] { return atServer.count() == 1; }));
}

void tst_NatsWire::serverThatFallsSilentIsGone()
{
    NatsOptions hasty = options();
    hasty.presenceInterval = std::chrono::milliseconds(50);
    NatsRuntime client(Role::ProxyClient, hasty);
    QVERIFY(isReady(client));
    bool wasPresent = false;
    connect(&client, &MachineRuntime::sigServerPresentChanged, &client,
            [&wasPresent](bool present) { wasPresent = wasPresent || present; });
    QVERIFY(m_peer->send("site.assistant.news.presence", "serving a studio"));
    QVERIFY(eventually([&] { return wasPresent && !client.isServerPresent(); }));
}

// The peer takes every call, as a server that stands still does.
void tst_NatsWire::callToASilentServerIsNotSent()
{
    NatsOptions hasty = options();
    hasty.presenceInterval = std::chrono::milliseconds(50);
    NatsRuntime client(Role::ProxyClient, hasty);
    QVERIFY(isReady(client));
    client.sendToServer("Early", nullptr, 0);
    QSignalSpy present(&client, &MachineRuntime::sigServerPresentChanged);
    QVERIFY(m_peer->send("site.assistant.news.presence", "serving a studio"));
    QVERIFY(eventually([&present] { return present.count() == 2; }));
    QSignalSpy lost(&client, &MachineRuntime::sigMessageLost);
    const ExpectedLog told(*m_log, QStringLiteral("lost Late: no machine serves the group"));
    client.sendToServer("Late", nullptr, 0);
    QVERIFY(eventually([&lost] { return lost.count() == 1; }));
    QVERIFY(m_peer->send("site.assistant.news.presence", "serving a studio"));
    QVERIFY(eventually([&client] { return client.isServerPresent(); }));
    client.sendToServer("Again", nullptr, 0);
    QVERIFY(eventually([this] { return m_peer->heard("site.assistant.news.server.Again").size() == 1; }));
    QCOMPARE(m_peer->heard("site.assistant.news.server.Early").size(), std::size_t(1));
    QCOMPARE(m_peer->heard("site.assistant.news.server.Late").size(), std::size_t(0));
}

void tst_NatsWire::machineWithoutAPrintableNameIsHeard()
{
    NatsOptions nameless = options();
    nameless.machine = QStringLiteral("\t\n");
    const NatsRuntime server(Role::ProxyServer, nameless);
    const NatsRuntime client(Role::ProxyClient, options());
    QVERIFY(eventually([&client] { return client.isServerPresent(); }));
    const std::string said = m_peer->heard("site.assistant.news.presence").back().data;
    QVERIFY(said.find(" a machine without a name") != std::string::npos);
}

void tst_NatsWire::standingByEndsWhenTheOtherFallsSilent()
{
    NatsOptions hasty = options();
    hasty.presenceInterval = std::chrono::milliseconds(50);
    const ExpectedLog told(*m_log, QStringLiteral("standing by: studio serves"));
    NatsRuntime server(Role::ProxyServer, hasty);
    QVERIFY(isReady(server, true));
    bool stoodBy = false;
    connect(&server, &MachineRuntime::sigAnotherServer, &server,
            [&stoodBy](const QString &name) { stoodBy = stoodBy || name == QLatin1String("studio"); });
    // An id that is lower than any of a machine's.
    QVERIFY(m_peer->send("site.assistant.news.presence", "serving  studio"));
    QVERIFY(m_peer->send("site.assistant.news.presence", "serving ! studio"));
    QVERIFY(eventually([&] { return stoodBy && server.isServing(); }));
}

void tst_NatsWire::foreignGoodbyeDoesNotStopTheServer()
{
    NatsRuntime server(Role::ProxyServer, options());
    QVERIFY(isReady(server, true));
    QVERIFY(m_peer->send("site.assistant.news.presence", "leaving ~ studio"));
    QVERIFY(m_peer->send("site.assistant.news.presence", "serving ~ studio"));
    QVERIFY(m_peer->send("site.assistant.news.presence.question", "asking ~ peer", "answer.to.peer"));
    QVERIFY(eventually([this] { return m_peer->heard("answer.to.peer").size() == 1; }));
    QVERIFY(server.isServing());
}

QTEST_GUILESS_MAIN(tst_NatsWire)
#include "tst_natswire.moc"
