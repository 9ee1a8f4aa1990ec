#include "consolehost/consoleprocess.h"
#include "support/servicescript.h"
#include "support/waiting.h"

#include <QFile>
#include <QTest>

#include <csignal>

using namespace tavro::testsupport;

Q_DECLARE_METATYPE(tavro::testsupport::ScriptedAnswer)

namespace {

QStringList ask(const QString &question)
{
    return {QStringLiteral("--ask"), question};
}

QStringList shortTime()
{
    return {QStringLiteral("--timeout"), QStringLiteral("1")};
}

} // namespace

class ConsoleHostQuestionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void printsTheAnswer();
    void sendsWhatTheOptionsSay();
    void takesTheTokenFromTheEnvironment_data();
    void takesTheTokenFromTheEnvironment();
    void handsOverTheMediaFolder();
    void printsTheCommands();
    void asksInTheOrderGiven();
    void endsAtTheFirstFailure();
    void everyQuestionHasTheWholeTime();
    void controlCharactersAreTakenOut();
    void fails_data();
    void fails();
    void failsWhereItCannotWrite();
    void timesOut();
    void serviceThatDoesNotRun();
    void endsCleanlyOnSignals_data();
    void endsCleanlyOnSignals();

private:
    std::unique_ptr<ServiceScript> service;
    std::unique_ptr<ConsoleProcess> host;
};

void ConsoleHostQuestionsTest::init()
{
    service = std::make_unique<ServiceScript>();
    host = std::make_unique<ConsoleProcess>();
}

void ConsoleHostQuestionsTest::cleanup()
{
    host.reset();
    if (!QTest::currentTestFailed())
        QCOMPARE(service->leftovers(), QStringList());
    service.reset();
}

void ConsoleHostQuestionsTest::printsTheAnswer()
{
    service->expectAnswer(QStringLiteral("the first line\nthe sécond"));
    host->start(service->arguments(ask(QStringLiteral("why?"))));
    QCOMPARE(host->status(), 0);
    QCOMPARE(host->out(), QStringLiteral("the first line\nthe sécond\n"));
    QCOMPARE(host->err(), QString());
}

void ConsoleHostQuestionsTest::sendsWhatTheOptionsSay()
{
    service->expectAnswer(QStringLiteral("yes"));
    host->start({QStringLiteral("--service"), service->url() + QLatin1Char('/'), QStringLiteral("--token=abc"),
                 QStringLiteral("--user-id=u7"), QStringLiteral("--node=studio"), QStringLiteral("--deep-model"),
                 QStringLiteral("--online-search"), QStringLiteral("--ask"), QStringLiteral("why?")});
    QCOMPARE(host->status(), 0);
    const HttpRequest request = service->requests().first();
    QCOMPARE(request.target, QByteArray(ServiceScript::text));
    QCOMPARE(request.header("token").value(), QByteArrayLiteral("abc"));
    QCOMPARE(request.header("userId").value(), QByteArrayLiteral("u7"));
    QCOMPARE(request.header("node").value(), QByteArrayLiteral("studio"));
    const QJsonObject body = request.json();
    QVERIFY(body.value(QStringLiteral("enableDS")).toBool());
    QVERIFY(body.value(QStringLiteral("enableNet")).toBool());
    QCOMPARE(body.value(QStringLiteral("messages")).toArray().first().toObject().value(QStringLiteral("content")),
             QJsonValue(QStringLiteral("why?")));
    QCOMPARE(body.value(QStringLiteral("mediaList")), QJsonValue(QJsonArray()));
}

void ConsoleHostQuestionsTest::takesTheTokenFromTheEnvironment_data()
{
    QTest::addColumn<QStringList>("option");
    QTest::addColumn<QByteArray>("token");
    QTest::newRow("environment only") << QStringList() << QByteArrayLiteral("from-environment");
    QTest::newRow("the option wins") << QStringList{QStringLiteral("--token=mine")} << QByteArrayLiteral("mine");
}

void ConsoleHostQuestionsTest::takesTheTokenFromTheEnvironment()
{
    QFETCH(QStringList, option);
    service->expectAnswer(QStringLiteral("yes"));
    host->setEnvironment(QStringLiteral("ASSISTANT_TOKEN"), QStringLiteral("from-environment"));
    host->start(service->arguments(option + ask(QStringLiteral("why?"))));
    QCOMPARE(host->status(), 0);
    QTEST(service->requests().first().header("token").value(), "token");
}

void ConsoleHostQuestionsTest::handsOverTheMediaFolder()
{
    QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("clips")));
    for (const char *name : {"/night.png", "/clips/harbour.mp4"})
        QVERIFY(QFile(folder.path() + QLatin1String(name)).open(QFile::WriteOnly));
    service->expectAnswer(QStringLiteral("yes"));
    host->start(service->arguments(QStringList{QStringLiteral("--media"), folder.path()} + ask(QStringLiteral("?"))));
    QCOMPARE(host->status(), 0);
    const QJsonArray expected{
        QJsonObject{{QStringLiteral("id"), QStringLiteral("clips/harbour.mp4")},
                    {QStringLiteral("name"), QStringLiteral("harbour.mp4")}},
        QJsonObject{{QStringLiteral("id"), QStringLiteral("night.png")},
                    {QStringLiteral("name"), QStringLiteral("night.png")}},
    };
    QCOMPARE(service->body(ServiceScript::text).value(QStringLiteral("mediaList")).toArray(), expected);
}

void ConsoleHostQuestionsTest::printsTheCommands()
{
    const QJsonObject play{{QStringLiteral("mediaId"), QStringLiteral("harbour.mp4")},
                           {QStringLiteral("bPlay"), true},
                           {QStringLiteral("layerId"), 2},
                           {QStringLiteral("volume"), 0.5}};
    const QJsonObject stop{{QStringLiteral("layerId"), 1}};
    service->expectAnswer(QStringLiteral("As you wish."),
                          {QJsonObject{{QStringLiteral("cmdType"), 0}, {QStringLiteral("params"), play}},
                           QJsonObject{{QStringLiteral("cmdType"), 1001}, {QStringLiteral("params"), stop}}});
    host->start(service->arguments(ask(QStringLiteral("play the harbour"))));
    QCOMPARE(host->status(), 0);
    const QStringList expected{
        QStringLiteral("As you wish."),
        QStringLiteral("command: 999 (library media): play, media \"harbour.mp4\", layer 2, volume 0.5"),
        QStringLiteral("command: 1001 (stop layer): layer 1"),
    };
    QCOMPARE(host->outLines(), expected);
}

void ConsoleHostQuestionsTest::asksInTheOrderGiven()
{
    service->expectAnswer(QStringLiteral("first"));
    service->expectPicture(pngBytes(16, 9));
    service->expectAnswer(QStringLiteral("third"));
    host->start(service->arguments(ask(QStringLiteral("one"))
                                   + QStringList{QStringLiteral("--picture"), QStringLiteral("two")}
                                   + ask(QStringLiteral("three"))));
    QCOMPARE(host->status(), 0);
    const QStringList lines = host->outLines();
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines.first(), QStringLiteral("first"));
    QCOMPARE(lines.at(1), QStringLiteral("picture: 16x9"));
    QCOMPARE(lines.last(), QStringLiteral("third"));
    QCOMPARE(service->body(ServiceScript::text, 1).value(QStringLiteral("messages")).toArray().size(), 3);
}

void ConsoleHostQuestionsTest::endsAtTheFirstFailure()
{
    service->expect("POST", ServiceScript::text, ServiceScript::refused(QStringLiteral("too busy")));
    host->start(service->arguments(ask(QStringLiteral("one")) + ask(QStringLiteral("two"))));
    QCOMPARE(host->status(), 2);
    QCOMPARE(service->requestCount(), 1);
}

// Each question takes one tick; of three ticks in a row the third would be a time-out.
void ConsoleHostQuestionsTest::everyQuestionHasTheWholeTime()
{
    QStringList arguments{QStringLiteral("--timeout"), QStringLiteral("2")};
    QStringList answers;
    for (const char *number : {"one", "two", "three"}) {
        answers.append(QLatin1String(number));
        arguments += ask(answers.last());
        service->expectAnswer(answers.last());
    }
    host->start(service->arguments(arguments));
    QCOMPARE(host->status(), 0);
    QCOMPARE(host->outLines(), answers);
}

void ConsoleHostQuestionsTest::controlCharactersAreTakenOut()
{
    service->expectAnswer(QStringLiteral("red\u001b[31m\ttext\r\nend\u009b"));
    host->start(service->arguments(ask(QStringLiteral("why?"))));
    QCOMPARE(host->status(), 0);
    QCOMPARE(host->out(), QStringLiteral("red [31m\ttext\nend \n"));
}

void ConsoleHostQuestionsTest::fails_data()
{
    QTest::addColumn<ScriptedAnswer>("generation");
    QTest::addColumn<ScriptedAnswer>("poll");
    QTest::addColumn<int>("polls");
    QTest::addColumn<QString>("message");

    const ScriptedAnswer accepted = ServiceScript::accepted(QStringLiteral("r"));
    const QString unreadable = QStringLiteral("the service cannot be reached, or its reply cannot be read");
    QTest::newRow("refused") << ServiceScript::refused(QStringLiteral("no\nquota")) << ScriptedAnswer() << 0
                             << QStringLiteral("the service reports: no quota");
    QTest::newRow("status 401") << ScriptedAnswer::status(401) << ScriptedAnswer() << 0 << unreadable;
    QTest::newRow("no JSON") << ScriptedAnswer::bytes("<html>") << ScriptedAnswer() << 0 << unreadable;
    QTest::newRow("failed later") << accepted << ServiceScript::refused(QStringLiteral("engine broke")) << 1
                                  << QStringLiteral("the service reports: engine broke");
    QTest::newRow("status 500 later") << accepted << ScriptedAnswer::status(500) << 1 << unreadable;
}

void ConsoleHostQuestionsTest::fails()
{
    QFETCH(ScriptedAnswer, generation);
    QFETCH(ScriptedAnswer, poll);
    QFETCH(int, polls);
    QFETCH(QString, message);
    service->expect("POST", ServiceScript::text, generation);
    for (int i = 0; i < polls; ++i)
        service->expect("POST", ServiceScript::result, poll);
    host->start(service->arguments(ask(QStringLiteral("why?"))));
    QCOMPARE(host->status(), 2);
    QCOMPARE(host->out(), QString());
    QCOMPARE(host->err(), QStringLiteral("consolehost: %1\n").arg(message));
}

void ConsoleHostQuestionsTest::failsWhereItCannotWrite()
{
    service->expectAnswer(QStringLiteral("to a full disk"));
    host->writeTo(QStringLiteral("/dev/full"));
    host->start(service->arguments(ask(QStringLiteral("why?"))));
    QCOMPARE(host->status(), 2);
    QVERIFY2(host->err().contains(QStringLiteral("standard output cannot be written")), qPrintable(host->err()));
}

void ConsoleHostQuestionsTest::timesOut()
{
    service->expect("POST", ServiceScript::text, ServiceScript::accepted(QStringLiteral("r")));
    service->always("POST", ServiceScript::result, ServiceScript::working());
    host->start(service->arguments(shortTime() + ask(QStringLiteral("why?"))));
    QCOMPARE(host->status(), 3);
    QCOMPARE(host->out(), QString());
    QCOMPARE(host->err(), QStringLiteral("consolehost: no answer within 1 s\n"));
    QCOMPARE(service->requestCountTo(ServiceScript::result), 1);
}

void ConsoleHostQuestionsTest::serviceThatDoesNotRun()
{
    service->stopListening();
    host->start(service->arguments(ask(QStringLiteral("why?"))));
    QCOMPARE(host->status(), 2);
    QCOMPARE(host->out(), QString());
    QVERIFY(host->err().contains(QStringLiteral("cannot be reached")));
}

void ConsoleHostQuestionsTest::endsCleanlyOnSignals_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("status");
    QTest::newRow("SIGINT") << SIGINT << 130;
    QTest::newRow("SIGTERM") << SIGTERM << 143;
}

void ConsoleHostQuestionsTest::endsCleanlyOnSignals()
{
    QFETCH(int, number);
    service->expect("POST", ServiceScript::text, ServiceScript::accepted(QStringLiteral("never")).held());
    host->start(service->arguments(ask(QStringLiteral("why?"))));
    QVERIFY(eventually([this] { return service->heldCount() == 1; }));
    host->sendSignal(number);
    QTEST(host->status(), "status");
    QCOMPARE(host->out(), QString());
    QCOMPARE(host->err(), QString());
    QVERIFY(eventually([this] { return service->connectionsOpen() == 0; }));
    service->releaseAll();
}

QTEST_GUILESS_MAIN(ConsoleHostQuestionsTest)
#include "tst_consolehostquestions.moc"
