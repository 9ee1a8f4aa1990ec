#include "certificates.h"
#include "machinechild.h"
#include "support/natsserver.h"
#include "support/servicescript.h"
#include "support/waiting.h"

#include <QJsonArray>
#include <QObject>
#include <QTest>

#include <map>
#include <memory>

using namespace tavro::testsupport;

/// What breaks between machines: the broker, a machine, the rights of one. Each test ends with an operator who asks
/// again and is answered.
class MachineFaultsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void brokerDiesWhileAQuestionIsInFlight();
    void serverDiesWhileAQuestionIsInFlight();
    void clientDiesWhileItsAnswerIsOnItsWay();
    void lateClientGetsTheNextAnswers();
    void secondServerStandsByAndTakesOver();
    void wrongPasswordIsRefusedUntilTheBrokerKnowsIt();
    void untrustedBrokerIsRefusedUntilItIsVouchedFor();

private:
    MachineChild &start(const QString &role, const QString &name, const QStringList &more = {});
    bool isReady();
    void askAndHold(MachineChild &asker, const QString &question);
    void allowLostConnections();
    bool hears(MachineChild &machine, const QString &question);
    bool isAnswered(MachineChild &asker, const QString &question);
    bool loses(MachineChild &machine, const QString &message);
    QStringList questionsAnswered(MachineChild &machine);

    std::unique_ptr<NatsServer> broker;
    std::unique_ptr<ServiceScript> service;
    std::map<QString, std::unique_ptr<MachineChild>> machines;
};

namespace {

const QString connection = QStringLiteral("connection");
const QString serving = QStringLiteral("serving");
const QString serverPresent = QStringLiteral("serverPresent");
const QString answered = QStringLiteral("generateTextFinished");

} // namespace

void MachineFaultsTest::init()
{
    broker = std::make_unique<NatsServer>();
    service = std::make_unique<ServiceScript>();
}

void MachineFaultsTest::cleanup()
{
    QStringList left;
    for (auto &[name, machine] : machines) {
        const int status = machine->isRunning() ? machine->quit() : 0;
        if (status != 0)
            left.append(QStringLiteral("%1 ended with status %2").arg(name).arg(status));
        left += machine->complaints();
    }
    machines.clear();
    left += service->leftovers();
    service.reset();
    broker.reset();
    QCOMPARE(left.join(QLatin1Char('\n')), QString());
}

MachineChild &MachineFaultsTest::start(const QString &role, const QString &name, const QStringList &more)
{
    auto &machine = machines[name];
    machine = std::make_unique<MachineChild>();
    machine->setEnvironment(QStringLiteral("MACHINEPROCESS_PASSWORD"), name + QStringLiteral("'s"));
    machine->start(QStringList{QStringLiteral("--role"), role, QStringLiteral("--name"), name,
                               QStringLiteral("--broker"), broker->url(), QStringLiteral("--group"),
                               QStringLiteral("studio"), QStringLiteral("--service"), service->url(),
                               QStringLiteral("--presence-ms"), QStringLiteral("1000"), QStringLiteral("--retry-ms"),
                               QStringLiteral("100")}
                   + more);
    return *machine;
}

/// Whether "server" serves and "client" knows.
bool MachineFaultsTest::isReady()
{
    return machines.at(QStringLiteral("server"))->runtimeBecomes(serving, true)
        && machines.at(QStringLiteral("client"))->runtimeBecomes(serverPresent, true);
}

/// Asks, with the service holding back that it accepts.
void MachineFaultsTest::askAndHold(MachineChild &asker, const QString &question)
{
    service->expect("POST", ServiceScript::text, ServiceScript::accepted(QStringLiteral("held")).held());
    asker.tell(QStringLiteral("textToGenerateText"), question);
    QVERIFY(eventually([&] { return service->heldCount() == 1; }));
}

void MachineFaultsTest::allowLostConnections()
{
    for (auto &[name, machine] : machines) {
        machine->allowLog(QStringLiteral("was lost"));
        machine->allowLog(QStringLiteral("cannot be reached"));
    }
}

QStringList MachineFaultsTest::questionsAnswered(MachineChild &machine)
{
    QStringList questions;
    for (const QJsonArray &arguments : machine.emissions(answered))
        questions.append(arguments.at(0).toObject().value(QLatin1String("question")).toString());
    return questions;
}

bool MachineFaultsTest::hears(MachineChild &machine, const QString &question)
{
    return eventually([&] { return questionsAnswered(machine).contains(question); });
}

bool MachineFaultsTest::isAnswered(MachineChild &asker, const QString &question)
{
    service->expectAnswer(QStringLiteral("an answer"));
    asker.tell(QStringLiteral("textToGenerateText"), question);
    return hears(asker, question);
}

bool MachineFaultsTest::loses(MachineChild &machine, const QString &message)
{
    machine.expectLog(QStringLiteral("lost ") + message);
    return eventually([&] { return machine.lostMessages().contains(message); });
}

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

void MachineFaultsTest::wrongPasswordIsRefusedUntilTheBrokerKnowsIt()
{
    const QString users = QStringLiteral("authorization { users: [ { user: server, password: \"server's\" },"
                                         " { user: client, password: \"%1\" } ] }\n");
    NatsServer::Options options;
    options.more = users.arg(QStringLiteral("another"));
    broker->setOptions(options);
    QVERIFY2(broker->start(), qPrintable(broker->errorText()));
    for (const QString &role : {QStringLiteral("server"), QStringLiteral("client")})
        start(role, role, {QStringLiteral("--user"), role});
    MachineChild &client = *machines.at(QStringLiteral("client"));
    allowLostConnections();
    QVERIFY(machines.at(QStringLiteral("server"))->runtimeBecomes(serving, true));
    client.expectLog(QStringLiteral("refuses this machine: wrong or missing credentials"));
    QVERIFY(client.runtimeBecomes(connection, QStringLiteral("Refused")));
    client.tell(QStringLiteral("textToGenerateText"), QStringLiteral("first"));
    QVERIFY(loses(client, QStringLiteral("GenerateText")));

    broker->kill();
    options.more = users.arg(QStringLiteral("client's"));
    broker->setOptions(options);
    QVERIFY2(broker->start(), qPrintable(broker->errorText()));
    QVERIFY(client.runtimeBecomes(connection, QStringLiteral("Connected")));
    QVERIFY(isReady());
    QVERIFY(isAnswered(client, QStringLiteral("second")));
}

void MachineFaultsTest::untrustedBrokerIsRefusedUntilItIsVouchedFor()
{
    Certificates ours;
    Certificates others;
    QVERIFY(ours.make() && others.make());
    NatsServer::Options options;
    options.certificateFile = others.certificate();
    options.keyFile = others.key();
    broker->setOptions(options);
    QVERIFY2(broker->start(), qPrintable(broker->errorText()));
    for (const QString &role : {QStringLiteral("server"), QStringLiteral("client")})
        start(role, role, {QStringLiteral("--ca-file"), ours.authority()});
    allowLostConnections();
    for (auto &[name, machine] : machines) {
        machine->expectLog(QStringLiteral("is not trusted"));
        QVERIFY(machine->runtimeBecomes(connection, QStringLiteral("Refused")));
        QVERIFY(!machine->state().isEmpty());
    }

    broker->kill();
    options.certificateFile = ours.certificate();
    options.keyFile = ours.key();
    broker->setOptions(options);
    QVERIFY2(broker->start(), qPrintable(broker->errorText()));
    QVERIFY(isReady());
    QVERIFY(isAnswered(*machines.at(QStringLiteral("client")), QStringLiteral("first")));
}

QTEST_GUILESS_MAIN(MachineFaultsTest)
#include "tst_machinefaults.moc"
