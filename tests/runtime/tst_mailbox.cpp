// What waits for a thread that does not come back to its event loop.

#include "inprocess/inprocessruntime.h"
#include "machine/mailbox.h"
#include "support/logcatcher.h"
#include "support/waiting.h"
#include "testgroup.h"

#include <QSignalSpy>
#include <QTest>

using namespace tavro::runtime;
using namespace tavro::testsupport;

class tst_Mailbox : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fullMailboxTakesNoMore();
    void mailboxIsEmptiedByDelivery();
    void mailboxMayOutliveItsDispatcher();
    void senderOfAMessageThatIsNotTakenIsTold();
};

namespace {

constexpr std::size_t mebibyte = 1024 * 1024;

std::shared_ptr<const Message> large()
{
    return std::make_shared<const Message>(Message{"Large", std::string(mebibyte, 'x')});
}

int putUntilFull(const Mailbox &mailbox)
{
    int taken = 0;
    while (taken < 1000 && mailbox.put(large()))
        ++taken;
    return taken;
}

} // namespace

void tst_Mailbox::fullMailboxTakesNoMore()
{
    QtDispatcher dispatcher;
    const Mailbox mailbox(dispatcher.line(), std::make_shared<CallHandlers>());
    QCOMPARE(putUntilFull(mailbox), int(Mailbox::maxWaiting / mebibyte) - 1);
    QVERIFY(mailbox.put(std::make_shared<const Message>(Message{"Small", {}})));
}

void tst_Mailbox::mailboxIsEmptiedByDelivery()
{
    QtDispatcher dispatcher;
    const auto handlers = std::make_shared<CallHandlers>();
    int calls = 0;
    handlers->set("Large", [&calls](const char *, const char *, unsigned int) { ++calls; });
    const Mailbox mailbox(dispatcher.line(), handlers);
    const int taken = putUntilFull(mailbox);
    QVERIFY(eventually([&] { return calls == taken; }));
    QCOMPARE(putUntilFull(mailbox), taken);
}

void tst_Mailbox::mailboxMayOutliveItsDispatcher()
{
    auto dispatcher = std::make_unique<QtDispatcher>();
    const auto handlers = std::make_shared<CallHandlers>();
    const Mailbox mailbox(dispatcher->line(), handlers);
    dispatcher.reset();
    QVERIFY(mailbox.put(large()));
    QCOMPARE(handlers.use_count(), 2L); // this one's and the mailbox's: the message was dropped
}

void tst_Mailbox::senderOfAMessageThatIsNotTakenIsTold()
{
    LogCatcher log;
    {
        const ExpectedLog told(log, QStringLiteral("too many messages wait"), 2);
        InProcessBus bus;
        InProcessRuntime server(bus, Role::ProxyServer);
        InProcessRuntime client(bus, Role::ProxyClient);
        QSignalSpy lost(&client, &MachineRuntime::sigMessageLost);
        QSignalSpy lostByServer(&server, &MachineRuntime::sigMessageLost);
        const std::string bytes(mebibyte, 'x');
        for (std::size_t i = 0; i < Mailbox::maxWaiting / mebibyte; ++i) {
            client.sendToServer("Large", bytes.data(), mebibyte);
            server.sendToClients("Large", bytes.data(), mebibyte);
        }
        QVERIFY(eventually([&] { return lost.count() == 1 && lostByServer.count() == 1; }));
    }
    QCOMPARE(log.complaints(), QStringList());
}

QTEST_GUILESS_MAIN(tst_Mailbox)
#include "tst_mailbox.moc"
