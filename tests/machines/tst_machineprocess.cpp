#include "machinechild.h"

#include <QObject>
#include <QTest>

#include <memory>

/// The tests' own machine: it ends when it is told to, when nobody tells it anything any more, and when what it is told
/// makes no sense; and it says so when it cannot do what it is for.
class MachineProcessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void endsWhenToldTo();
    void endsWithItsInput();
    void endsAtAnUnknownOperation();
    void endsAtAnUnknownOption();
    void reportsWhatItLogs();

private:
    std::unique_ptr<MachineChild> machine;
};

void MachineProcessTest::init()
{
    machine = std::make_unique<MachineChild>();
    machine->start({QStringLiteral("--role"), QStringLiteral("client"), QStringLiteral("--broker"),
                    QStringLiteral("nats://127.0.0.1:1"), QStringLiteral("--group"), QStringLiteral("studio")});
    QVERIFY(!machine->state().isEmpty());
}

void MachineProcessTest::endsWhenToldTo()
{
    QCOMPARE(machine->quit(), 0);
}

void MachineProcessTest::endsWithItsInput()
{
    machine->endInput();
    QCOMPARE(machine->status(), 0);
}

void MachineProcessTest::endsAtAnUnknownOperation()
{
    machine->tell(QStringLiteral("sing"));
    QCOMPARE(machine->status(), 2);
}

void MachineProcessTest::endsAtAnUnknownOption()
{
    QCOMPARE(machine->quit(), 0);
    machine->start({QStringLiteral("--unknown")});
    QCOMPARE(machine->status(), 2);
}

void MachineProcessTest::reportsWhatItLogs()
{
    QVERIFY(machine->runtimeBecomes(QStringLiteral("connection"), QStringLiteral("Disconnected")));
    QCOMPARE(machine->complaints().filter(QStringLiteral("nats://127.0.0.1:1 cannot be reached")).size(), 1);
    machine->expectLog(QStringLiteral("cannot be reached"));
    machine->expectLog(QStringLiteral("another line"));
    QCOMPARE(machine->complaints(), QStringList{QStringLiteral("not logged: another line")});
    QCOMPARE(machine->quit(), 0);
}

QTEST_GUILESS_MAIN(MachineProcessTest)
#include "tst_machineprocess.moc"
