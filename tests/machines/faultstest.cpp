#include "faultstest.h"

#include <QJsonArray>

const QString FaultsTest::connection = QStringLiteral("connection");
const QString FaultsTest::serving = QStringLiteral("serving");
const QString FaultsTest::serverPresent = QStringLiteral("serverPresent");

void FaultsTest::init()
{
    broker = std::make_unique<NatsServer>();
    service = std::make_unique<ServiceScript>();
}

void FaultsTest::cleanup()
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

MachineChild &FaultsTest::start(const QString &role, const QString &name, const QStringList &more)
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

bool FaultsTest::isReady()
{
    return machines.at(QStringLiteral("server"))->runtimeBecomes(serving, true)
        && machines.at(QStringLiteral("client"))->runtimeBecomes(serverPresent, true);
}

void FaultsTest::askAndHold(MachineChild &asker, const QString &question)
{
    service->expect("POST", ServiceScript::text, ServiceScript::accepted(QStringLiteral("held")).held());
    asker.tell(QStringLiteral("textToGenerateText"), question);
    QVERIFY(eventually([&] { return service->heldCount() == 1; }));
}

void FaultsTest::allowLostConnections()
{
    for (auto &[name, machine] : machines) {
        machine->allowLog(QStringLiteral("was lost"));
        machine->allowLog(QStringLiteral("cannot be reached"));
    }
}

QStringList FaultsTest::questionsAnswered(MachineChild &machine)
{
    QStringList questions;
    for (const QJsonArray &arguments : machine.emissions(QStringLiteral("generateTextFinished")))
        questions.append(arguments.at(0).toObject().value(QLatin1String("question")).toString());
    return questions;
}

bool FaultsTest::hears(MachineChild &machine, const QString &question)
{
    return eventually([&] { return questionsAnswered(machine).contains(question); });
}

bool FaultsTest::isAnswered(MachineChild &asker, const QString &question)
{
    service->expectAnswer(QStringLiteral("an answer"));
    asker.tell(QStringLiteral("textToGenerateText"), question);
    return hears(asker, question);
}

bool FaultsTest::loses(MachineChild &machine, const QString &message)
{
    machine.expectLog(QStringLiteral("lost ") + message);
    return eventually([&] { return machine.lostMessages().contains(message); });
}
