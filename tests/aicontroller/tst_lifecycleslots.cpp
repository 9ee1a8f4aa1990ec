#include "lifecyclescene.h"

#include <QTest>

#include <utility>

/// Slots of the controller's signals that destroy it, clear it or go on asking.
class LifecycleSlotsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void slotMayDestroyTheController_data();
    void slotMayDestroyTheController();
    void slotMayClearTheController_data();
    void slotMayClearTheController();
    void slotMayAskTheNextQuestion_data();
    void slotMayAskTheNextQuestion();
    void slotMayMakeTheTimerAnew();

private:
    /// Sets @p moment off with @p action in its slot, once; gives what had been heard when the action was done.
    static bool play(LifecycleScene &scene, const Moment &moment, const std::function<void()> &action, QString &heard);
};

namespace {

void addMoments()
{
    QTest::addColumn<QByteArray>("moment");
    for (const Moment &moment : moments())
        QTest::newRow(moment.name) << QByteArray(moment.name);
}

QString complaints(const LifecycleScene &scene)
{
    return scene.log.complaints().join(QLatin1Char('\n'));
}

} // namespace

bool LifecycleSlotsTest::play(LifecycleScene &scene, const Moment &moment, const std::function<void()> &action,
                              QString &heard)
{
    // The slot stays connected when this function has returned.
    const auto isDone = std::make_shared<bool>(false);
    const ExpectedLog error(scene.log, QString::fromLatin1(moment.expectedLog ? moment.expectedLog : "(none)"), 0);
    moment.connect(*scene.controller, [&scene, &heard, isDone, action] {
        if (std::exchange(*isDone, true))
            return;
        action();
        heard = scene.heard.summary();
    });
    return moment.setOff(scene) && eventually([&] { return *isDone; });
}

void LifecycleSlotsTest::slotMayDestroyTheController_data()
{
    addMoments();
}

void LifecycleSlotsTest::slotMayDestroyTheController()
{
    QFETCH(QByteArray, moment);
    LifecycleScene scene;
    QString heard;
    QVERIFY(play(
        scene, named(moments(), moment), [&] { scene.controller.reset(); }, heard));
    QVERIFY(scene.isOver());
    QVERIFY(!heard.isEmpty());
    QCOMPARE(scene.heard.summary(), heard);
    QCOMPARE(complaints(scene), QString());
}

void LifecycleSlotsTest::slotMayClearTheController_data()
{
    addMoments();
}

void LifecycleSlotsTest::slotMayClearTheController()
{
    QFETCH(QByteArray, moment);
    LifecycleScene scene;
    QString heard;
    QVERIFY(play(
        scene, named(moments(), moment), [&] { scene.controller->clear(); }, heard));
    QVERIFY(scene.isOver());
    QVERIFY(!heard.isEmpty());
    QCOMPARE(scene.heard.summary(), heard);
    QVERIFY(!scene.d().pQueryTimer->isActive());
    QCOMPARE(complaints(scene), QString());
}

void LifecycleSlotsTest::slotMayAskTheNextQuestion_data()
{
    addMoments();
}

void LifecycleSlotsTest::slotMayAskTheNextQuestion()
{
    QFETCH(QByteArray, moment);
    LifecycleScene scene;
    QString heard;
    const auto ask = [&] {
        scene.d().pQueryTimer->blockSignals(true);
        scene.controller->setTimeout(60);
        scene.server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted(QStringLiteral("r2")));
        scene.controller->generateText(QStringLiteral("the next one"));
    };
    QVERIFY(play(scene, named(moments(), moment), ask, heard));
    QVERIFY(scene.repliesDone());
    QVERIFY(scene.d().pQueryTimer->isActive());
    QCOMPARE(scene.d().strReqId, QStringLiteral("r2"));

    const int before = scene.heard.generateTextFinished.count();
    scene.server.expect("POST", ControllerFixture::resultPath(),
                        ControllerFixture::readyText(QStringLiteral("the answer")));
    scene.tick();
    QVERIFY(scene.heard.generateTextFinished.waitFor(before + 1));
    QVERIFY(scene.repliesDone());
    QCOMPARE(scene.heard.generateTextFinished.argument<0>(before).question, std::string("the next one"));
    QCOMPARE(scene.heard.generateTextFinished.argument<0>(before).answer, std::string("the answer"));
    QVERIFY(!scene.d().pQueryTimer->isActive());
    QCOMPARE(scene.server.leftovers(), QStringList());
    QCOMPARE(complaints(scene), QString());
}

void LifecycleSlotsTest::slotMayMakeTheTimerAnew()
{
    LifecycleScene scene;
    QString heard;
    QVERIFY(play(
        scene, named(moments(), "time-out"), [&] { scene.controller->createTimer(); }, heard));
    settle();
    QCOMPARE(scene.d().findChildren<QTimer *>().size(), 1);
    QCOMPARE(scene.d().pQueryTimer->interval(), 5000);
    QVERIFY(!scene.d().pQueryTimer->isActive());
    QCOMPARE(scene.heard.summary(), QStringLiteral("requestTimeout:1"));
    QCOMPARE(complaints(scene), QString());
}

QTEST_MAIN(LifecycleSlotsTest)

#include "tst_lifecycleslots.moc"
