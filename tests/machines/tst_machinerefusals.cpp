#include "certificates.h"
#include "faultstest.h"

/// Machines and brokers that do not trust each other, until somebody mends it.
class MachineRefusalsTest : public FaultsTest {
    Q_OBJECT

private Q_SLOTS:
    void wrongPasswordIsRefusedUntilTheBrokerKnowsIt();
    void untrustedBrokerIsRefusedUntilItIsVouchedFor();
};

void MachineRefusalsTest::wrongPasswordIsRefusedUntilTheBrokerKnowsIt()
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

void MachineRefusalsTest::untrustedBrokerIsRefusedUntilItIsVouchedFor()
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

QTEST_GUILESS_MAIN(MachineRefusalsTest)
#include "tst_machinerefusals.moc"
