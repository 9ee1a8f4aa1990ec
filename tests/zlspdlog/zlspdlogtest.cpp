#include "zlspdlog/zlspdlog.h"

#include <spdlog/logger.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <array>
#include <memory>
#include <thread>
#include <type_traits>
#include <vector>

static_assert(std::is_base_of_v<ZL::SpdlogBase, ZL::SpdlogApplication>);
static_assert(std::is_same_v<decltype(ZL::SpdlogApplication::instance()), ZL::SpdlogApplication &>);
static_assert(
    std::is_same_v<decltype(std::declval<const ZL::SpdlogBase &>().logger()), std::shared_ptr<spdlog::logger>>);
static_assert(!std::is_copy_constructible_v<ZL::SpdlogApplication>);
static_assert(!std::is_default_constructible_v<ZL::SpdlogApplication>);

namespace {

constexpr qint64 maxFileBytes = 5 * 1024 * 1024;

struct Outcome {
    bool succeeded = false;
    QString errors;
    QString output;
};

Outcome runProbe(const QString &level, const QString &file, int longLines = 0)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("ZLSPDLOG_LEVEL"));
    environment.remove(QStringLiteral("ZLSPDLOG_FILE"));
    if (!level.isNull())
        environment.insert(QStringLiteral("ZLSPDLOG_LEVEL"), level);
    if (!file.isNull())
        environment.insert(QStringLiteral("ZLSPDLOG_FILE"), file);
    QProcess probe;
    probe.setProcessEnvironment(environment);
    probe.start(QStringLiteral(ZLSPDLOG_PROBE), {QString::number(longLines)});
    const bool finished = probe.waitForFinished(60000);
    if (!finished) {
        probe.kill();
        probe.waitForFinished();
    }
    Outcome outcome;
    outcome.succeeded = finished && probe.exitStatus() == QProcess::NormalExit && probe.exitCode() == 0;
    outcome.errors = QString::fromUtf8(probe.readAllStandardError());
    outcome.output = QString::fromUtf8(probe.readAllStandardOutput());
    return outcome;
}

/// The first level, counted from trace = 0, whose line is in the text; 6 if none is. Checks that all above it are there
/// too.
int lowestLevel(const QString &text)
{
    int lowest = 6;
    while (lowest > 0 && text.contains(QStringLiteral("line of level %1\n").arg(lowest - 1)))
        --lowest;
    return text.count(QStringLiteral("line of level ")) == 6 - lowest ? lowest : -1;
}

QString contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

class ZlspdlogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void instanceIsOneObject();
    void instanceIsOneObjectOnAllThreads();
    void loggerIsSharedAndNeverNull();
    void levelComesFromTheEnvironment_data();
    void levelComesFromTheEnvironment();
    void unknownLevelIsReported_data();
    void unknownLevelIsReported();
    void knownLevelIsNotReported_data();
    void knownLevelIsNotReported();
    void fileComesFromTheEnvironment();
    void fileHasTheSameLevel();
    void fileIsAppendedTo();
    void unknownLevelIsReportedInTheFile();
    void fileIsRotated();
    void unusableFileIsReported_data();
    void unusableFileIsReported();
    void emptyFileNameIsNoFile();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void ZlspdlogTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void ZlspdlogTest::instanceIsOneObject()
{
    QCOMPARE(&ZL::SpdlogApplication::instance(), &ZL::SpdlogApplication::instance());
}

void ZlspdlogTest::instanceIsOneObjectOnAllThreads()
{
    std::array<ZL::SpdlogApplication *, 4> seen{};
    std::vector<std::thread> threads;
    for (auto &place : seen)
        threads.emplace_back([&place] { place = &ZL::SpdlogApplication::instance(); });
    for (std::thread &thread : threads)
        thread.join();
    for (const auto *place : seen)
        QCOMPARE(place, &ZL::SpdlogApplication::instance());
}

void ZlspdlogTest::loggerIsSharedAndNeverNull()
{
    const ZL::SpdlogBase &base = ZL::SpdlogApplication::instance();
    const std::shared_ptr<spdlog::logger> logger = base.logger();
    QVERIFY(logger);
    QCOMPARE(ZL::SpdlogApplication::instance().logger().get(), logger.get());
    QVERIFY(!logger->sinks().empty());
}

void ZlspdlogTest::levelComesFromTheEnvironment_data()
{
    QTest::addColumn<QString>("level");
    QTest::addColumn<int>("lowest");
    QTest::newRow("not set") << QString() << 2;
    QTest::newRow("empty") << QStringLiteral("") << 2;
    QTest::newRow("trace") << QStringLiteral("trace") << 0;
    QTest::newRow("debug") << QStringLiteral("debug") << 1;
    QTest::newRow("info") << QStringLiteral("info") << 2;
    QTest::newRow("warning") << QStringLiteral("warning") << 3;
    QTest::newRow("error") << QStringLiteral("error") << 4;
    QTest::newRow("critical") << QStringLiteral("critical") << 5;
    QTest::newRow("off") << QStringLiteral("off") << 6;
    QTest::newRow("unknown") << QStringLiteral("loud") << 2;
}

void ZlspdlogTest::levelComesFromTheEnvironment()
{
    QFETCH(QString, level);
    QFETCH(int, lowest);
    const Outcome outcome = runProbe(level, QString());
    QVERIFY(outcome.succeeded);
    QCOMPARE(lowestLevel(outcome.errors), lowest);
    QCOMPARE(outcome.output, QString());
}

void ZlspdlogTest::unknownLevelIsReported_data()
{
    QTest::addColumn<QString>("level");
    QTest::newRow("word") << QStringLiteral("loud");
    QTest::newRow("number") << QStringLiteral("3");
    QTest::newRow("upper case") << QStringLiteral("DEBUG");
    QTest::newRow("format characters") << QStringLiteral("{} %s");
}

void ZlspdlogTest::unknownLevelIsReported()
{
    QFETCH(QString, level);
    const Outcome outcome = runProbe(level, QString());
    QVERIFY(outcome.succeeded);
    QCOMPARE(outcome.errors.count(QStringLiteral("ZLSPDLOG_LEVEL is not a log level: %1\n").arg(level)), 1);
}

void ZlspdlogTest::knownLevelIsNotReported_data()
{
    QTest::addColumn<QString>("level");
    QTest::newRow("not set") << QString();
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("trace") << QStringLiteral("trace");
    QTest::newRow("off") << QStringLiteral("off");
}

void ZlspdlogTest::knownLevelIsNotReported()
{
    QFETCH(QString, level);
    const Outcome outcome = runProbe(level, QString());
    QVERIFY(outcome.succeeded);
    QVERIFY(!outcome.errors.contains(QStringLiteral("ZLSPDLOG_LEVEL")));
}

void ZlspdlogTest::fileComesFromTheEnvironment()
{
    const QString file = path(QStringLiteral("logs/probe.log"));
    const Outcome outcome = runProbe(QString(), file);
    QVERIFY(outcome.succeeded);
    QCOMPARE(lowestLevel(contents(file)), 2);
    QCOMPARE(lowestLevel(outcome.errors), 2);
}

void ZlspdlogTest::fileHasTheSameLevel()
{
    const QString file = path(QStringLiteral("probe.log"));
    QVERIFY(runProbe(QStringLiteral("error"), file).succeeded);
    QCOMPARE(lowestLevel(contents(file)), 4);
}

void ZlspdlogTest::fileIsAppendedTo()
{
    const QString file = path(QStringLiteral("probe.log"));
    QVERIFY(runProbe(QString(), file).succeeded);
    QVERIFY(runProbe(QString(), file).succeeded);
    QCOMPARE(contents(file).count(QStringLiteral("line of level 2\n")), 2);
}

void ZlspdlogTest::unknownLevelIsReportedInTheFile()
{
    const QString file = path(QStringLiteral("probe.log"));
    QVERIFY(runProbe(QStringLiteral("loud"), file).succeeded);
    QVERIFY(contents(file).contains(QStringLiteral("ZLSPDLOG_LEVEL is not a log level: loud\n")));
}

void ZlspdlogTest::fileIsRotated()
{
    // About 1 kB a line: more than five full files.
    QVERIFY(runProbe(QString(), path(QStringLiteral("probe.log")), 28000).succeeded);
    const QDir folder(m_folder->path());
    const QStringList files = folder.entryList(QDir::Files, QDir::Name);
    QCOMPARE(files,
             (QStringList{QStringLiteral("probe.1.log"), QStringLiteral("probe.2.log"), QStringLiteral("probe.3.log"),
                          QStringLiteral("probe.log")}));
    for (const QString &file : files)
        QVERIFY(QFileInfo(folder.filePath(file)).size() <= maxFileBytes);
    QVERIFY(contents(path(QStringLiteral("probe.log"))).contains(QStringLiteral(" 27999 xxx")));
}

void ZlspdlogTest::unusableFileIsReported_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("level");
    QTest::addColumn<int>("lowest");
    QTest::newRow("folder") << QStringLiteral(".") << QString() << 2;
    QTest::newRow("below a file") << QStringLiteral("file/probe.log") << QString() << 2;
    QTest::newRow("at a high level") << QStringLiteral(".") << QStringLiteral("critical") << 5;
    QTest::newRow("switched off") << QStringLiteral(".") << QStringLiteral("off") << 6;
}

void ZlspdlogTest::unusableFileIsReported()
{
    QFETCH(QString, name);
    QFETCH(QString, level);
    QFETCH(int, lowest);
    QFile blocking(path(QStringLiteral("file")));
    QVERIFY(blocking.open(QIODevice::WriteOnly));
    const Outcome outcome = runProbe(level, path(name));
    QVERIFY(outcome.succeeded);
    QCOMPARE(outcome.errors.count(QStringLiteral("ZLSPDLOG_FILE cannot be used: ")), 1);
    QCOMPARE(lowestLevel(outcome.errors), lowest);
}

void ZlspdlogTest::emptyFileNameIsNoFile()
{
    const Outcome outcome = runProbe(QString(), QStringLiteral(""));
    QVERIFY(outcome.succeeded);
    QVERIFY(!outcome.errors.contains(QStringLiteral("ZLSPDLOG_FILE")));
    QCOMPARE(lowestLevel(outcome.errors), 2);
}

QTEST_GUILESS_MAIN(ZlspdlogTest)
#include "zlspdlogtest.moc"
