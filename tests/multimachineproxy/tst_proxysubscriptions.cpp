#include "proxytest.h"

namespace {

using Names = QVector<QByteArray>;
using Kind = FakeRuntime::Call::Kind;

Names callNames()
{
    return {"GenerateText",   "GenerateImage",      "DownloadPicture", "StopGenerate",
            "ActiveDeepseek", "ActiveOnlineSearch", "ClearCathe",      "ClearHistoryRecord",
            "UpdateHeader",   "ClearHeader",        "AiWidgetShow"};
}

Names completionNames()
{
    return {"GenerateTextFinished",
            "GenerateImageFinished",
            "DownloadPictureFinished",
            "StopGenerateFinished",
            "DeleteGeneratingItem",
            "ActiveDeepseekFinished",
            "ActiveOnlineSearchFinished",
            "ClearCatheFinished",
            "ClearHistoryRecordFinished",
            "ClearHeaderFinished",
            "RequestFailed",
            "ErrorOccured",
            "RequestTimeout"};
}

/// The completions that a client does not listen to.
Names unheardNames()
{
    return {"ClearHistoryRecordFinished", "ClearHeaderFinished"};
}

/// "+Name" and "-Name", in order.
Names subscriptionSteps(const FakeRuntime &runtime)
{
    Names steps;
    const auto calls = runtime.calls();
    for (const auto &call : calls)
        steps.append((call.kind == Kind::Register ? '+' : '-') + call.name);
    return steps;
}

Names prefixed(char prefix, const Names &names)
{
    Names list;
    for (const QByteArray &name : names)
        list.append(prefix + name);
    return list;
}

Names clientSteps()
{
    const Names all = completionNames();
    return prefixed('+', all.mid(0, 8)) + prefixed('-', all.mid(8, 2)) + prefixed('+', all.mid(10));
}

Names serverSteps()
{
    return prefixed('+', callNames());
}

} // namespace

/// Which names a proxy subscribes and unsubscribes, and when.
class ProxySubscriptionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachRoleSubscribesItsNamesInOrder_data();
    void eachRoleSubscribesItsNamesInOrder();
    void destructionUnsubscribesInTableOrder_data();
    void destructionUnsubscribesInTableOrder();
    void clientListensToAllButTwo();
    void secondRuntimeLeavesTheFirstOnesProxies();
    void sameRuntimeTwiceHasOneHandlerForEachName();
    void noRuntimeLeavesTheFirstOnesProxies();
    void proxiesHaveNoParent();
};

void ProxySubscriptionsTest::eachRoleSubscribesItsNamesInOrder_data()
{
    QTest::addColumn<bool>("server");
    QTest::addColumn<bool>("client");
    QTest::addColumn<Names>("steps");
    QTest::newRow("neither") << false << false << Names();
    QTest::newRow("client") << false << true << clientSteps();
    QTest::newRow("server") << true << false << serverSteps();
    QTest::newRow("both") << true << true << clientSteps() + serverSteps();
}

void ProxySubscriptionsTest::eachRoleSubscribesItsNamesInOrder()
{
    QFETCH(bool, server);
    QFETCH(bool, client);
    const ClientMachine machine({server, client, true});
    QTEST(subscriptionSteps(machine.runtime), "steps");
}

void ProxySubscriptionsTest::destructionUnsubscribesInTableOrder_data()
{
    QTest::addColumn<bool>("server");
    QTest::addColumn<bool>("client");
    QTest::addColumn<Names>("dropped");
    QTest::newRow("neither") << false << false << Names();
    QTest::newRow("client") << false << true << completionNames();
    QTest::newRow("server") << true << false << callNames();
    QTest::newRow("both") << true << true << completionNames() + callNames();
}

void ProxySubscriptionsTest::destructionUnsubscribesInTableOrder()
{
    QFETCH(bool, server);
    QFETCH(bool, client);
    FakeRuntime runtime({server, client, true});
    auto controller = std::make_unique<AiController>();
    controller->setZVRuntime(&runtime);
    const int before = runtime.calls().size();
    controller.reset();
    Names dropped;
    const auto calls = runtime.calls().mid(before);
    for (const auto &call : calls) {
        QCOMPARE(call.kind, Kind::Unregister);
        dropped.append(call.name);
    }
    QTEST(dropped, "dropped");
    for (const QByteArray &name : callNames() + completionNames())
        QVERIFY(!runtime.isRegistered(name));
}

void ProxySubscriptionsTest::clientListensToAllButTwo()
{
    const ClientMachine machine;
    for (const QByteArray &name : completionNames())
        QCOMPARE(machine.runtime.isRegistered(name), !unheardNames().contains(name));
}

void ProxySubscriptionsTest::secondRuntimeLeavesTheFirstOnesProxies()
{
    FakeRuntime second({true, true, false});
    ClientMachine machine;
    const int before = machine.runtime.calls().size();
    machine.controller.setZVRuntime(&second);
    QCOMPARE(machine.runtime.calls().size(), before);
    QVERIFY(machine.runtime.deliver("DeleteGeneratingItem"));
    QVERIFY(second.deliver("DeleteGeneratingItem"));
    QCOMPARE(machine.signalled.summary(), QStringLiteral("deleteGeneratingItem:2"));

    machine.controller.toStopGenerate();
    QCOMPARE(machine.runtime.names(Kind::ToServer), Names());
    QCOMPARE(second.names(Kind::ToServer), Names{"StopGenerate"});
}

void ProxySubscriptionsTest::sameRuntimeTwiceHasOneHandlerForEachName()
{
    FakeRuntime runtime({true, true, false});
    auto controller = std::make_unique<AiController>();
    controller->setZVRuntime(&runtime);
    controller->setZVRuntime(&runtime);
    QCOMPARE(subscriptionSteps(runtime), clientSteps() + serverSteps() + clientSteps() + serverSteps());
    {
        const ControllerSignals signalled(*controller);
        QVERIFY(runtime.deliver("DeleteGeneratingItem"));
        QCOMPARE(signalled.summary(), QStringLiteral("deleteGeneratingItem:1"));
    }
    controller->toStopGenerate();
    QCOMPARE(runtime.names(Kind::ToServer), Names{"StopGenerate"});
    controller.reset();
    for (const QByteArray &name : callNames() + completionNames())
        QVERIFY(!runtime.isRegistered(name));
}

void ProxySubscriptionsTest::noRuntimeLeavesTheFirstOnesProxies()
{
    ClientMachine machine;
    machine.controller.setZVRuntime(nullptr);
    QVERIFY(machine.runtime.deliver("DeleteGeneratingItem"));
    QCOMPARE(machine.signalled.summary(), QStringLiteral("deleteGeneratingItem:1"));
    machine.controller.toClearHistoryRecord();
    QCOMPARE(machine.runtime.names(Kind::ToServer), Names());
}

void ProxySubscriptionsTest::proxiesHaveNoParent()
{
    ClientMachine machine({true, true, false});
    const auto *const client = dynamic_cast<QObject *>(machine.d.proxyClient.load());
    const auto *const server = dynamic_cast<QObject *>(machine.d.proxyServer.load());
    for (const QObject *proxy : {client, server}) {
        QVERIFY(proxy);
        QVERIFY(!proxy->parent());
        QCOMPARE(proxy->metaObject()->methodCount(), QObject::staticMetaObject.methodCount());
    }
    QCOMPARE(client->metaObject()->className(), "tavro::aiassistant::MultimachineProxyClient");
    QCOMPARE(server->metaObject()->className(), "tavro::aiassistant::MultimachineProxyServer");
}

QTEST_GUILESS_MAIN(ProxySubscriptionsTest)
#include "tst_proxysubscriptions.moc"
