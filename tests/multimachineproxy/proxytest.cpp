#include "proxytest.h"

void ProxyTest::init()
{
    ControllerTest::init();
    f->runtime.setRoles({true, false, false});
    f->controller.setZVRuntime(&f->runtime);
    client = std::make_unique<ClientMachine>();
}

void ProxyTest::cleanup()
{
    client.reset();
    ControllerTest::cleanup();
}

void ProxyTest::compareSent(const FakeRuntime &runtime, Call::Kind kind, const QByteArray &name,
                            const QByteArray &payload)
{
    const QVector<Call> sent = runtime.calls(kind);
    QCOMPARE(runtime.names(kind), Names{name});
    QCOMPARE(sent.at(0).payload.toHex(), payload.toHex());
    QCOMPARE(sent.at(0).size, static_cast<unsigned int>(payload.size()));
    QCOMPARE(sent.at(0).dataWasNull, payload.isEmpty());
}
