#pragma once

#include "clientmachine.h"
#include "controllertest.h"

#include <memory>

/// The base of the proxies' tests: a serving machine, f, and a client machine, each with its real proxy. Nothing joins
/// them: a test takes the bytes that one sent and hands them to the other.
class ProxyTest : public ControllerTest {
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    using Call = FakeRuntime::Call;
    using Names = QVector<QByteArray>;

    /// A failure where @p runtime was given anything else to send than exactly one message, of that name and payload,
    /// or bytes without a payload.
    static void compareSent(const FakeRuntime &runtime, Call::Kind kind, const QByteArray &name,
                            const QByteArray &payload = {});

    std::unique_ptr<ClientMachine> client;
};

/// Ends the test function where the comparison failed.
#define COMPARE_SENT(...)                                                                                              \
    do {                                                                                                               \
        compareSent(__VA_ARGS__);                                                                                      \
        if (QTest::currentTestFailed())                                                                                \
            return;                                                                                                    \
    } while (false)
