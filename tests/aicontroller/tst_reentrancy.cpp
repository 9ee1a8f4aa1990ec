#include "controllertest.h"
#include "outcometriggers.h"

#include <memory>

/// What a receiver may do inside a signal.
class ReentrancyTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void nextQuestionIsAnswered_data() { addEndings(); }
    void nextQuestionIsAnswered();
    void timerRunsForTheNextQuestion_data() { addEndings(); }
    void timerRunsForTheNextQuestion();
    void nextPictureIsAnswered_data() { addEndings(); }
    void nextPictureIsAnswered();
    void commandsStillComeAfterAQuestionInBetween();
    void nextQuestionAcceptedInsideTheSlotIsPolled_data();
    void nextQuestionAcceptedInsideTheSlotIsPolled();
    void stopInsideTheSlotIsForgottenByTheNextQuestion();
    void clearCatheInsideTheSlot_data() { addEndings(); }
    void clearCatheInsideTheSlot();
    void clearInsideTheSlotEndsEverything_data() { addEndings(); }
    void clearInsideTheSlotEndsEverything();
    void controllerMayBeDestroyedInsideTheSlot_data() { addEndings(); }
    void controllerMayBeDestroyedInsideTheSlot();
    void controllerMayBeDestroyedByItsTimersTick();

private:
    bool askNext(bool picture);

    std::unique_ptr<ExpectedLog> unreachable; ///< its line is not the point here
};

void ReentrancyTest::init()
{
    ControllerTest::init();
    unreachable = std::make_unique<ExpectedLog>(f->log, QStringLiteral("slotQueryImageDataFinished_ errorcode"), 0);
}

void ReentrancyTest::cleanup()
{
    unreachable.reset();
    ControllerTest::cleanup();
}

// Follows the question that was asked inside a slot to its answer.
bool ReentrancyTest::askNext(bool picture)
{
    if (!eventually([&] { return f->d.strReqId == QStringLiteral("next"); }))
        return false;
    f->controller.setTimeout(1000);
    f->server.always("GET", "/next", ScriptedAnswer::bytes("no picture"));
    const QString url = f->server.url() + QStringLiteral("/next");
    return f->poll(picture ? ControllerFixture::readyPicture(url)
                           : ControllerFixture::readyText(QStringLiteral("there")));
}

void ReentrancyTest::nextQuestionIsAnswered()
{
    QFETCH(int, ending);
    bool wasAsked = false;
    onEnding(f->controller, Ending(ending), [&] {
        f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted(QStringLiteral("next")));
        f->controller.generateText(QStringLiteral("next question"));
        wasAsked = true;
    });
    QVERIFY(bringAbout(Ending(ending), *f, f->controller));
    QVERIFY(eventually([&] { return wasAsked; }));
    const int answered = f->signalled.generateTextFinished.count();
    QVERIFY(askNext(false));
    QVERIFY(f->server.requestsTo(ControllerFixture::resultPath()).last().body.contains("\"next\""));
    QCOMPARE(f->signalled.generateTextFinished.count(), answered + 1);
    QCOMPARE(f->signalled.generateTextFinished.argument<0>(answered).question, std::string("next question"));
    QCOMPARE(f->signalled.generateTextFinished.argument<0>(answered).answer, std::string("there"));
    QVERIFY(!f->isTimerActive());
}

void ReentrancyTest::timerRunsForTheNextQuestion()
{
    QFETCH(int, ending);
    f->server.always("POST", ControllerFixture::resultPath(), ControllerFixture::working());
    onEnding(f->controller, Ending(ending), [&] {
        f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted(QStringLiteral("next")));
        f->controller.generateText(QStringLiteral("next question"));
    });
    QVERIFY(bringAbout(Ending(ending), *f, f->controller));
    QVERIFY(eventually([&] { return f->d.strReqId == QStringLiteral("next"); }));
    QVERIFY(f->repliesDone());
    QVERIFY(f->isTimerActive());
}

void ReentrancyTest::nextPictureIsAnswered()
{
    QFETCH(int, ending);
    bool wasAsked = false;
    onEnding(f->controller, Ending(ending), [&] {
        f->server.expect("POST", ControllerFixture::picturePath(), ControllerFixture::accepted(QStringLiteral("next")));
        f->controller.generatePicture(ControllerFixture::pictureInfo());
        wasAsked = true;
    });
    QVERIFY(bringAbout(Ending(ending), *f, f->controller));
    QVERIFY(eventually([&] { return wasAsked; }));
    const int shown = f->signalled.generatePictureFinished.count();
    QVERIFY(askNext(true));
    QVERIFY(f->signalled.generatePictureFinished.waitFor(shown + 1));
    QVERIFY(f->server.requestsTo(ControllerFixture::resultPath()).last().json().value(QLatin1String("type")).toBool());
}

void ReentrancyTest::commandsStillComeAfterAQuestionInBetween()
{
    onEnding(f->controller, Ending::TextFinished, [&] {
        f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted(QStringLiteral("next")));
        f->controller.generateText(QStringLiteral("next question"));
    });
    QVERIFY(bringAbout(Ending::AgentCommands, *f, f->controller));
    QVERIFY(f->signalled.agentCmds.waitFor(1));
    QVERIFY(askNext(false));
    QCOMPARE(f->signalled.agentCmds.count(), 1);
    QCOMPARE(f->signalled.generateTextFinished.count(), 2);
}

void ReentrancyTest::nextQuestionAcceptedInsideTheSlotIsPolled_data()
{
    QTest::addColumn<int>("ending");
    QTest::newRow("text finished") << int(Ending::TextFinished);
    QTest::newRow("agent commands") << int(Ending::AgentCommands);
}

// A receiver may run an event loop of its own, such as a message box does.
void ReentrancyTest::nextQuestionAcceptedInsideTheSlotIsPolled()
{
    QFETCH(int, ending);
    bool wasAccepted = false;
    onEnding(f->controller, Ending(ending), [&] {
        f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted(QStringLiteral("next")));
        f->controller.generateText(QStringLiteral("next question"));
        wasAccepted = eventually([&] { return f->d.strReqId == QStringLiteral("next"); });
    });
    QVERIFY(bringAbout(Ending(ending), *f, f->controller));
    QVERIFY(eventually([&] { return wasAccepted; }));
    QVERIFY(f->repliesDone());
    QVERIFY(f->isTimerActive());
    QVERIFY(!f->d.bQuerying);
    QCOMPARE(f->d.strReqId, QStringLiteral("next"));
    QVERIFY(askNext(false));
    QCOMPARE(f->signalled.generateTextFinished.count(), 2);
}

void ReentrancyTest::stopInsideTheSlotIsForgottenByTheNextQuestion()
{
    onEnding(f->controller, Ending::TextFinished, [&] { f->controller.stopGenerate(); });
    QVERIFY(bringAbout(Ending::TextFinished, *f, f->controller));
    QVERIFY(f->repliesDone());
    QVERIFY(!f->isTimerActive());
    QVERIFY(f->d.bStopGenerate);
    QVERIFY(f->askText());
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QCOMPARE(f->signalled.generateTextFinished.count(), 2);
}

void ReentrancyTest::clearCatheInsideTheSlot()
{
    QFETCH(int, ending);
    bool wasCleared = false;
    onEnding(f->controller, Ending(ending), [&] {
        f->controller.clearCathe();
        wasCleared = true;
    });
    QVERIFY(bringAbout(Ending(ending), *f, f->controller));
    QVERIFY(eventually([&] { return wasCleared; }));
    QVERIFY(f->repliesDone());
    QVERIFY(f->d.historyArray.isEmpty());
    QVERIFY(f->d.strReqId.isEmpty());
    QVERIFY(!f->d.bQuerying);
}

void ReentrancyTest::clearInsideTheSlotEndsEverything()
{
    QFETCH(int, ending);
    QString atClear;
    onEnding(f->controller, Ending(ending), [&] {
        f->controller.clear();
        atClear = f->signalled.summary();
    });
    QVERIFY(bringAbout(Ending(ending), *f, f->controller));
    QVERIFY(eventually([&] { return !atClear.isEmpty(); }));
    settle();
    QVERIFY(!f->isTimerActive());
    QCOMPARE(f->signalled.summary(), atClear);
}

void ReentrancyTest::controllerMayBeDestroyedInsideTheSlot()
{
    QFETCH(int, ending);
    auto controller = std::make_unique<AiController>();
    controller->createTimer();
    AiControllerAccess::of(*controller).pQueryTimer->blockSignals(true);
    controller->setDomain(f->server.url());
    const ControllerSignals signalled(*controller);
    onEnding(*controller, Ending(ending), [&] { controller.reset(); });
    QVERIFY(bringAbout(Ending(ending), *f, *controller));
    QVERIFY(eventually([&] { return !controller; }));
    const QString atEnd = signalled.summary();
    settle();
    QCOMPARE(signalled.summary(), atEnd);
}

void ReentrancyTest::controllerMayBeDestroyedByItsTimersTick()
{
    auto controller = std::make_unique<AiController>();
    controller->createTimer();
    controller->setSingleTickTime(0);
    controller->setTimeout(0);
    onEnding(*controller, Ending::TimedOut, [&] { controller.reset(); });
    controller->startTimer();
    QVERIFY(eventually([&] { return !controller; }));
}

QTEST_GUILESS_MAIN(ReentrancyTest)
#include "tst_reentrancy.moc"
