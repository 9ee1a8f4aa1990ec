#include "callerrules.h"

#include <QtTest>

using namespace tavro::assistantservice;

namespace {

RequestHead post(const QByteArray &host, const QByteArray &origin = {})
{
    return {"POST", host, origin, {}, "application/json"};
}

ErrorCode codeOf(const CallerRules &rules, const RequestHead &head)
{
    const ServiceError error = rules.check(head);
    return static_cast<bool>(error) == error.message.isEmpty() ? ErrorCode::EngineFailed : error.code;
}

// A service for this machine alone, on a machine named Playout-3.Studio.Lan, behind a proxy.
CallerRules localRules()
{
    return CallerRules({"127.0.0.1", "Playout-3.Studio.Lan", {{"assistant.example", 0}, {"panel.example", 8443}}});
}

} // namespace

// Requests that a foreign web page makes its user's browser send must not reach the service; others must.
class ServiceCallersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void knowsItsHosts_data();
    void knowsItsHosts();
    void localhostCountsWhereItLeadsToTheService_data();
    void localhostCountsWhereItLeadsToTheService();
    void aMachineWithoutANameHasNone();
    void answersNoForeignPage_data();
    void answersNoForeignPage();
    void takesJsonAlone_data();
    void takesJsonAlone();
    void namesWhatToDo();
    void readsAuthorities_data();
    void readsAuthorities();
    void tellsAddressesApart();
};

void ServiceCallersTest::knowsItsHosts_data()
{
    QTest::addColumn<QByteArray>("host");
    QTest::addColumn<bool>("known");
    const auto row = [](const char *host, bool known) { QTest::newRow(host) << QByteArray(host) << known; };
    row("", true); // HTTP/1.0
    row("127.0.0.1", true);
    row("127.0.0.1:8080", true);
    row("localhost:8080", true);
    row("LocalHost.", true);
    row("[::1]:8080", true);
    row("192.168.7.9:8080", true); // no page's name can be an address
    row("[fe80::1]", true);
    row("playout-3.studio.lan:8080", true);
    row("PLAYOUT-3", true);
    row("playout-3.local:8080", true);
    row("assistant.example", true);
    row("assistant.example:444", true);
    row("panel.example:8443", true);
    row("panel.example", false);
    row("panel.example:8444", false);
    row("evil.example", false);
    row("evil.example:8080", false);
    row("localhost.evil.example", false);
    row("127.0.0.1.evil.example", false);
    row("evil.playout-3", false);
    row(".local", false);
    row("studio.lan", false);
    row("127.0.0.1, evil.example", false); // two headers
    row("user@127.0.0.1", false);
    row("127.0.0.1:port", false);
    row("127.0.0.1:99999", false);
    row("2130706433", false); // not written as addresses are
    row("[::1", false);
    row("[::1::1]", false);
    row("local host", false);
    row("localhost\n", false);
    QTest::newRow("endless") << QByteArray(100000, 'a') << false;
}

void ServiceCallersTest::knowsItsHosts()
{
    QFETCH(QByteArray, host);
    QFETCH(bool, known);
    RequestHead get{"GET", host, {}, {}, {}};
    QCOMPARE(codeOf(localRules(), post(host)), known ? ErrorCode::None : ErrorCode::WrongHost);
    QCOMPARE(codeOf(localRules(), get), known ? ErrorCode::None : ErrorCode::WrongHost);
}

void ServiceCallersTest::localhostCountsWhereItLeadsToTheService_data()
{
    QTest::addColumn<QByteArray>("listen");
    QTest::addColumn<bool>("known");
    const auto row = [](const char *listen, bool known) { QTest::newRow(listen) << QByteArray(listen) << known; };
    row("127.0.0.1", true);
    row("127.3.2.1", true);
    row("::1", true);
    row("localhost", true);
    row("0.0.0.0", true);
    row("::", true);
    row("192.168.7.9", false);
    row("Studio-Server", false);
}

void ServiceCallersTest::localhostCountsWhereItLeadsToTheService()
{
    QFETCH(QByteArray, listen);
    QFETCH(bool, known);
    const CallerRules rules({listen, {}, {}});
    QCOMPARE(codeOf(rules, post("localhost:8080")), known ? ErrorCode::None : ErrorCode::WrongHost);
    QCOMPARE(codeOf(rules, post("studio-server:8080")),
             listen == "Studio-Server" ? ErrorCode::None : ErrorCode::WrongHost);
}

void ServiceCallersTest::aMachineWithoutANameHasNone()
{
    const CallerRules rules({"0.0.0.0", {}, {}});
    QCOMPARE(codeOf(rules, post(".local")), ErrorCode::WrongHost);
    QCOMPARE(codeOf(rules, post("a.local")), ErrorCode::WrongHost);
    QCOMPARE(codeOf(rules, post("10.0.0.7:80")), ErrorCode::None);
}

void ServiceCallersTest::answersNoForeignPage_data()
{
    QTest::addColumn<QByteArray>("host");
    QTest::addColumn<QByteArray>("origin");
    QTest::addColumn<QByteArray>("fetchSite");
    QTest::addColumn<bool>("own");
    const auto row = [](const char *host, const char *origin, const char *fetchSite, bool own) {
        QTest::addRow("%s from %s %s", host, origin, fetchSite)
            << QByteArray(host) << QByteArray(origin) << QByteArray(fetchSite) << own;
    };
    row("127.0.0.1:8080", "", "", true);
    row("127.0.0.1:8080", "", "none", true);
    row("127.0.0.1:8080", "", "same-origin", true);
    row("127.0.0.1:8080", "", "cross-site", false);
    row("127.0.0.1:8080", "", "same-site", false);
    row("127.0.0.1:8080", "null", "", false);
    row("127.0.0.1:8080", "http://evil.example", "", false);
    row("127.0.0.1:8080", "http://evil.example:8080", "", false);
    row("127.0.0.1:8080", "http://6.6.6.6", "", false);
    row("127.0.0.1:8080", "http://6.6.6.6:8080", "", false);
    row("127.0.0.1:8080", "http://localhost:3000", "", false);
    row("127.0.0.1:8080", "http://127.0.0.1:8080", "cross-site", true);
    row("127.0.0.1:8080", "http://LOCALHOST:8080", "", true);
    row("playout-3:8080", "http://playout-3:8080", "", true);
    row("127.0.0.1:8080", "https://assistant.example", "", true);
    row("assistant.example", "https://assistant.example", "", true);
    row("127.0.0.1:8080", "https://panel.example:8443", "", true);
    row("127.0.0.1:8080", "https://panel.example", "", false);
    row("127.0.0.1:8080", "file://127.0.0.1:8080", "", false);
    row("127.0.0.1:8080", "http://127.0.0.1:8080/", "", false);
    row("127.0.0.1:8080", "http://127.0.0.1:8080, http://evil.example", "", false);
    row("", "http://127.0.0.1", "", false);
}

void ServiceCallersTest::answersNoForeignPage()
{
    QFETCH(QByteArray, host);
    QFETCH(QByteArray, origin);
    QFETCH(QByteArray, fetchSite);
    QFETCH(bool, own);
    const RequestHead head{"POST", host, origin, fetchSite, "application/json"};
    QCOMPARE(codeOf(localRules(), head), own ? ErrorCode::None : ErrorCode::Forbidden);
    const RequestHead preflight{"OPTIONS", host, origin, {}, {}};
    QCOMPARE(codeOf(localRules(), preflight), own || origin.isEmpty() ? ErrorCode::None : ErrorCode::Forbidden);
}

void ServiceCallersTest::takesJsonAlone_data()
{
    QTest::addColumn<QByteArray>("contentType");
    QTest::addColumn<bool>("json");
    const auto row = [](const char *type, bool json) { QTest::newRow(type) << QByteArray(type) << json; };
    row("application/json", true);
    row("Application/JSON", true);
    row("application/json; charset=utf-8", true);
    row(" application/json ;charset=UTF-8", true);
    row("", false);
    row("text/plain", false);
    row("text/plain; application/json", false);
    row("application/json, text/plain", false);
    row("application/jsonp", false);
    row("application/x-www-form-urlencoded", false);
    row("multipart/form-data; boundary=b", false);
    row(";application/json", false);
}

void ServiceCallersTest::takesJsonAlone()
{
    QFETCH(QByteArray, contentType);
    QFETCH(bool, json);
    RequestHead head{"POST", "127.0.0.1", {}, {}, contentType};
    QCOMPARE(codeOf(localRules(), head), json ? ErrorCode::None : ErrorCode::WrongMediaType);
    head.method = "GET";
    QCOMPARE(codeOf(localRules(), head), ErrorCode::None);
}

void ServiceCallersTest::namesWhatToDo()
{
    const QString host = localRules().check(post("studio.example:80")).message;
    QVERIFY2(host.contains(QStringLiteral("--allow-host studio.example")), qPrintable(host));
    const QString origin = localRules().check(post("127.0.0.1", "http://evil.example")).message;
    QVERIFY2(origin.contains(QStringLiteral("--allow-host")), qPrintable(origin));
    const QString type = localRules().check({"POST", "127.0.0.1", {}, {}, "text/plain"}).message;
    QVERIFY2(type.contains(QStringLiteral("Content-Type: application/json")), qPrintable(type));
}

void ServiceCallersTest::readsAuthorities_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("host");
    QTest::addColumn<int>("port");
    QTest::newRow("name") << QByteArray("A.Example") << QByteArray("a.example") << 0;
    QTest::newRow("name and port") << QByteArray("a.example:80") << QByteArray("a.example") << 80;
    QTest::newRow("final dot") << QByteArray("a.example.:80") << QByteArray("a.example") << 80;
    QTest::newRow("IPv6") << QByteArray("[FE80::1]:80") << QByteArray("fe80::1") << 80;
    QTest::newRow("IPv6 without brackets") << QByteArray("fe80::1") << QByteArray() << 0;
    QTest::newRow("name in brackets") << QByteArray("[cafe]") << QByteArray() << 0;
    QTest::newRow("no name") << QByteArray(":80") << QByteArray() << 0;
}

void ServiceCallersTest::readsAuthorities()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, host);
    const std::optional<Authority> authority = parseAuthority(text);
    QCOMPARE(authority.has_value(), !host.isEmpty());
    QCOMPARE(authority.value_or(Authority()).host, host);
    QTEST(authority.value_or(Authority()).port, "port");
}

void ServiceCallersTest::tellsAddressesApart()
{
    QVERIFY(isIpAddress("10.0.0.1"));
    QVERIFY(isIpAddress("fe80::1"));
    QVERIFY(!isIpAddress("10.0.0.1.example"));
    QVERIFY(isLoopback("127.0.0.2"));
    QVERIFY(isLoopback("0:0:0:0:0:0:0:1"));
    QVERIFY(!isLoopback("128.0.0.1"));
    QVERIFY(!isLoopback("0.0.0.0"));
    QVERIFY(isEveryAddress("0.0.0.0"));
    QVERIFY(isEveryAddress("::"));
    QVERIFY(!isEveryAddress("::1"));
    QVERIFY(!isEveryAddress("host"));
}

QTEST_GUILESS_MAIN(ServiceCallersTest)
#include "tst_servicecallers.moc"
