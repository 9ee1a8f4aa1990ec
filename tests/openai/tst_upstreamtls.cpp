#include "floodserver.h"
#include "runtime/certificates.h"
#include "upstream.h"

#include <httplib.h>
#include <openssl/pem.h>

#include <QTest>

#include <functional>
#include <thread>

using namespace tavro::assistantservice;
using tavro::testsupport::Certificates;

namespace {

using SetUp = std::function<bool(SSL_CTX &)>;

SetUp certificateOf(const Certificates &certificates)
{
    return [&certificates](SSL_CTX &context) {
        return SSL_CTX_use_certificate_file(&context, certificates.certificate().toUtf8().constData(), SSL_FILETYPE_PEM)
            == 1
            && SSL_CTX_use_PrivateKey_file(&context, certificates.key().toUtf8().constData(), SSL_FILETYPE_PEM) == 1;
    };
}

template <typename Object, typename Read, typename Free>
auto readPem(const QString &file, Read read, Free release)
{
    const std::unique_ptr<BIO, decltype(&BIO_free)> bio(BIO_new_file(file.toUtf8().constData(), "r"), &BIO_free);
    return std::unique_ptr<Object, Free>(read(bio.get(), nullptr, nullptr, nullptr), release);
}

SetUp expired(const Certificates &certificates)
{
    return [&certificates](SSL_CTX &context) {
        constexpr long day = 86400;
        const auto certificate = readPem<X509>(certificates.certificate(), &PEM_read_bio_X509, &X509_free);
        const auto key = readPem<EVP_PKEY>(certificates.authorityKey(), &PEM_read_bio_PrivateKey, &EVP_PKEY_free);
        X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -2 * day);
        X509_gmtime_adj(X509_getm_notAfter(certificate.get()), -day);
        return X509_sign(certificate.get(), key.get(), EVP_sha256()) > 0
            && SSL_CTX_use_certificate(&context, certificate.get()) == 1
            && SSL_CTX_use_PrivateKey_file(&context, certificates.key().toUtf8().constData(), SSL_FILETYPE_PEM) == 1;
    };
}

SetUp withOldTls(const Certificates &certificates)
{
    return [setUp = certificateOf(certificates)](SSL_CTX &context) {
        SSL_CTX_set_security_level(&context, 0);
        return setUp(context) && SSL_CTX_set_min_proto_version(&context, TLS1_VERSION) == 1
            && SSL_CTX_set_max_proto_version(&context, TLS1_1_VERSION) == 1;
    };
}

/// Answers each question by TLS.
class TlsServer {
public:
    explicit TlsServer(const SetUp &setUp)
        : m_server(setUp)
    {
        m_server.Post("/v1/chat/completions", [this](const httplib::Request &, httplib::Response &response) {
            ++m_served;
            response.set_content(R"({"choices":[{"message":{"content":"Fine."}}]})", "application/json");
        });
        m_port = m_server.bind_to_any_port("127.0.0.1");
        m_thread = std::thread([this] { m_server.listen_after_bind(); });
    }

    ~TlsServer()
    {
        m_server.stop();
        m_thread.join();
    }

    int port() const { return m_port; }
    int served() const { return m_served; }

private:
    httplib::SSLServer m_server;
    std::atomic<int> m_served{0};
    int m_port = 0;
    std::thread m_thread;
};

TextResult ask(const QString &server)
{
    ChatSettings settings;
    settings.address = *parseUpstreamAddress(server);
    settings.model = QStringLiteral("small");
    settings.retryUnit = std::chrono::milliseconds(1);
    const std::atomic<bool> cancelled{false};
    return UpstreamChat(settings).answer(upstream::question(QStringLiteral("Hello")), cancelled);
}

} // namespace

/// Servers that speak TLS.
class UpstreamTlsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void certificateOfTheSystemsAuthoritiesIsTaken();
    void certificateThatNobodyVouchesForIsRefused();
    void certificateForSomethingElseIsRefused_data();
    void certificateForSomethingElseIsRefused();
    void expiredCertificateIsRefused();
    void oldTlsIsRefused();
    void serverWithoutTlsIsTold();
    void serverWithTlsIsTold();
};

void UpstreamTlsTest::cleanup()
{
    qunsetenv("SSL_CERT_FILE");
}

void UpstreamTlsTest::certificateOfTheSystemsAuthoritiesIsTaken()
{
    Certificates certificates;
    QVERIFY(certificates.make());
    qputenv("SSL_CERT_FILE", certificates.authority().toUtf8());
    const TlsServer server(certificateOf(certificates));
    const TextResult result = ask(QStringLiteral("https://127.0.0.1:%1").arg(server.port()));
    QVERIFY2(!result.error, qPrintable(result.error.message));
    QCOMPARE(result.answer, QStringLiteral("Fine."));
}

void UpstreamTlsTest::certificateThatNobodyVouchesForIsRefused()
{
    Certificates certificates;
    QVERIFY(certificates.make());
    const TlsServer server(certificateOf(certificates));
    const TextResult result = ask(QStringLiteral("https://127.0.0.1:%1").arg(server.port()));
    QVERIFY2(result.error.message.startsWith(QStringLiteral("The certificate of the model's server https://127.0.0.1"))
                 && result.error.message.contains(QStringLiteral("vouches for it")),
             qPrintable(result.error.message));
    QCOMPARE(server.served(), 0);
}

void UpstreamTlsTest::certificateForSomethingElseIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("host");
    QTest::newRow("another name") << "DNS:model.example"
                                  << "localhost";
    QTest::newRow("a name, asked by its address") << "DNS:localhost"
                                                  << "127.0.0.1";
    QTest::newRow("another address") << "IP:127.0.0.2"
                                     << "127.0.0.1";
}

void UpstreamTlsTest::certificateForSomethingElseIsRefused()
{
    QFETCH(QString, name);
    QFETCH(QString, host);
    Certificates certificates;
    QVERIFY(certificates.make(name));
    qputenv("SSL_CERT_FILE", certificates.authority().toUtf8());
    const TlsServer server(certificateOf(certificates));
    const TextResult result = ask(QStringLiteral("https://%1:%2").arg(host).arg(server.port()));
    QVERIFY2(result.error.message.contains(QStringLiteral("not valid for this name or address")),
             qPrintable(result.error.message));
    QCOMPARE(server.served(), 0);
}

void UpstreamTlsTest::expiredCertificateIsRefused()
{
    Certificates certificates;
    QVERIFY(certificates.make());
    qputenv("SSL_CERT_FILE", certificates.authority().toUtf8());
    const TlsServer server(expired(certificates));
    const TextResult result = ask(QStringLiteral("https://127.0.0.1:%1").arg(server.port()));
    QVERIFY2(result.error.message.contains(QStringLiteral("not valid today")), qPrintable(result.error.message));
    QCOMPARE(server.served(), 0);
}

void UpstreamTlsTest::oldTlsIsRefused()
{
    Certificates certificates;
    QVERIFY(certificates.make());
    qputenv("SSL_CERT_FILE", certificates.authority().toUtf8());
    const TlsServer server(withOldTls(certificates));
    const TextResult result = ask(QStringLiteral("https://127.0.0.1:%1").arg(server.port()));
    QVERIFY2(result.error.message.contains(QStringLiteral("too old")), qPrintable(result.error.message));
}

void UpstreamTlsTest::serverWithoutTlsIsTold()
{
    upstream::FloodServer server("HTTP/1.1 400 Bad Request\r\nContent-Length: 0\r\n\r\n", {});
    const TextResult result = ask(QStringLiteral("https://127.0.0.1:%1").arg(server.port()));
    QVERIFY2(result.error.message.contains(QStringLiteral("answers without TLS. Please use http://")),
             qPrintable(result.error.message));
}

void UpstreamTlsTest::serverWithTlsIsTold()
{
    Certificates certificates;
    QVERIFY(certificates.make());
    const TlsServer server(certificateOf(certificates));
    const TextResult result = ask(QStringLiteral("http://127.0.0.1:%1").arg(server.port()));
    QVERIFY2(result.error.message.contains(QStringLiteral("https://")), qPrintable(result.error.message));
}

QTEST_GUILESS_MAIN(UpstreamTlsTest)
#include "tst_upstreamtls.moc"
