#include "support/logcatcher.h"
#include "zlspdlog/zlspdlog.h"

#include <spdlog/spdlog.h>

#include <QLoggingCategory>
#include <QTest>

#include <thread>

using namespace tavro::testsupport;

Q_LOGGING_CATEGORY(quietCategory, "quiet", QtWarningMsg)

class LogCatcherTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keepsEveryLineOfBothLogs();
    void complainsAboutAnUnannouncedLine_data();
    void complainsAboutAnUnannouncedLine();
    void acceptsAnAnnouncedLineWithinItsScopeOnly();
    void complainsWhenTheAnnouncedLineDoesNotCome();
    void anExpectationForAnotherTextHelpsNothing();
    void keepsThePlaceOfAHostLine();
    void givesBothLogsBack();
    void takesLinesFromOtherThreads();
};

void LogCatcherTest::keepsEveryLineOfBothLogs()
{
    LogCatcher log;
    qDebug("one %d", 1);
    qCDebug(quietCategory, "two");
    ZL::SpdlogApplication::instance().logger()->info("three {}", 3);
    QCOMPARE(log.texts(), (QStringList{QStringLiteral("one 1"), QStringLiteral("two"), QStringLiteral("three 3")}));
    QCOMPARE(log.lines().at(1).category, QStringLiteral("quiet"));
    QCOMPARE(log.hostLines().size(), 1);
    QCOMPARE(log.count(QStringLiteral("o")), 2);
    QVERIFY(log.complaints().isEmpty());
    log.forget();
    QVERIFY(log.texts().isEmpty());
}

void LogCatcherTest::complainsAboutAnUnannouncedLine_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("qWarning") << 0;
    QTest::newRow("qCritical") << 1;
    QTest::newRow("host warning") << 2;
    QTest::newRow("host error") << 3;
}

void LogCatcherTest::complainsAboutAnUnannouncedLine()
{
    QFETCH(int, kind);
    LogCatcher log;
    const auto host = ZL::SpdlogApplication::instance().logger();
    if (kind == 0)
        qWarning("oh");
    else if (kind == 1)
        qCritical("oh");
    else
        host->log(kind == 2 ? spdlog::level::warn : spdlog::level::err, "oh");
    QCOMPARE(log.complaints(), QStringList{QStringLiteral("not announced: oh")});
}

void LogCatcherTest::acceptsAnAnnouncedLineWithinItsScopeOnly()
{
    LogCatcher log;
    {
        const ExpectedLog expected(log, QRegularExpression(QStringLiteral("^code \\d+$")), 2);
        qWarning("code 12");
        ZL::SpdlogApplication::instance().logger()->error("code {}", 7);
        QCOMPARE(expected.seen(), 2);
    }
    QVERIFY(log.complaints().isEmpty());
    qWarning("code 13");
    QCOMPARE(log.complaints().size(), 1);
}

void LogCatcherTest::complainsWhenTheAnnouncedLineDoesNotCome()
{
    LogCatcher log;
    {
        const ExpectedLog expected(log, QStringLiteral("code (x)"), 2);
        qWarning("the code (x) came");
    }
    QCOMPARE(log.complaints(), QStringList{QStringLiteral("announced 2 times, came 1 times: code\\ \\(x\\)")});
}

void LogCatcherTest::anExpectationForAnotherTextHelpsNothing()
{
    LogCatcher log;
    {
        const ExpectedLog expected(log, QStringLiteral("this"), 0);
        qWarning("that");
    }
    QCOMPARE(log.complaints().size(), 1);
}

void LogCatcherTest::keepsThePlaceOfAHostLine()
{
    LogCatcher log;
    const auto host = ZL::SpdlogApplication::instance().logger();
    host->log(spdlog::source_loc{"folder/file", 12, "function"}, spdlog::level::info, "text");
    const LogLine line = log.hostLines().value(0);
    QCOMPARE(line.file, QStringLiteral("folder/file"));
    QCOMPARE(line.line, 12);
    QCOMPARE(line.function, QStringLiteral("function"));
}

void LogCatcherTest::givesBothLogsBack()
{
    const auto host = ZL::SpdlogApplication::instance().logger();
    const auto sinks = host->sinks();
    const auto level = host->level();
    const QtMessageHandler handler = qInstallMessageHandler(nullptr);
    qInstallMessageHandler(handler);
    {
        const LogCatcher log;
        QVERIFY(host->sinks() != sinks);
    }
    QVERIFY(host->sinks() == sinks);
    QCOMPARE(host->level(), level);
    QVERIFY(qInstallMessageHandler(handler) == handler);
    QVERIFY(!quietCategory().isDebugEnabled());
}

void LogCatcherTest::takesLinesFromOtherThreads()
{
    LogCatcher log;
    std::thread other([] { qWarning("from there"); });
    other.join();
    QCOMPARE(log.complaints().size(), 1);
}

QTEST_GUILESS_MAIN(LogCatcherTest)
#include "tst_logcatcher.moc"
