// The rules by which one machine serves, step by step and without a broker or a clock.

#include "nats/grouppresence.h"

#include <QStringList>
#include <QTest>

using namespace tavro::runtime;
using Kind = PresenceMessage::Kind;
using std::chrono::seconds;

namespace {

/// Writes down what is wanted, in words.
class Actions : public PresenceActions {
public:
    void announce(const PresenceMessage &message) override { note("announce", message); }
    void ask(const PresenceMessage &message) override { note("ask", message); }
    void answer(const std::string &to, const PresenceMessage &message) override { note("answer " + to, message); }
    void listenToCalls(bool listen) override { m_notes += listen ? QStringLiteral("listen") : QStringLiteral("deaf"); }
    void show(const Presence &presence) override { shown = presence; }

    QStringList take() { return std::exchange(m_notes, {}); }

    Presence shown;

private:
    void note(const std::string &what, const PresenceMessage &message)
    {
        m_notes += QString::fromStdString(what + ": " + message.toText());
    }

    QStringList m_notes;
};

const GroupPresence::Time start{};
constexpr seconds interval{2};

} // namespace

class tst_GroupPresence : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void servesWhereNobodyAnswers();
    void servesWhereTheAskedStaySilent();
    void announcesEachInterval();
    void standsByWhereOneServes();
    void answersThoseThatAsk();
    void lowerIdWinsAmongClaims();
    void lowerIdWinsAmongServers();
    void takesOverFromASilentServer();
    void takesOverAtOnceAfterAGoodbye();
    void goodbyeOfAStrangerChangesNothing();
    void whoStoodByLetsTheServerComeBackFirst();
    void whoServedAsksAgain();
    void watcherNeverServes();
    void watcherForgetsWhenTheConnectionIsLost();
    void watcherKnowsThatTheServerIsGone();
    void leavingIsSaidByTheServerOnly();
};

namespace {

/// One machine with the id "m".
struct Machine {
    explicit Machine(bool mayServe)
        : group({mayServe, "m", "this machine"}, interval, actions)
    { }
    void hear(Kind kind, const char *id, const char *replyTo = "", GroupPresence::Time now = start)
    {
        group.heard({kind, id, std::string("machine ") + id}, replyTo, now);
    }
    void serve()
    {
        group.opened(start);
        group.nobody(start);
        actions.take();
    }

    Actions actions;
    GroupPresence group;
};

} // namespace

void tst_GroupPresence::servesWhereNobodyAnswers()
{
    Machine machine(true);
    machine.group.opened(start);
    QCOMPARE(machine.actions.take(), QStringList{QStringLiteral("ask: claiming m this machine")});
    QVERIFY(!machine.actions.shown.serving);
    machine.group.nobody(start);
    QCOMPARE(machine.actions.take(),
             (QStringList{QStringLiteral("listen"), QStringLiteral("announce: serving m this machine")}));
    QVERIFY(machine.actions.shown.serving && machine.actions.shown.serverPresent);
}

void tst_GroupPresence::servesWhereTheAskedStaySilent()
{
    Machine machine(true);
    machine.group.opened(start);
    QCOMPARE(machine.group.nextTick(), start + interval);
    machine.group.tick(start + interval - seconds(1));
    QVERIFY(!machine.actions.shown.serving);
    machine.group.tick(start + interval);
    QVERIFY(machine.actions.shown.serving);
}

void tst_GroupPresence::announcesEachInterval()
{
    Machine machine(true);
    machine.serve();
    for (int i = 1; i <= 3; ++i) {
        QCOMPARE(machine.group.nextTick(), start + i * interval);
        machine.group.tick(start + i * interval);
        QCOMPARE(machine.actions.take(), QStringList{QStringLiteral("announce: serving m this machine")});
    }
}

void tst_GroupPresence::standsByWhereOneServes()
{
    Machine machine(true);
    machine.group.opened(start);
    machine.hear(Kind::Serving, "z");
    QVERIFY(!machine.actions.shown.serving && machine.actions.shown.serverPresent);
    QCOMPARE(machine.actions.shown.anotherServer, std::string("machine z"));
    machine.group.nobody(start); // late, for the question that has its answer
    QVERIFY(!machine.actions.shown.serving);
}

void tst_GroupPresence::answersThoseThatAsk()
{
    Machine machine(true);
    machine.serve();
    machine.hear(Kind::Asking, "a", "reply.to");
    machine.hear(Kind::Claiming, "a", "reply.to");
    const QString answer = QStringLiteral("answer reply.to: serving m this machine");
    QCOMPARE(machine.actions.take(), (QStringList{answer, answer}));
    machine.hear(Kind::Claiming, "z"); // an answer of one that claimed as well
    machine.hear(Kind::Asking, "z");
    QVERIFY(machine.actions.take().isEmpty());
    QVERIFY(machine.actions.shown.serving);
}

void tst_GroupPresence::lowerIdWinsAmongClaims()
{
    Machine loser(true);
    loser.group.opened(start);
    loser.hear(Kind::Claiming, "a", "reply.to");
    QVERIFY(!loser.actions.shown.serving);
    QCOMPARE(loser.actions.shown.anotherServer, std::string("machine a"));
    Machine winner(true);
    winner.group.opened(start);
    winner.actions.take();
    winner.hear(Kind::Claiming, "z", "reply.to");
    QVERIFY(winner.actions.shown.serving);
    QCOMPARE(winner.actions.take().first(), QStringLiteral("answer reply.to: claiming m this machine"));
}

void tst_GroupPresence::lowerIdWinsAmongServers()
{
    Machine stays(true);
    stays.serve();
    stays.hear(Kind::Serving, "z");
    QVERIFY(stays.actions.shown.serving);
    QCOMPARE(stays.actions.take(), QStringList{QStringLiteral("announce: serving m this machine")});
    Machine yields(true);
    yields.serve();
    yields.hear(Kind::Serving, "a");
    QVERIFY(!yields.actions.shown.serving);
    QCOMPARE(yields.actions.take(), QStringList{QStringLiteral("deaf")});
}

void tst_GroupPresence::takesOverFromASilentServer()
{
    Machine machine(true);
    machine.group.opened(start);
    machine.hear(Kind::Serving, "a");
    machine.hear(Kind::Serving, "a", "", start + interval);
    machine.actions.take();
    machine.group.tick(start + 4 * interval - seconds(1));
    QVERIFY(machine.actions.take().isEmpty());
    machine.group.tick(start + 4 * interval);
    QCOMPARE(machine.actions.take(), QStringList{QStringLiteral("ask: claiming m this machine")});
    QVERIFY(!machine.actions.shown.serverPresent);
    machine.group.nobody(start + 4 * interval);
    QVERIFY(machine.actions.shown.serving);
}

void tst_GroupPresence::takesOverAtOnceAfterAGoodbye()
{
    Machine machine(true);
    machine.group.opened(start);
    machine.hear(Kind::Serving, "a");
    machine.actions.take();
    machine.hear(Kind::Leaving, "a");
    QCOMPARE(machine.actions.take(), QStringList{QStringLiteral("ask: claiming m this machine")});
}

void tst_GroupPresence::goodbyeOfAStrangerChangesNothing()
{
    Machine machine(true);
    machine.group.opened(start);
    machine.hear(Kind::Serving, "a");
    machine.actions.take();
    machine.hear(Kind::Leaving, "b");
    QVERIFY(machine.actions.take().isEmpty());
    QVERIFY(machine.actions.shown.serverPresent);
}

void tst_GroupPresence::whoStoodByLetsTheServerComeBackFirst()
{
    Machine machine(true);
    machine.group.opened(start);
    machine.hear(Kind::Serving, "a");
    machine.group.closed();
    QVERIFY(!machine.actions.shown.serverPresent);
    machine.actions.take();
    machine.group.opened(start);
    QCOMPARE(machine.actions.take(), QStringList{QStringLiteral("ask: asking m this machine")});
    machine.group.nobody(start);
    QVERIFY(!machine.actions.shown.serving);
    machine.group.tick(start + 3 * interval);
    QCOMPARE(machine.actions.take(), QStringList{QStringLiteral("ask: claiming m this machine")});
}

void tst_GroupPresence::whoServedAsksAgain()
{
    Machine machine(true);
    machine.serve();
    machine.group.closed();
    QVERIFY(!machine.actions.shown.serving);
    machine.group.opened(start);
    QCOMPARE(machine.actions.take(), QStringList{QStringLiteral("ask: claiming m this machine")});
}

void tst_GroupPresence::watcherNeverServes()
{
    Machine machine(false);
    machine.group.opened(start);
    QCOMPARE(machine.actions.take(), QStringList{QStringLiteral("ask: asking m this machine")});
    machine.group.nobody(start);
    machine.hear(Kind::Claiming, "z", "reply.to");
    machine.group.tick(start + 100 * interval);
    QVERIFY(!machine.actions.shown.serving);
    machine.hear(Kind::Serving, "z");
    QVERIFY(!machine.actions.shown.serving && machine.actions.shown.serverPresent);
    QCOMPARE(machine.actions.shown.anotherServer, std::string());
    QVERIFY(machine.actions.take().isEmpty());
}

void tst_GroupPresence::watcherForgetsWhenTheConnectionIsLost()
{
    Machine machine(false);
    machine.group.opened(start);
    machine.hear(Kind::Serving, "a");
    machine.group.closed();
    QVERIFY(!machine.actions.shown.serverPresent);
    QCOMPARE(machine.group.nextTick(), GroupPresence::Time::max());
}

void tst_GroupPresence::watcherKnowsThatTheServerIsGone()
{
    Machine machine(false);
    machine.group.opened(start);
    QVERIFY(!machine.actions.shown.serverGone); // none was heard so far, which need not mean that there is none
    machine.hear(Kind::Serving, "a");
    QVERIFY(!machine.actions.shown.serverGone);
    QCOMPARE(machine.group.nextTick(), start + 3 * interval);
    machine.group.tick(start + 3 * interval);
    QVERIFY(machine.actions.shown.serverGone && !machine.actions.shown.serverPresent);
    machine.hear(Kind::Serving, "b");
    QVERIFY(!machine.actions.shown.serverGone);
    machine.hear(Kind::Leaving, "b");
    QVERIFY(machine.actions.shown.serverGone);
    machine.group.closed();
    machine.group.opened(start);
    QVERIFY(!machine.actions.shown.serverGone);
}

void tst_GroupPresence::leavingIsSaidByTheServerOnly()
{
    Machine server(true);
    server.serve();
    server.group.leave();
    QCOMPARE(server.actions.take(), QStringList{QStringLiteral("announce: leaving m this machine")});
    Machine watcher(false);
    watcher.group.opened(start);
    watcher.actions.take();
    watcher.group.leave();
    QVERIFY(watcher.actions.take().isEmpty());
}

QTEST_APPLESS_MAIN(tst_GroupPresence)
#include "tst_grouppresence.moc"
