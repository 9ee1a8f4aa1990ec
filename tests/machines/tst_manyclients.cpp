#include "childprocess.h"
#include "course.h"
#include "machinethread.h"
#include "support/logcatcher.h"
#include "support/natsserver.h"
#include "support/waiting.h"

#include <QLoggingCategory>
#include <QTest>

#include <memory>
#include <vector>

using namespace tavro::aiassistant;
using namespace tavro::runtime;
using namespace tavro::testsupport;

/// Fifty clients of one serving machine, against the real service. A controller follows one question at a time, so the
/// clients take turns: the next one asks when it has seen the outcome of the question before its own.
///
/// The clients are threads and not processes: each has a runtime, a connection and a controller of its own either way,
/// and so a sanitizer sees all of them at once, and 250,000 outcomes need not be written and read as text.
class ManyClientsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyOutcomeReachesEveryClientOnceAndInOrder();
    void memoryDoesNotGrow();
    void cleanupTestCase();

private:
    NatsOptions options(const QString &machine) const;
    bool startService();
    void startServer();
    void startClient(int index);
    void watch(MachineThread::Machine &machine, const QString &name);

    std::unique_ptr<LogCatcher> log;
    NatsServer broker;
    ChildProcess service;
    QString serviceUrl;
    std::unique_ptr<Course> course;
    std::unique_ptr<MachineThread> server;
    std::vector<std::unique_ptr<MachineThread>> clients;
};

namespace {

constexpr int clientCount = 50;

void ask(AiController &controller, int question)
{
    // A conversation for each round keeps the requests short.
    if (question % clientCount == 0)
        controller.toClearHistoryRecord();
    controller.textToGenerateText(Course::questionText(question));
}

/// Sees the outcomes on one client, and asks when it is its turn. Used by that client's thread alone.
class Asker {
public:
    Asker(int client, Course &course, AiController &controller)
        : m_client(client)
        , m_course(course)
        , m_controller(controller)
    { }

    void onAnswered(const TextGeneratedPack &pack)
    {
        const QString question = QString::fromStdString(pack.question);
        if (question != Course::questionText(m_seen) || pack.answer.empty())
            return m_course.fail(
                QStringLiteral("client %1 saw \"%2\" as outcome %3").arg(m_client).arg(question).arg(m_seen));
        ++m_seen;
        m_course.advance();
        if (m_course.isTurnOf(m_client, m_seen))
            ask(m_controller, m_seen);
    }

private:
    const int m_client;
    Course &m_course;
    AiController &m_controller;
    int m_seen = 0;
};

} // namespace

NatsOptions ManyClientsTest::options(const QString &machine) const
{
    NatsOptions options;
    options.servers = QStringList{broker.url()};
    options.machine = machine;
    return options;
}

bool ManyClientsTest::startService()
{
    service.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    service.start(QStringLiteral(ASSISTANTSERVICE_PROGRAM),
                  {QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"), QStringLiteral("--work-ms"),
                   QStringLiteral("0"), QStringLiteral("--log-level"), QStringLiteral("error")});
    if (!eventually([this] { return service.canReadLine(); }))
        return false;
    serviceUrl = QString::fromUtf8(service.readLine()).trimmed().section(QLatin1Char(' '), -1);
    return serviceUrl.startsWith(QLatin1String("http://127.0.0.1:"));
}

/// Anything but an answer ends the test.
void ManyClientsTest::watch(MachineThread::Machine &machine, const QString &name)
{
    Course *const watched = course.get();
    const auto failed = [watched, name](const ChatItemBasic &item) {
        watched->fail(name + QStringLiteral(" heard of a failure: ") + QString::fromStdString(item.message));
    };
    machine.controller.sigRequestFailed.connect(failed);
    machine.controller.sigErrorOccured.connect(failed);
    machine.controller.sigRequestTimeout.connect(failed);
    machine.controller.sigDeleteGeneratingItem.connect([failed] { failed({}); });
    QObject::connect(&machine.runtime, &MachineRuntime::sigMessageLost, &machine.runtime,
                     [watched, name](const QString &message, const QString &reason) {
                         watched->fail(QStringLiteral("%1 lost %2: %3").arg(name, message, reason));
                     });
}

void ManyClientsTest::startServer()
{
    server = std::make_unique<MachineThread>(Role::ProxyServer, options(QStringLiteral("server")));
    server->begin([this](MachineThread::Machine &machine) {
        machine.controller.setDomain(serviceUrl);
        watch(machine, QStringLiteral("the server"));
    });
}

void ManyClientsTest::startClient(int index)
{
    const QString name = QStringLiteral("client%1").arg(index);
    clients.push_back(std::make_unique<MachineThread>(Role::ProxyClient, options(name)));
    clients.back()->begin([this, index, name](MachineThread::Machine &machine) {
        watch(machine, name);
        auto asker = std::make_shared<Asker>(index, *course, machine.controller);
        machine.controller.sigGenerateTextFinished.connect(
            [asker](const TextGeneratedPack &pack) { asker->onAnswered(pack); });
    });
}

void ManyClientsTest::initTestCase()
{
    log = std::make_unique<LogCatcher>();
    // The catcher would keep every line of the many polls.
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false\n*.info=false"));
    course = std::make_unique<Course>(clientCount, clientCount * qEnvironmentVariableIntValue("ZVAI_QUESTIONS"));
    QVERIFY2(course->questions() > 0, "ZVAI_QUESTIONS holds the number of questions of each client");
    QVERIFY2(broker.start(), qPrintable(broker.errorText()));
    QVERIFY(startService());
    startServer();
    QVERIFY(server->isReady());
    for (int index = 0; index < clientCount; ++index)
        startClient(index);
    for (const auto &client : clients)
        QVERIFY(client->isReady());
}

void ManyClientsTest::everyOutcomeReachesEveryClientOnceAndInOrder()
{
    clients.front()->post([](MachineThread::Machine &machine) { ask(machine.controller, 0); });
    QVERIFY2(course->isRun(), qPrintable(course->problem()));
    // An outcome that came twice would be the next one that its client sees.
    clients.clear();
    QCOMPARE(course->problem(), QString());
}

void ManyClientsTest::memoryDoesNotGrow()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QSKIP("the sanitizer keeps memory of its own");
#endif
    const QString grown =
        QStringLiteral("%1 KiB became %2").arg(course->memoryAtATenth()).arg(course->memoryAtTheEnd());
    QVERIFY(course->memoryAtATenth() > 0);
    QVERIFY2(double(course->memoryAtTheEnd()) < 1.2 * double(course->memoryAtATenth()), qPrintable(grown));
}

void ManyClientsTest::cleanupTestCase()
{
    clients.clear();
    server.reset();
    service.killNow();
    broker.kill();
    QCOMPARE(log->complaints().join(QLatin1Char('\n')), QString());
}

QTEST_GUILESS_MAIN(ManyClientsTest)
#include "tst_manyclients.moc"
