#include "protocol/httpclienttest.h"
#include "runtime/certificates.h"

#include <httplib.h>

#include <QTest>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

/// A server with a certificate that nobody vouches for.
class HttpClientTlsTest : public HttpClientTest {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }
    void certificateThatNobodyVouchesForIsNotOk();
};

void HttpClientTlsTest::certificateThatNobodyVouchesForIsNotOk()
{
    Certificates certificates;
    QVERIFY(certificates.make());
    httplib::SSLServer secure(certificates.certificate().toUtf8().constData(), certificates.key().toUtf8().constData());
    std::atomic<int> served{0};
    secure.Get("/a", [&](const httplib::Request &, httplib::Response &response) {
        ++served;
        response.set_content("secret", "text/plain");
    });
    const int port = secure.bind_to_any_port("127.0.0.1");
    QVERIFY(port > 0);
    std::thread thread([&] { secure.listen_after_bind(); });
    const std::string address = "https://127.0.0.1:" + std::to_string(port) + "/a";
    const ExpectedLog why(*log, QRegularExpression(QStringLiteral("reply error, url: https://.*certificate")));
    const ExpectedLog handshake(*log, QStringLiteral("SSL handshake failed"));
    const ExpectedLog status(*log, QStringLiteral("status code: 0"));
    const Result result = worker->run([&] { return client->get(address, {}, true); });
    secure.stop();
    thread.join();
    QVERIFY(!result.ok);
    QCOMPARE(served.load(), 0);
}

QTEST_GUILESS_MAIN(HttpClientTlsTest)
#include "tst_httpclienttls.moc"
