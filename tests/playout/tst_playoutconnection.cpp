#include "playout/settingsfixture.h"
#include "runtime/certificates.h"
#include "settings/connectiontest.h"
#include "support/waiting.h"

#include <httplib.h>

#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTest>

#include <thread>

using namespace tavro::playout;
using namespace tavro::testsupport;
using Outcome = ServiceReport::Outcome;

Q_DECLARE_METATYPE(tavro::playout::ServiceReport)
Q_DECLARE_METATYPE(tavro::playout::ServiceReport::Outcome)
Q_DECLARE_METATYPE(tavro::testsupport::ScriptedAnswer)

namespace {

QString idle()
{
    return QStringLiteral("Changes hold from the next question on; one on its way may fail.");
}

constexpr char resultPath[] = "/ai/result/filter/";

ScriptedAnswer answer(int code, const char *message)
{
    return ScriptedAnswer::json(
        {{QStringLiteral("code"), code}, {QStringLiteral("message"), QString::fromUtf8(message)}});
}

} // namespace

class PlayoutConnectionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { f.reset(); }
    void reportSaysWhatAnswers_data();
    void reportSaysWhatAnswers();
    void theServiceIsAskedAsThePanelAsks();
    void refusedConnectionIsTold();
    void badAddressIsTold();
    void brokenOffConnectionIsTold();
    void certificateThatNobodyVouchesForIsTold();
    void silentServiceIsTold();
    void dialogueStaysInUseDuringATest();
    void closingGivesTheTestUp();
    void endOfTheHostGivesTheTestUp();
    void otherValuesGiveTheTestUp();
    void manyTestsLeaveNoConnectionBehind();

private:
    void test(const ServiceAccess &access);
    QString report() const { return f->labelOf("settingsReport"); }
    bool isAsked(int times) const;

    std::unique_ptr<SettingsFixture> f;
    ServiceReport last;
};

void PlayoutConnectionTest::init()
{
    f = std::make_unique<SettingsFixture>();
    f->options.token = QStringLiteral("t");
    last = {};
}

void PlayoutConnectionTest::test(const ServiceAccess &access)
{
    ConnectionTest connection;
    bool isThere = false;
    connect(&connection, &ConnectionTest::sigFinished, this, [&](const ServiceReport &report) {
        last = report;
        isThere = true;
    });
    connection.start(access);
    QVERIFY(connection.isRunning());
    QVERIFY(eventually([&] { return isThere; }, std::chrono::seconds(60)));
    QVERIFY(!connection.isRunning());
}

bool PlayoutConnectionTest::isAsked(int times) const
{
    return eventually([&] { return f->server.requestCountTo(resultPath) == times; });
}

void PlayoutConnectionTest::reportSaysWhatAnswers_data()
{
    QTest::addColumn<QString>("token");
    QTest::addColumn<ScriptedAnswer>("answer");
    QTest::addColumn<Outcome>("outcome");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *token, const ScriptedAnswer &answer, Outcome outcome,
                        const char *text) {
        QTest::newRow(name) << QString::fromUtf8(token) << answer << outcome << QString::fromUtf8(text);
    };
    row("an assistant", "t", answer(404, "unknown"), Outcome::Reachable,
        "The service is reachable and takes the token.");
    row("an assistant without a token", "", answer(404, "unknown"), Outcome::Reachable,
        "The service is reachable and needs no token.");
    row("an assistant that is still working", "t", answer(1, "working"), Outcome::Reachable,
        "The service is reachable and takes the token.");
    row("wrong token", "t", answer(401, "No."), Outcome::WrongToken, "The service does not take the token: No.");
    row("forbidden", "t", answer(403, "No."), Outcome::WrongToken, "The service does not take the token: No.");
    row("no token", "", answer(401, "Please."), Outcome::WrongToken, "The service wants a token: Please.");
    row("another page", "t", ScriptedAnswer::bytes("<html>", "text/html"), Outcome::NoAssistant,
        "What answers at this address is not an assistant service.");
    row("another JSON", "t", ScriptedAnswer::bytes("{\"code\":\"0\"}"), Outcome::NoAssistant,
        "What answers at this address is not an assistant service.");
    row("not found", "t", ScriptedAnswer::status(404), Outcome::NoAssistant,
        "Something answers at this address, but not as an assistant service does.");
    row("somewhere else", "t", ScriptedAnswer::redirect(302, "/b"), Outcome::NoAssistant,
        "Something answers at this address, but not as an assistant service does.");
    row("garbage", "t", ScriptedAnswer::garbage("hello\r\n"), Outcome::NoAssistant,
        "Something answers at this address, but not as an assistant service does.");
}

void PlayoutConnectionTest::reportSaysWhatAnswers()
{
    QFETCH(QString, token);
    QFETCH(ScriptedAnswer, answer);
    QFETCH(Outcome, outcome);
    f->server.always("POST", resultPath, answer);
    test({f->server.url(), token, {}, {}});
    QVERIFY2(last.outcome == outcome, qPrintable(last.text));
    QTEST(last.text, "text");
}

void PlayoutConnectionTest::theServiceIsAskedAsThePanelAsks()
{
    f->server.expect("POST", "/base/ai/result/filter/", answer(404, "unknown"));
    test({f->server.url() + QStringLiteral("/base"), QStringLiteral("t"), QStringLiteral("u"), QStringLiteral("n")});
    QCOMPARE(f->server.requestCount(), 1);
    const HttpRequest request = f->server.requests().first();
    QCOMPARE(request.header("token").value_or(QByteArray()), QByteArray("t"));
    QCOMPARE(request.header("userId").value_or(QByteArray()), QByteArray("u"));
    QCOMPARE(request.header("node").value_or(QByteArray()), QByteArray("n"));
    QVERIFY(request.json().contains(QStringLiteral("reqId")));
    QVERIFY(request.json().value(QStringLiteral("type")).isBool());
}

void PlayoutConnectionTest::refusedConnectionIsTold()
{
    f->server.stopListening();
    test({f->server.url(), {}, {}, {}});
    QVERIFY2(last.outcome == Outcome::Refused, qPrintable(last.text));
    QCOMPARE(last.text, QStringLiteral("The connection was refused: nothing listens at this address."));
}

void PlayoutConnectionTest::badAddressIsTold()
{
    test({QStringLiteral("127.0.0.1:8080"), {}, {}, {}});
    QVERIFY2(last.outcome == Outcome::BadAddress, qPrintable(last.text));
    QCOMPARE(last.text, QStringLiteral("This is not an address like http://127.0.0.1:8080."));
}

void PlayoutConnectionTest::brokenOffConnectionIsTold()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    connect(&server, &QTcpServer::newConnection, &server, [&server] {
        while (QTcpSocket *const socket = server.nextPendingConnection())
            delete socket;
    });
    test({QStringLiteral("http://127.0.0.1:%1").arg(server.serverPort()), {}, {}, {}});
    QVERIFY2(last.outcome == Outcome::NoAssistant, qPrintable(last.text));
}

void PlayoutConnectionTest::certificateThatNobodyVouchesForIsTold()
{
    Certificates certificates;
    QVERIFY(certificates.make());
    httplib::SSLServer secure(certificates.certificate().toUtf8().constData(), certificates.key().toUtf8().constData());
    const int port = secure.bind_to_any_port("127.0.0.1");
    QVERIFY(port > 0);
    std::thread thread([&] { secure.listen_after_bind(); });
    test({QStringLiteral("https://127.0.0.1:%1").arg(port), {}, {}, {}});
    secure.stop();
    thread.join();
    QVERIFY2(last.outcome == Outcome::Unsafe, qPrintable(last.text));
    QVERIFY2(last.text.startsWith(QStringLiteral("The encrypted connection was not made: ")), qPrintable(last.text));
}

void PlayoutConnectionTest::silentServiceIsTold()
{
    f->server.always("POST", resultPath, answer(404, "unknown").held());
    test({f->server.url(), {}, {}, {}});
    QVERIFY2(last.outcome == Outcome::TimedOut, qPrintable(last.text));
    QCOMPARE(last.text, QStringLiteral("The service did not answer within 10 seconds."));
    f->server.releaseAll();
}

void PlayoutConnectionTest::dialogueStaysInUseDuringATest()
{
    QVERIFY(f->start());
    f->server.expect("POST", resultPath, answer(404, "unknown").held());
    QVERIFY(f->open());
    f->click("settingsTest");
    QCOMPARE(report(), QStringLiteral("Asking the service…"));
    QVERIFY(!f->field<QPushButton>("settingsTest").isEnabled());
    QVERIFY(isAsked(1));
    // The language is none of the values that are tested.
    f->choose("settingsLanguage", QStringLiteral("rus"));
    QCOMPARE(report(), QStringLiteral("Asking the service…"));
    QVERIFY(f->server.releaseNext());
    QTRY_COMPARE_WITH_TIMEOUT(report(), QStringLiteral("The service is reachable and takes the token."), 20000);
    QVERIFY(f->field<QPushButton>("settingsTest").isEnabled());
}

void PlayoutConnectionTest::closingGivesTheTestUp()
{
    QVERIFY(f->start());
    f->server.always("POST", resultPath, answer(404, "unknown").held());
    QVERIFY(f->open());
    f->click("settingsTest");
    QVERIFY(isAsked(1));
    QElapsedTimer time;
    time.start();
    QTest::keyClick(f->dialog, Qt::Key_Escape);
    QTRY_VERIFY(!f->dialog);
    QVERIFY(eventually([this] { return f->server.connectionsOpen() == 0; }));
    // The client alone would have waited for ten.
    QVERIFY2(time.elapsed() < 9000, qPrintable(QString::number(time.elapsed())));
    QVERIFY(f->open());
    QCOMPARE(report(), idle());
    f->server.releaseAll();
}

void PlayoutConnectionTest::endOfTheHostGivesTheTestUp()
{
    QVERIFY(f->start());
    f->server.always("POST", resultPath, answer(404, "unknown").held());
    QVERIFY(f->open());
    f->click("settingsTest");
    QVERIFY(isAsked(1));
    f->host.reset();
    QVERIFY(!f->dialog);
    QVERIFY(eventually([this] { return f->server.connectionsOpen() == 0; }));
    QCOMPARE(f->server.heldCount(), 0);
}

void PlayoutConnectionTest::otherValuesGiveTheTestUp()
{
    QVERIFY(f->start());
    f->server.expect("POST", resultPath, answer(404, "unknown").held());
    f->server.expect("POST", resultPath, answer(401, "No."));
    QVERIFY(f->open());
    f->click("settingsTest");
    QVERIFY(isAsked(1));
    f->enter("settingsToken", QStringLiteral("other"));
    QCOMPARE(report(), idle());
    f->server.releaseAll();
    QTRY_VERIFY(f->field<QPushButton>("settingsTest").isEnabled());
    f->click("settingsTest");
    QTRY_COMPARE_WITH_TIMEOUT(report(), QStringLiteral("The service does not take the token: No."), 20000);
    QCOMPARE(f->server.requestsTo(resultPath).last().header("token").value_or(QByteArray()), QByteArray("other"));
}

void PlayoutConnectionTest::manyTestsLeaveNoConnectionBehind()
{
    f->server.always("POST", resultPath, answer(404, "unknown"));
    ConnectionTest connection;
    qRegisterMetaType<ServiceReport>();
    QSignalSpy finished(&connection, &ConnectionTest::sigFinished);
    for (int run = 0; run < 20; ++run)
        connection.start({f->server.url(), {}, {}, {}});
    QVERIFY(eventually([&] { return finished.size() == 1; }));
    QVERIFY(eventually([this] { return f->server.connectionsOpen() == 0; }));
    QCOMPARE(finished.size(), 1);
}

QTEST_MAIN(PlayoutConnectionTest)
#include "tst_playoutconnection.moc"
