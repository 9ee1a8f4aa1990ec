#include "controllertest.h"

#include <QJsonArray>

#include <thread>

/// Building the "mediaList" on the host's thread.
class MediaListTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void hostIsAskedOnceForEachQuestion();
    void onTheHostsThreadNothingIsDispatched();
    void listIsBuiltByTheDispatcher_data();
    void listIsBuiltByTheDispatcher();
    void secondQuestionIsDispatchedAgain();
    void droppedTaskFailsTheRequest_data();
    void droppedTaskFailsTheRequest();
    void questionAfterADroppedTaskIsAsked();
    void pictureRequestsAskNothing();
    void listIsRebuiltAfterAChange();
    void invokableGivesTheListByName();

private:
    QJsonArray lastList() const;
};

void MediaListTest::init()
{
    ControllerTest::init();
    f->useRoles({});
    f->controller.setMediaLibAllResources({{"m1", "One"}, {"m2", "Two"}});
}

QJsonArray MediaListTest::lastList() const
{
    return f->server.requests().last().json().value(QLatin1String("mediaList")).toArray();
}

void MediaListTest::hostIsAskedOnceForEachQuestion()
{
    QVERIFY(f->askText());
    QCOMPARE(f->runtime.needsDispatchCount(), 1);
    QVERIFY(!f->runtime.needsDispatchFile().isEmpty());
    QVERIFY(f->runtime.needsDispatchLine() > 0);
    QVERIFY(f->askText());
    QCOMPARE(f->runtime.needsDispatchCount(), 2);
}

void MediaListTest::onTheHostsThreadNothingIsDispatched()
{
    QVERIFY(f->askText());
    QCOMPARE(f->runtime.fakeDispatcher().postCount(), 0);
    QCOMPARE(lastList().size(), 2);
}

void MediaListTest::listIsBuiltByTheDispatcher_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("on its own thread") << int(FakeDispatcher::Mode::OwnThread);
    QTest::newRow("inline") << int(FakeDispatcher::Mode::Inline);
}

void MediaListTest::listIsBuiltByTheDispatcher()
{
    QFETCH(int, mode);
    f->runtime.setNeedsDispatch(true);
    f->runtime.fakeDispatcher().setMode(static_cast<FakeDispatcher::Mode>(mode));
    QVERIFY(f->askText());
    QCOMPARE(f->runtime.fakeDispatcher().postCount(), 1);
    QCOMPARE(f->runtime.fakeDispatcher().runCount(), 1);
    QCOMPARE(lastList().size(), 2);
    QCOMPARE(lastList().at(1).toObject().value(QLatin1String("id")).toString(), QStringLiteral("m2"));
}

void MediaListTest::secondQuestionIsDispatchedAgain()
{
    f->runtime.setNeedsDispatch(true);
    QVERIFY(f->askText());
    QVERIFY(f->askText());
    QCOMPARE(f->runtime.fakeDispatcher().runCount(), 2);
    QCOMPARE(lastList().size(), 2);
}

void MediaListTest::droppedTaskFailsTheRequest_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("at once") << int(FakeDispatcher::Mode::Drop);
    QTest::newRow("later") << int(FakeDispatcher::Mode::DropLater);
}

void MediaListTest::droppedTaskFailsTheRequest()
{
    QFETCH(int, mode);
    f->runtime.setNeedsDispatch(true);
    f->runtime.fakeDispatcher().setMode(static_cast<FakeDispatcher::Mode>(mode));
    const ExpectedLog reported(f->log, QStringLiteral("media library"));
    f->controller.generateText(QStringLiteral("asked"));
    QVERIFY(f->repliesDone());
    QCOMPARE(f->signalled.summary(), QStringLiteral("requestFailed:1"));
    QCOMPARE(f->signalled.requestFailed.argument<0>(0).question, std::string("asked"));
    QCOMPARE(f->server.requestCount(), 0);
    QVERIFY(!f->isTimerActive());
}

void MediaListTest::questionAfterADroppedTaskIsAsked()
{
    f->runtime.setNeedsDispatch(true);
    f->runtime.fakeDispatcher().setMode(FakeDispatcher::Mode::Drop);
    {
        const ExpectedLog reported(f->log, QStringLiteral("media library"));
        f->controller.generateText(QStringLiteral("one"));
    }
    f->runtime.fakeDispatcher().setMode(FakeDispatcher::Mode::OwnThread);
    QVERIFY(f->askText(QStringLiteral("two")));
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QCOMPARE(f->signalled.summary(), QStringLiteral("generateTextFinished:1 requestFailed:1"));
}

void MediaListTest::pictureRequestsAskNothing()
{
    f->runtime.setNeedsDispatch(true);
    QVERIFY(f->askPicture());
    QCOMPARE(f->runtime.needsDispatchCount(), 0);
    QCOMPARE(f->runtime.fakeDispatcher().postCount(), 0);
}

void MediaListTest::listIsRebuiltAfterAChange()
{
    QVERIFY(f->askText());
    f->controller.setMediaLibAllResources({{"m3", "Three"}});
    QVERIFY(f->askText());
    QCOMPARE(lastList().size(), 1);
    QCOMPARE(lastList().at(0).toObject().value(QLatin1String("name")).toString(), QStringLiteral("Three"));
    std::thread([this] { f->controller.setMediaLibAllResources({}); }).join();
    QVERIFY(eventually([&] { return f->d.mediaResources.empty(); }));
    QVERIFY(f->askText());
    QVERIFY(lastList().isEmpty());
}

void MediaListTest::invokableGivesTheListByName()
{
    QJsonArray list;
    QVERIFY(QMetaObject::invokeMethod(&f->d, "mediaListArray", Q_RETURN_ARG(QJsonArray, list)));
    QCOMPARE(list.size(), 2);
}

QTEST_GUILESS_MAIN(MediaListTest)
#include "tst_medialist.moc"
