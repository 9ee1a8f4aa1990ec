#include "clientmachine.h"
#include "support/logcatcher.h"

#include <QTest>

#include <memory>
#include <stdexcept>

namespace {

/// A host runtime that is asked to send when it cannot, and throws.
class ThrowingRuntime : public FakeRuntime {
public:
    using FakeRuntime::FakeRuntime;

    void sendToServer(const char *, const char *, unsigned int) override { refuse(); }
    void sendToClients(const char *, const char *, unsigned int) override { refuse(); }

private:
    static void refuse() { throw std::runtime_error("no network"); }
};

using Act = void (*)(AiController &controller, ProxyServerPort &server);

} // namespace

Q_DECLARE_METATYPE(Act)

/// What a message that cannot be sent does to who sent it: nothing but a line in the host's log.
class ProxyFailuresTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatTheRuntimeThrowsIsLogged_data();
    void whatTheRuntimeThrowsIsLogged();
};

void ProxyFailuresTest::whatTheRuntimeThrowsIsLogged_data()
{
    QTest::addColumn<Act>("act");
    QTest::addColumn<QString>("name");
    QTest::newRow("call with an argument")
        << Act([](AiController &controller, ProxyServerPort &) { controller.textToGenerateText(QStringLiteral("q")); })
        << QStringLiteral("GenerateText");
    QTest::newRow("call without an argument")
        << Act([](AiController &controller, ProxyServerPort &) { controller.toStopGenerate(); })
        << QStringLiteral("StopGenerate");
    QTest::newRow("completion with an argument") << Act([](AiController &, ProxyServerPort &server) {
        server.generateTextFinished({"q", "a"});
    }) << QStringLiteral("GenerateTextFinished");
    QTest::newRow("completion without an argument")
        << Act([](AiController &, ProxyServerPort &server) { server.deleteGeneratingItem(); })
        << QStringLiteral("DeleteGeneratingItem");
}

void ProxyFailuresTest::whatTheRuntimeThrowsIsLogged()
{
    QFETCH(Act, act);
    QFETCH(QString, name);
    LogCatcher log;
    {
        ThrowingRuntime runtime({true, true, false});
        AiController controller;
        controller.setZVRuntime(&runtime);
        const ExpectedLog refused(log, QStringLiteral("the message %1 is not sent: no network").arg(name));
        act(controller, *AiControllerAccess::of(controller).proxyServer);
    }
    QCOMPARE(log.complaints(), QStringList());
}

QTEST_GUILESS_MAIN(ProxyFailuresTest)
#include "tst_proxyfailures.moc"
