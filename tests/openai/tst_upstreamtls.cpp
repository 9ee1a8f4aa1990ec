#include "runtime/certificates.h"
#include "upstream.h"

#include <httplib.h>

#include <QTest>

#include <thread>

using namespace tavro::assistantservice;
using tavro::testsupport::Certificates;

/// Servers that speak TLS.
class UpstreamTlsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void certificateThatNobodyVouchesForIsRefused();
    void certificateOfTheSystemsAuthoritiesIsTaken();

private:
    TextResult ask() const;

    Certificates certificates;
    std::unique_ptr<httplib::SSLServer> server;
    std::thread serving;
    std::atomic<int> served{0};
    int port = 0;
};

void UpstreamTlsTest::init()
{
    QVERIFY(certificates.make());
    qunsetenv("SSL_CERT_FILE");
    served = 0;
    server = std::make_unique<httplib::SSLServer>(certificates.certificate().toUtf8().constData(),
                                                  certificates.key().toUtf8().constData());
    server->Post("/v1/chat/completions", [this](const httplib::Request &, httplib::Response &response) {
        ++served;
        response.set_content(R"({"choices":[{"message":{"content":"Fine."}}]})", "application/json");
    });
    port = server->bind_to_any_port("127.0.0.1");
    QVERIFY(port > 0);
    serving = std::thread([this] { server->listen_after_bind(); });
}

void UpstreamTlsTest::cleanup()
{
    server->stop();
    if (serving.joinable()) {
        serving.join();
    }
    qunsetenv("SSL_CERT_FILE");
}

TextResult UpstreamTlsTest::ask() const
{
    ChatSettings settings;
    settings.address = *parseUpstreamAddress(QStringLiteral("https://127.0.0.1:%1").arg(port));
    settings.model = QStringLiteral("small");
    const std::atomic<bool> cancelled{false};
    return UpstreamChat(settings).answer(upstream::question(QStringLiteral("Hello")), cancelled);
}

void UpstreamTlsTest::certificateThatNobodyVouchesForIsRefused()
{
    const TextResult result = ask();
    QVERIFY2(result.error.message.startsWith(QStringLiteral("The certificate of the model's server https://127.0.0.1")),
             qPrintable(result.error.message));
    QCOMPARE(served.load(), 0);
}

void UpstreamTlsTest::certificateOfTheSystemsAuthoritiesIsTaken()
{
    qputenv("SSL_CERT_FILE", certificates.authority().toUtf8());
    const TextResult result = ask();
    QVERIFY2(!result.error, qPrintable(result.error.message));
    QCOMPARE(result.answer, QStringLiteral("Fine."));
}

QTEST_GUILESS_MAIN(UpstreamTlsTest)
#include "tst_upstreamtls.moc"
