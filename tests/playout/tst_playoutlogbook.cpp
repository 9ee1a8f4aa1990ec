#include "log/logbook.h"
#include "log/logcapture.h"
#include "support/waiting.h"
#include "zlspdlog/zlspdlog.h"

#include <spdlog/sinks/sink.h>

#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

using namespace tavro::playout;
using namespace tavro::testsupport;

Q_DECLARE_METATYPE(tavro::playout::LogRecord)

Q_LOGGING_CATEGORY(lcSome, "some.module")
Q_LOGGING_CATEGORY(lcQts, "qt.some")

class PlayoutLogBookTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void ownLinesAreThereAtOnce();
    void postedLinesComeWithTheEventLoop();
    void ownLinesComeBehindWhatWasPostedBefore();
    void theOldestGo();
    void aFloodWhileTheThreadIsBusyIsBounded();
    void textIsOneLineOfBoundedLength();
    void clearTakesAll();
    void linesOfManyThreadsAllArriveInTheirOrder();
    void qtsLoggingIsCaptured();
    void whatQtSaysOfItselfIsLeftOut();
    void theHostsLoggerIsCaptured();
    void bothGoOnToWhereTheyWent();
    void nothingComesAfterTheCapture();
    void captureMayEndWhileOthersLog();

private:
    QStringList texts() const;
    bool hasText(const QString &text) const { return texts().contains(text); }

    QtMessageHandler earlier = nullptr;
    std::unique_ptr<LogBook> book;
    std::unique_ptr<LogCapture> capture;
};

// Many lines come, and they are not for whoever reads the test's own.
void PlayoutLogBookTest::initTestCase()
{
    qRegisterMetaType<LogRecord>();
    ZL::SpdlogApplication::instance().logger()->sinks().front()->set_level(spdlog::level::off);
}

void PlayoutLogBookTest::init()
{
    earlier = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    book = std::make_unique<LogBook>();
    capture = std::make_unique<LogCapture>(*book);
}

void PlayoutLogBookTest::cleanup()
{
    capture.reset();
    book.reset();
    qInstallMessageHandler(earlier);
}

QStringList PlayoutLogBookTest::texts() const
{
    QStringList texts;
    for (const LogRecord &record : book->records())
        texts.append(record.text);
    return texts;
}

void PlayoutLogBookTest::ownLinesAreThereAtOnce()
{
    const QDateTime before = QDateTime::currentDateTime();
    book->add(LogLevel::Warning, QStringLiteral("one"));
    QCOMPARE(texts(), QStringList{QStringLiteral("one")});
    const LogRecord &record = book->records().front();
    QVERIFY(record.level == LogLevel::Warning);
    QVERIFY(record.time >= before && record.time <= QDateTime::currentDateTime());
    const QString line = fullLine(record);
    QVERIFY2(line.startsWith(record.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"))), qPrintable(line));
    QVERIFY2(line.endsWith(QStringLiteral(" warning one")), qPrintable(line));
}

void PlayoutLogBookTest::postedLinesComeWithTheEventLoop()
{
    book->post({{}, LogLevel::Info, QStringLiteral("one"), {}});
    book->post({{}, LogLevel::Info, QStringLiteral("two"), {}});
    QCOMPARE(texts(), QStringList());
    settle();
    QCOMPARE(texts(), QStringList({QStringLiteral("one"), QStringLiteral("two")}));
}

void PlayoutLogBookTest::ownLinesComeBehindWhatWasPostedBefore()
{
    book->post({{}, LogLevel::Info, QStringLiteral("one"), {}});
    book->add(LogLevel::Info, QStringLiteral("two"));
    settle();
    QCOMPARE(texts(), QStringList({QStringLiteral("one"), QStringLiteral("two")}));
}

void PlayoutLogBookTest::theOldestGo()
{
    QSignalSpy dropped(book.get(), &LogBook::sigDropped);
    for (int line = 0; line < LogBook::mostRecords + 3; ++line)
        book->add(LogLevel::Info, QString::number(line));
    QCOMPARE(book->records().size(), std::size_t{LogBook::mostRecords});
    QCOMPARE(book->records().front().text, QStringLiteral("3"));
    QCOMPARE(book->records().back().text, QString::number(LogBook::mostRecords + 2));
    QCOMPARE(dropped.size(), 3);
}

void PlayoutLogBookTest::aFloodWhileTheThreadIsBusyIsBounded()
{
    QSignalSpy added(book.get(), &LogBook::sigAdded);
    std::thread([this] {
        for (int line = 0; line < 3 * LogBook::mostRecords; ++line)
            book->post({{}, LogLevel::Info, QString::number(line), {}});
    }).join();
    settle();
    QCOMPARE(added.size(), LogBook::mostRecords);
    QCOMPARE(book->records().back().text, QString::number(3 * LogBook::mostRecords - 1));
}

void PlayoutLogBookTest::textIsOneLineOfBoundedLength()
{
    book->add(LogLevel::Info, QStringLiteral("one\ntwo\r\n\tthree\u2028four\n"));
    QCOMPARE(texts().last(), QStringLiteral("one two   three four"));
    book->add(LogLevel::Info, QString(LogBook::longestText + 1, QLatin1Char('x')));
    QCOMPARE(texts().last().size(), LogBook::longestText + 1);
    QCOMPARE(texts().last().back(), QChar(0x2026));
}

void PlayoutLogBookTest::clearTakesAll()
{
    QSignalSpy cleared(book.get(), &LogBook::sigCleared);
    book->add(LogLevel::Info, QStringLiteral("one"));
    book->post({{}, LogLevel::Info, QStringLiteral("two"), {}});
    book->clear();
    settle();
    QCOMPARE(texts(), QStringList());
    QCOMPARE(cleared.size(), 1);
}

void PlayoutLogBookTest::linesOfManyThreadsAllArriveInTheirOrder()
{
    constexpr int each = 200;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([thread] {
            for (int line = 0; line < each; ++line) {
                if (thread % 2 == 0)
                    qCWarning(lcSome, "%d:%d", thread, line);
                else
                    ZL::SpdlogApplication::instance().logger()->error("{}:{}", thread, line);
            }
        });
    for (std::thread &thread : threads)
        thread.join();
    settle();
    QCOMPARE(book->records().size(), std::size_t{4 * each});
    for (int thread = 0; thread < 4; ++thread) {
        const QStringList own = texts().filter(QRegularExpression(QStringLiteral("^%1:").arg(thread)));
        QCOMPARE(own.size(), each);
        for (int line = 0; line < each; ++line)
            QCOMPARE(own.at(line), QStringLiteral("%1:%2").arg(thread).arg(line));
    }
}

void PlayoutLogBookTest::qtsLoggingIsCaptured()
{
    qCDebug(lcSome) << "a debug line";
    qCInfo(lcSome) << "an info line";
    qCWarning(lcSome) << "a warning";
    qCCritical(lcSome) << "an error";
    settle();
    QCOMPARE(texts(),
             QStringList({QStringLiteral("a debug line"), QStringLiteral("an info line"), QStringLiteral("a warning"),
                          QStringLiteral("an error")}));
    for (int level = 0; level < 4; ++level)
        QCOMPARE(int(book->records().at(static_cast<std::size_t>(level)).level), level);
    QCOMPARE(book->records().front().place, QStringLiteral("some.module"));
}

void PlayoutLogBookTest::whatQtSaysOfItselfIsLeftOut()
{
    qWarning("a platform's remark");
    qCWarning(lcQts) << "a remark";
    qCritical("an error of Qt");
    settle();
    QCOMPARE(texts(), QStringList{QStringLiteral("an error of Qt")});
}

void PlayoutLogBookTest::theHostsLoggerIsCaptured()
{
    const auto logger = ZL::SpdlogApplication::instance().logger();
    logger->error("{} \n //{}:{}()#{}.", "it {} failed", "file", "function", 12);
    logger->warn("plain");
    settle();
    QCOMPARE(texts(), QStringList({QStringLiteral("it {} failed"), QStringLiteral("plain")}));
    QVERIFY(book->records().front().level == LogLevel::Error);
    QCOMPARE(book->records().front().place, QStringLiteral("file:function()#12."));
    QVERIFY(fullLine(book->records().front()).endsWith(QStringLiteral("it {} failed  [file:function()#12.]")));
    QVERIFY(book->records().back().level == LogLevel::Warning);
}

void PlayoutLogBookTest::bothGoOnToWhereTheyWent()
{
    static std::atomic<int> seen;
    seen = 0;
    capture.reset();
    const QtMessageHandler silent =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { ++seen; });
    capture = std::make_unique<LogCapture>(*book);
    qCWarning(lcSome) << "one";
    capture.reset();
    qCWarning(lcSome) << "two";
    qInstallMessageHandler(silent);
    QCOMPARE(seen.load(), 2);
    // The sink that writes to standard error is still there, and ours is there once.
    QCOMPARE(ZL::SpdlogApplication::instance().logger()->sinks().size(), std::size_t{2});
}

void PlayoutLogBookTest::nothingComesAfterTheCapture()
{
    capture.reset();
    qCWarning(lcSome) << "late";
    ZL::SpdlogApplication::instance().logger()->error("late too");
    settle();
    QCOMPARE(texts(), QStringList());
}

void PlayoutLogBookTest::captureMayEndWhileOthersLog()
{
    std::atomic<bool> ends{false};
    std::atomic<int> logged{0};
    std::thread other([&] {
        while (!ends) {
            qCWarning(lcSome) << "again";
            ++logged;
        }
    });
    const bool began = eventually([&] { return logged > 10; });
    capture.reset();
    book.reset();
    const int before = logged;
    const bool goesOn = eventually([&] { return logged > before + 10; });
    ends = true;
    other.join();
    QVERIFY(began);
    QVERIFY(goesOn);
}

QTEST_GUILESS_MAIN(PlayoutLogBookTest)
#include "tst_playoutlogbook.moc"
