#include "cachefolder.h"
#include "controllerfixture.h"
#include "picturebytes.h"
#include "tirelessservice.h"

#include <QFile>
#include <QTest>

#include <functional>
#include <malloc.h>
#include <memory>

namespace {

constexpr int warmUpQuestions = 100;
constexpr int questions = 1000;
constexpr int pictures = 200;
constexpr int questionsInAConversation = 10;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isSanitized = true;
#else
constexpr bool isSanitized = false;
#endif

/// What must not grow.
struct Inventory {
    int openFiles = 0;
    int replies = 0;
    int children = 0;
    int timers = 0;
    qint64 residentPages = 0;
};

int openFiles()
{
    return QDir(QStringLiteral("/proc/self/fd"))
        .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
        .size();
}

qint64 residentPages()
{
    ::malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/statm"));
    return file.open(QFile::ReadOnly) ? file.readAll().split(' ').value(1).toLongLong() : 0;
}

} // namespace

/// What lives as long as the load: the log can be caught only after the tests have begun.
struct LongRun {
    LogCatcher log;
    CacheFolder cache;
    TirelessService server{picturebytes::encoded("png", {320, 180})};
    AiController controller;
    ControllerPrivate &d = AiControllerAccess::of(controller);
    int answers = 0;
    int pictures = 0;
    int downloads = 0;
};

/// A long run: a thousand questions and two hundred pictures, one after the other.
class SoakTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyQuestionWasAnswered();
    void noReplyIsLeft();
    void objectsAndTimersDoNotGrow();
    void openFilesDoNotGrow();
    void memoryDoesNotGrow();
    void nothingWasComplainedOf();
    void cleanupTestCase();

private:
    bool askText(int number);
    bool askPicture(int number);
    bool exchange(const std::function<void()> &ask, const QByteArray &answer);
    bool isIdle() const;
    Inventory inventory();

    std::unique_ptr<LongRun> m_run;
    Inventory m_warm;
    Inventory m_end;
};

void SoakTest::initTestCase()
{
    m_run = std::make_unique<LongRun>();
    m_run->controller.createTimer();
    // The ticks are counted on from question to question.
    m_run->controller.setTimeout(1000000);
    m_run->d.pQueryTimer->blockSignals(true);
    m_run->controller.setDomain(m_run->server.url());
    m_run->controller.sigGenerateTextFinished.connect([this](const auto &) { ++m_run->answers; });
    m_run->controller.sigGeneratePictureFinished.connect(
        [this](const auto &, const auto &, const AIImage &image) { m_run->pictures += image.pixmap.isNull() ? 0 : 1; });
    m_run->controller.sigDownloadPictureFinished.connect([this](const auto &) { ++m_run->downloads; });

    constexpr int questionsForEachPicture = questions / pictures;
    for (int number = 1; number <= questions; ++number) {
        QVERIFY(askText(number));
        if (number % questionsForEachPicture == 0)
            QVERIFY(askPicture(number / questionsForEachPicture));
        if (number % questionsInAConversation == 0) {
            m_run->controller.clearHistoryRecord();
            m_run->log.forget();
        }
        if (number == warmUpQuestions)
            m_warm = inventory();
    }
    m_end = inventory();
}

bool SoakTest::exchange(const std::function<void()> &ask, const QByteArray &answer)
{
    m_run->server.setAnswer(answer);
    ask();
    if (!runUntil([this] { return isIdle(); }))
        return false;
    QMetaObject::invokeMethod(&m_run->d, "slotOnTimeout", Qt::DirectConnection);
    return runUntil([this] { return isIdle(); });
}

bool SoakTest::askText(int number)
{
    const QString question = QStringLiteral("question %1").arg(number);
    return exchange([&] { m_run->controller.generateText(question); }, QByteArray(200, 'x'))
        && m_run->answers == number;
}

// The address differs each time, or the picture would count as the one before.
bool SoakTest::askPicture(int number)
{
    const QString url = m_run->server.pictureUrl(number);
    if (!exchange([&] { m_run->controller.generatePicture(ControllerFixture::pictureInfo()); }, url.toLatin1()))
        return false;
    m_run->controller.downloadPicture(url);
    return runUntil([&] { return m_run->pictures == number && m_run->downloads == number && isIdle(); });
}

bool SoakTest::isIdle() const
{
    return m_run->d.requestManager->findChildren<QNetworkReply *>().isEmpty()
        && m_run->d.downloadManager->findChildren<QNetworkReply *>().isEmpty();
}

Inventory SoakTest::inventory()
{
    runUntil([this] { return m_run->server.openConnections() == 0; });
    settle();
    Inventory now;
    for (const auto *manager : {&m_run->d.requestManager, &m_run->d.downloadManager}) {
        now.replies += (*manager)->findChildren<QNetworkReply *>().size();
        now.children += (*manager)->findChildren<QObject *>().size();
    }
    now.children += m_run->controller.findChildren<QObject *>().size();
    now.timers = m_run->controller.findChildren<QTimer *>().size();
    now.openFiles = openFiles();
    now.residentPages = residentPages();
    return now;
}

void SoakTest::everyQuestionWasAnswered()
{
    QCOMPARE(m_run->answers, questions);
    QCOMPARE(m_run->pictures, pictures);
    QCOMPARE(m_run->downloads, pictures);
    QCOMPARE(m_run->cache.names().size(), pictures);
    QCOMPARE(m_run->server.requestCount(), 2 * questions + 4 * pictures);
}

void SoakTest::noReplyIsLeft()
{
    QCOMPARE(m_warm.replies, 0);
    QCOMPARE(m_end.replies, 0);
}

void SoakTest::objectsAndTimersDoNotGrow()
{
    QCOMPARE(m_end.timers, 1);
    QCOMPARE(m_end.children, m_warm.children);
}

void SoakTest::openFilesDoNotGrow()
{
    QVERIFY(m_warm.openFiles > 0);
    QCOMPARE(m_end.openFiles, m_warm.openFiles);
}

void SoakTest::memoryDoesNotGrow()
{
    if (isSanitized)
        QSKIP("a sanitizer keeps freed memory, so that the resident size says nothing");
    QVERIFY(m_warm.residentPages > 0);
    const double growth = static_cast<double>(m_end.residentPages) / static_cast<double>(m_warm.residentPages);
    QVERIFY2(growth <= 1.2, qPrintable(QStringLiteral("grown to %1 of the size after warm-up").arg(growth)));
}

void SoakTest::nothingWasComplainedOf()
{
    QCOMPARE(m_run->log.complaints().join(QLatin1Char('\n')), QString());
}

void SoakTest::cleanupTestCase()
{
    m_run.reset();
}

QTEST_MAIN(SoakTest)

#include "tst_soak.moc"
