#include "consolehost/consoleprocess.h"
#include "support/servicescript.h"
#include "support/waiting.h"

#include <QTest>

#include <csignal>

using namespace tavro::testsupport;

class ConsoleHostInteractiveTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void answersLineAfterLine();
    void lastLineNeedsNoEnd();
    void endsWithoutInput();
    void linesWaitForTheirTurn();
    void stopIsTakenAtOnce();
    void nextQuestionWaitsAfterAStop();
    void endsAfterAStop();
    void nothingToStop();
    void statusIsThatOfTheLastLine_data();
    void statusIsThatOfTheLastLine();
    void quitComesInTurn();
    void endsOnSignalsWhileNothingIsTyped();

private:
    void start(const QStringList &options = {}) { host->start(service->arguments(options)); }
    void finishAnswered();

    std::unique_ptr<ServiceScript> service;
    std::unique_ptr<ConsoleProcess> host;
};

void ConsoleHostInteractiveTest::init()
{
    service = std::make_unique<ServiceScript>();
    host = std::make_unique<ConsoleProcess>();
}

void ConsoleHostInteractiveTest::cleanup()
{
    host.reset();
    if (!QTest::currentTestFailed())
        QCOMPARE(service->leftovers(), QStringList());
    service.reset();
}

void ConsoleHostInteractiveTest::finishAnswered()
{
    host->endInput();
    QCOMPARE(host->status(), 0);
    QCOMPARE(host->err(), QString());
}

void ConsoleHostInteractiveTest::answersLineAfterLine()
{
    service->expectAnswer(QStringLiteral("first"));
    service->expectAnswer(QStringLiteral("second"));
    start();
    host->type(QStringLiteral("  one? "));
    host->type(QString());
    host->type(QStringLiteral("twó?\r"));
    finishAnswered();
    QCOMPARE(host->out(), QStringLiteral("first\nsecond\n"));
    const QJsonArray messages = service->body(ServiceScript::text, 1).value(QStringLiteral("messages")).toArray();
    QCOMPARE(messages.size(), 3);
    QCOMPARE(messages.first().toObject().value(QStringLiteral("content")).toString(), QStringLiteral("one?"));
    QCOMPARE(messages.last().toObject().value(QStringLiteral("content")).toString(), QStringLiteral("twó?"));
}

void ConsoleHostInteractiveTest::lastLineNeedsNoEnd()
{
    service->expectAnswer(QStringLiteral("first"));
    start();
    host->typeWithoutEnd(QStringLiteral("one?"));
    finishAnswered();
    QCOMPARE(host->out(), QStringLiteral("first\n"));
}

void ConsoleHostInteractiveTest::endsWithoutInput()
{
    host->startWithoutInput(service->arguments());
    QCOMPARE(host->status(), 0);
    QCOMPARE(host->out(), QString());
}

void ConsoleHostInteractiveTest::linesWaitForTheirTurn()
{
    service->expect("POST", ServiceScript::text, ServiceScript::accepted(QStringLiteral("a")).held());
    service->expect("POST", ServiceScript::text, ServiceScript::accepted(QStringLiteral("b")));
    service->expect("POST", ServiceScript::result, ServiceScript::ready(QStringLiteral("first")));
    service->expect("POST", ServiceScript::result, ServiceScript::ready(QStringLiteral("second")));
    start();
    host->type(QStringLiteral("one"));
    host->type(QStringLiteral("/deep maybe"));
    host->type(QStringLiteral("two"));
    host->endInput();
    QVERIFY(eventually([this] { return service->heldCount() == 1; }));
    QCOMPARE(host->err(), QString());
    service->releaseAll();
    QCOMPARE(host->status(), 0);
    QCOMPARE(host->out(), QStringLiteral("first\nsecond\n"));
    QCOMPARE(host->err(), QStringLiteral("consolehost: /deep takes on or off\n"));
    QCOMPARE(service->body(ServiceScript::result, 0).value(QStringLiteral("reqId")).toString(), QStringLiteral("a"));
    QCOMPARE(service->body(ServiceScript::result, 1).value(QStringLiteral("reqId")).toString(), QStringLiteral("b"));
}

// The reply to the question that was stopped comes in after the stop and is not taken for the next one's.
void ConsoleHostInteractiveTest::stopIsTakenAtOnce()
{
    service->expect("POST", ServiceScript::text, ServiceScript::accepted(QStringLiteral("stopped")).held());
    service->expect("POST", ServiceScript::text, ServiceScript::accepted(QStringLiteral("next")));
    service->expect("POST", ServiceScript::result, ServiceScript::ready(QStringLiteral("second")));
    start();
    host->type(QStringLiteral("one"));
    QVERIFY(eventually([this] { return service->heldCount() == 1; }));
    host->type(QStringLiteral("/stop"));
    host->type(QStringLiteral("/stop"));
    QVERIFY(host->says(QStringLiteral("there is nothing to stop")));
    service->releaseAll();
    host->type(QStringLiteral("two"));
    host->endInput();
    QCOMPARE(host->status(), 0);
    QCOMPARE(host->out(), QStringLiteral("second\n"));
    QCOMPARE(service->body(ServiceScript::result).value(QStringLiteral("reqId")).toString(), QStringLiteral("next"));
}

// With a tick of ten minutes the next question does not come up in this test.
void ConsoleHostInteractiveTest::nextQuestionWaitsAfterAStop()
{
    service->expect("POST", ServiceScript::text, ServiceScript::accepted(QStringLiteral("never")).held());
    start({QStringLiteral("--tick=600"), QStringLiteral("--timeout=6000")});
    host->type(QStringLiteral("one"));
    QVERIFY(eventually([this] { return service->heldCount() == 1; }));
    host->type(QStringLiteral("/stop"));
    host->type(QStringLiteral("two"));
    host->type(QStringLiteral("/stop"));
    QVERIFY(host->says(QStringLiteral("there is nothing to stop")));
    host->sendSignal(SIGTERM);
    QCOMPARE(host->status(), 143);
    service->releaseAll();
    QCOMPARE(service->requestCount(), 1);
}

void ConsoleHostInteractiveTest::endsAfterAStop()
{
    service->expect("POST", ServiceScript::text, ServiceScript::accepted(QStringLiteral("never")).held());
    start({QStringLiteral("--tick=600"), QStringLiteral("--timeout=6000")});
    host->type(QStringLiteral("one"));
    QVERIFY(eventually([this] { return service->heldCount() == 1; }));
    host->type(QStringLiteral("/stop"));
    host->endInput();
    QCOMPARE(host->status(), 0);
    QCOMPARE(host->out(), QString());
    QCOMPARE(host->err(), QStringLiteral("consolehost: stopped\n"));
    service->releaseAll();
}

void ConsoleHostInteractiveTest::nothingToStop()
{
    start();
    host->type(QStringLiteral("/stop"));
    host->endInput();
    QCOMPARE(host->status(), 0);
    QCOMPARE(host->err(), QStringLiteral("consolehost: there is nothing to stop\n"));
}

void ConsoleHostInteractiveTest::statusIsThatOfTheLastLine_data()
{
    QTest::addColumn<bool>("answeredLast");
    QTest::addColumn<int>("status");
    QTest::newRow("answered, then failed") << false << 2;
    QTest::newRow("failed, then answered") << true << 0;
}

void ConsoleHostInteractiveTest::statusIsThatOfTheLastLine()
{
    QFETCH(bool, answeredLast);
    if (!answeredLast)
        service->expectAnswer(QStringLiteral("yes"));
    service->expect("POST", ServiceScript::text, ServiceScript::refused(QStringLiteral("no")));
    if (answeredLast)
        service->expectAnswer(QStringLiteral("yes"));
    start();
    host->type(QStringLiteral("one"));
    host->type(QStringLiteral("two"));
    host->endInput();
    QTEST(host->status(), "status");
    QCOMPARE(host->out(), QStringLiteral("yes\n"));
    QCOMPARE(host->err(), QStringLiteral("consolehost: the service reports: no\n"));
}

void ConsoleHostInteractiveTest::quitComesInTurn()
{
    service->expectAnswer(QStringLiteral("first"));
    start();
    host->type(QStringLiteral("one"));
    host->type(QStringLiteral("/quit"));
    host->type(QStringLiteral("two"));
    QCOMPARE(host->status(), 0);
    QCOMPARE(host->out(), QStringLiteral("first\n"));
}

void ConsoleHostInteractiveTest::endsOnSignalsWhileNothingIsTyped()
{
    start();
    host->type(QStringLiteral("/stop"));
    QVERIFY(host->says(QStringLiteral("there is nothing to stop")));
    host->sendSignal(SIGINT);
    QCOMPARE(host->status(), 130);
}

QTEST_GUILESS_MAIN(ConsoleHostInteractiveTest)
#include "tst_consolehostinteractive.moc"
