#include "lifecyclescene.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QTest>

#include <functional>
#include <thread>
#include <utility>

/// The controller is destroyed or cleared in every state.
class LifecycleTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingFiresAfterDestruction_data();
    void nothingFiresAfterDestruction();
    void nothingFiresAfterClear_data();
    void nothingFiresAfterClear();
    void destroyedRightAfterClear_data();
    void destroyedRightAfterClear();
    void clearedTwice_data();
    void clearedTwice();
    void clearedFromAnotherThread();
    void pictureBeingDecodedIsDropped_data();
    void pictureBeingDecodedIsDropped();
    void managersGoWithTheController();
};

namespace {

void addStages()
{
    QTest::addColumn<QByteArray>("stage");
    for (const Stage &stage : stages())
        QTest::newRow(stage.name) << QByteArray(stage.name);
}

/// Does something before all else that has been posted to the thread.
class Before : public QObject {
public:
    explicit Before(std::function<void()> deed)
        : m_deed(std::move(deed))
    { }

    void post() { QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::HighEventPriority); }

protected:
    void customEvent(QEvent * /*event*/) override { m_deed(); }

private:
    std::function<void()> m_deed;
};

QString complaints(const LifecycleScene &scene)
{
    return scene.log.complaints().join(QLatin1Char('\n'));
}

} // namespace

void LifecycleTest::nothingFiresAfterDestruction_data()
{
    addStages();
}

void LifecycleTest::nothingFiresAfterDestruction()
{
    QFETCH(QByteArray, stage);
    LifecycleScene scene;
    QVERIFY(named(stages(), stage).reach(scene));
    QCOMPARE(scene.heard.summary(), QString());
    scene.controller.reset();
    QVERIFY(scene.isOver());
    QCOMPARE(scene.heard.summary(), QString());
    QCOMPARE(scene.cache.names(), QStringList());
    QCOMPARE(complaints(scene), QString());
}

void LifecycleTest::nothingFiresAfterClear_data()
{
    addStages();
}

void LifecycleTest::nothingFiresAfterClear()
{
    QFETCH(QByteArray, stage);
    LifecycleScene scene;
    QVERIFY(named(stages(), stage).reach(scene));
    scene.controller->clear();
    QVERIFY(!scene.d().pQueryTimer->isActive());
    QVERIFY(scene.isOver());
    QCOMPARE(scene.heard.summary(), QString());
    QCOMPARE(scene.cache.names(), QStringList());
    QCOMPARE(complaints(scene), QString());
}

void LifecycleTest::destroyedRightAfterClear_data()
{
    addStages();
}

void LifecycleTest::destroyedRightAfterClear()
{
    QFETCH(QByteArray, stage);
    LifecycleScene scene;
    QVERIFY(named(stages(), stage).reach(scene));
    scene.controller->clear();
    scene.controller.reset();
    QVERIFY(scene.isOver());
    QCOMPARE(scene.heard.summary(), QString());
    QCOMPARE(complaints(scene), QString());
}

void LifecycleTest::clearedTwice_data()
{
    addStages();
}

void LifecycleTest::clearedTwice()
{
    QFETCH(QByteArray, stage);
    LifecycleScene scene;
    QVERIFY(named(stages(), stage).reach(scene));
    scene.controller->clear();
    scene.controller->clear();
    QVERIFY(scene.isOver());
    scene.controller->clear();
    QCOMPARE(scene.heard.summary(), QString());
    QCOMPARE(complaints(scene), QString());
}

void LifecycleTest::clearedFromAnotherThread()
{
    LifecycleScene scene;
    QVERIFY(named(stages(), "everything at once").reach(scene));
    std::thread([&] { scene.controller->clear(); }).join();
    QVERIFY(eventually([&] { return !scene.d().requestManager && !scene.d().downloadManager; }));
    QVERIFY(scene.isOver());
    QCOMPARE(scene.heard.summary(), QString());
    QCOMPARE(complaints(scene), QString());
}

void LifecycleTest::pictureBeingDecodedIsDropped_data()
{
    QTest::addColumn<bool>("destroy");
    QTest::newRow("destroyed") << true;
    QTest::newRow("cleared") << false;
}

// At the end of the reply's last emission the decoding has begun, and its result has not been delivered yet.
void LifecycleTest::pictureBeingDecodedIsDropped()
{
    QFETCH(bool, destroy);
    LifecycleScene scene;
    QVERIFY(named(stages(), "picture fetch").reach(scene));
    bool isDone = false;
    Before end([&] {
        if (destroy)
            scene.controller.reset();
        else
            scene.controller->clear();
        isDone = true;
    });
    connect(scene.openReply(), &QNetworkReply::finished, &end, &Before::post);
    scene.server.releaseNext();
    QVERIFY(eventually([&] { return isDone; }));
    QVERIFY(scene.isOver());
    QCOMPARE(scene.heard.summary(), QString());
    QCOMPARE(complaints(scene), QString());
}

void LifecycleTest::managersGoWithTheController()
{
    LifecycleScene scene;
    const QPointer<QNetworkAccessManager> direct(scene.d().requestManager.get());
    scene.controller.reset();
    QVERIFY(!direct);

    scene.controller = std::make_unique<AiController>();
    const QPointer<QNetworkAccessManager> request(scene.d().requestManager.get());
    const QPointer<QNetworkAccessManager> forPictures(scene.d().downloadManager.get());
    scene.controller->clear();
    QVERIFY(request && forPictures);
    settle();
    QVERIFY(!request && !forPictures);
    QCOMPARE(complaints(scene), QString());
}

QTEST_MAIN(LifecycleTest)

#include "tst_lifecycle.moc"
