#include "faultstest.h"

#include <QElapsedTimer>
#include <QJsonArray>

/// What ends or stands still between machines: the broker, a server, a client.
class MachineFaultsTest : public FaultsTest {
    Q_OBJECT

private Q_SLOTS:
    void brokerDiesWhileAQuestionIsInFlight();
    void serverDiesWhileAQuestionIsInFlight();
    void serverThatStoodStillForgetsWhatItWasAsked();
    void clientDiesWhileItsAnswerIsOnItsWay();
    void lateClientGetsTheNextAnswers();
    void secondServerStandsByAndTakesOver();
};

void MachineFaultsTest::brokerDiesWhileAQuestionIsInFlight()
{
    QVERIFY2(broker->start(), qPrintable(broker->errorText()));
    MachineChild &server = start(QStringLiteral("server"), QStringLiteral("server"));
    MachineChild &client = start(QStringLiteral("client"), QStringLiteral("client"));
    allowLostConnections();
    QVERIFY(isReady());
    askAndHold(client, QStringLiteral("first"));
    broker->kill();
    for (MachineChild *machine : {&server, &client})
        QVERIFY(machine->runtimeBecomes(connection, QStringLiteral("Disconnected")));
    client.tell(QStringLiteral("textToGenerateText"), QStringLiteral("meanwhile"));
    QVERIFY(loses(client, QStringLiteral("GenerateText")));
    service->expect("POST", ServiceScript::result, ServiceScript::ready(QStringLiteral("nobody hears this")));
    service->releaseAll();
    QVERIFY(loses(server, QStringLiteral("GenerateTextFinished")));

    QVERIFY2(broker->start(), qPrintable(broker->errorText()));
    QVERIFY(isReady());
    QVERIFY(isAnswered(client, QStringLiteral("second")));
    QCOMPARE(questionsAnswered(client), QStringList{QStringLiteral("second")});
}

void MachineFaultsTest::serverDiesWhileAQuestionIsInFlight()
{
    QVERIFY2(broker->start(), qPrintable(broker->errorText()));
    MachineChild &client = start(QStringLiteral("client"), QStringLiteral("client"));
    start(QStringLiteral("server"), QStringLiteral("server")).allowLog(QString());
    QVERIFY(isReady());
    askAndHold(client, QStringLiteral("first"));
    machines.at(QStringLiteral("server"))->killNow();
    QVERIFY(client.runtimeBecomes(serverPresent, false));
    QVERIFY(eventually([&] { return service->heldCount() == 0; }));
    client.tell(QStringLiteral("textToGenerateText"), QStringLiteral("meanwhile"));
    QVERIFY(loses(client, QStringLiteral("GenerateText")));

    start(QStringLiteral("server"), QStringLiteral("server"));
    QVERIFY(isReady());
    QVERIFY(isAnswered(client, QStringLiteral("second")));
    QCOMPARE(questionsAnswered(client), QStringList{QStringLiteral("second")});
    QCOMPARE(service->body(ServiceScript::text, 1).value(QLatin1String("messages")).toArray().size(), 1);
}

// The broker keeps for the server what it is asked meanwhile. The operator was told that nobody answers, and must not
// get the answer to a question long given up.
void MachineFaultsTest::serverThatStoodStillForgetsWhatItWasAsked()
{
    QVERIFY2(broker->start(), qPrintable(broker->errorText()));
    MachineChild &client = start(QStringLiteral("client"), QStringLiteral("client"));
    MachineChild &server = start(QStringLiteral("server"), QStringLiteral("server"),
                                 {QStringLiteral("--standstill-ms"), QString::number(0)});
    server.expectLog(QStringLiteral("this machine stood still"));
    QVERIFY(isReady());
    server.suspend();
    QElapsedTimer standstill;
    standstill.start();
    client.tell(QStringLiteral("textToGenerateText"), QStringLiteral("given up"));
    QVERIFY(client.runtimeBecomes(serverPresent, false));
    client.tell(QStringLiteral("textToGenerateText"), QStringLiteral("refused"));
    QVERIFY(loses(client, QStringLiteral("GenerateText")));
    QCOMPARE(client.lostMessages().size(), 1);

    // More than two presence intervals, however late the client heard that the server was still there.
    QVERIFY(eventually([&standstill] { return standstill.hasExpired(2500); }));
    server.resume();
    QVERIFY(client.runtimeBecomes(serverPresent, true));
    QVERIFY(isAnswered(client, QStringLiteral("second")));
    QCOMPARE(questionsAnswered(client), QStringList{QStringLiteral("second")});
    QCOMPARE(service->requestCountTo(ServiceScript::text), 1);
}

void MachineFaultsTest::clientDiesWhileItsAnswerIsOnItsWay()
{
    QVERIFY2(broker->start(), qPrintable(broker->errorText()));
    MachineChild &server = start(QStringLiteral("server"), QStringLiteral("server"));
    MachineChild &other = start(QStringLiteral("client"), QStringLiteral("client"));
    MachineChild &dying = start(QStringLiteral("client"), QStringLiteral("dying"));
    QVERIFY(isReady());
    QVERIFY(dying.runtimeBecomes(serverPresent, true));
    askAndHold(dying, QStringLiteral("first"));
    dying.killNow();
    service->expect("POST", ServiceScript::result, ServiceScript::ready(QStringLiteral("an answer")));
    service->releaseAll();
    QVERIFY(hears(other, QStringLiteral("first")));
    QVERIFY(isAnswered(other, QStringLiteral("second")));
    QCOMPARE(server.lostMessages(), QStringList());
}

void MachineFaultsTest::lateClientGetsTheNextAnswers()
{
    QVERIFY2(broker->start(), qPrintable(broker->errorText()));
    start(QStringLiteral("server"), QStringLiteral("server"));
    MachineChild &first = start(QStringLiteral("client"), QStringLiteral("client"));
    QVERIFY(isReady());
    QVERIFY(isAnswered(first, QStringLiteral("one")));
    MachineChild &late = start(QStringLiteral("client"), QStringLiteral("late"));
    QVERIFY(late.runtimeBecomes(serverPresent, true));
    QVERIFY(isAnswered(first, QStringLiteral("two")));
    QVERIFY(hears(late, QStringLiteral("two")));
    QVERIFY(isAnswered(late, QStringLiteral("three")));
    QVERIFY(hears(first, QStringLiteral("three")));
    QCOMPARE(questionsAnswered(late), (QStringList{QStringLiteral("two"), QStringLiteral("three")}));
    QCOMPARE(questionsAnswered(first).size(), 3);
}

void MachineFaultsTest::secondServerStandsByAndTakesOver()
{
    QVERIFY2(broker->start(), qPrintable(broker->errorText()));
    MachineChild &server = start(QStringLiteral("server"), QStringLiteral("server"));
    MachineChild &client = start(QStringLiteral("client"), QStringLiteral("client"));
    QVERIFY(isReady());
    MachineChild &second = start(QStringLiteral("server"), QStringLiteral("second"));
    second.expectLog(QStringLiteral("standing by: server serves the group already"));
    QVERIFY(second.runtimeBecomes(QStringLiteral("anotherServer"), QStringLiteral("server")));
    QCOMPARE(second.state().value(QLatin1String("serving")).toBool(true), false);
    QVERIFY(isAnswered(client, QStringLiteral("first")));
    QCOMPARE(service->requestCountTo(ServiceScript::text), 1);
    QCOMPARE(second.state().value(QLatin1String("prompt")).toString(), QString());

    server.killNow();
    QVERIFY(second.runtimeBecomes(serving, true));
    QVERIFY(second.runtimeBecomes(QStringLiteral("anotherServer"), QString()));
    QVERIFY(isAnswered(client, QStringLiteral("second")));
    QCOMPARE(second.state().value(QLatin1String("prompt")).toString(), QStringLiteral("second"));
    QCOMPARE(questionsAnswered(client), (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
}

QTEST_GUILESS_MAIN(MachineFaultsTest)
#include "tst_machinefaults.moc"
