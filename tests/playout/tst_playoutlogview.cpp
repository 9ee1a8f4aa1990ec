#include "log/logbook.h"
#include "playout/hostfixture.h"
#include "support/waiting.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTest>
#include <QTextBlock>

#include <thread>

using namespace tavro::playout;
using namespace tavro::testsupport;

Q_LOGGING_CATEGORY(lcModule, "some.module")

class PlayoutLogViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { f.reset(); }
    void linesHaveTimeAndLevel();
    void linesOfOtherThreadsArrive();
    void levelsAreFiltered();
    void textIsFiltered();
    void clearEmptiesTheLog();
    void copyTakesTheSelectionOrAll();
    void savesWhatIsShown();
    void aFileThatCannotBeWrittenIsTold();
    void theEndStaysInSight();
    void scrolledUpItStaysWhereItIs();
    void theEndStaysInSightWhenTheWindowShrinks();
    void f8HidesAndShowsIt();
    void theHandleGivesItRoom();

private:
    QPlainTextEdit &lines() const { return f->child<QPlainTextEdit>("logLines"); }
    LogBook &book() const { return f->host->log(); }
    void fill(int count);
    QString topLine() const;
    bool isAtEnd() const;
    void save(const QString &path);

    std::unique_ptr<HostFixture> f;
};

void PlayoutLogViewTest::init()
{
    f = std::make_unique<HostFixture>();
    QVERIFY(f->start());
    book().clear();
}

void PlayoutLogViewTest::fill(int count)
{
    for (int line = 0; line < count; ++line)
        book().add(LogLevel::Info, QStringLiteral("line %1").arg(line));
}

QString PlayoutLogViewTest::topLine() const
{
    return lines().cursorForPosition({8, 8}).block().text();
}

bool PlayoutLogViewTest::isAtEnd() const
{
    return lines().verticalScrollBar()->value() == lines().verticalScrollBar()->maximum();
}

void PlayoutLogViewTest::linesHaveTimeAndLevel()
{
    book().add(LogLevel::Error, QStringLiteral("<b>bad</b>"));
    const QRegularExpression wanted(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d error  <b>bad</b>$"));
    QVERIFY2(wanted.match(f->log()).hasMatch(), qPrintable(f->log()));
}

void PlayoutLogViewTest::linesOfOtherThreadsArrive()
{
    std::thread([] { qCWarning(lcModule) << "from elsewhere"; }).join();
    QTRY_VERIFY2(f->log().endsWith(QStringLiteral("warning  from elsewhere")), qPrintable(f->log()));
}

void PlayoutLogViewTest::levelsAreFiltered()
{
    book().add(LogLevel::Debug, QStringLiteral("one"));
    book().add(LogLevel::Info, QStringLiteral("two"));
    book().add(LogLevel::Warning, QStringLiteral("three"));
    book().add(LogLevel::Error, QStringLiteral("four"));
    auto &level = f->child<QComboBox>("logLevel");
    const auto shown = [this] { return f->log().isEmpty() ? 0 : f->log().count(QLatin1Char('\n')) + 1; };
    QCOMPARE(shown(), 4);
    for (const int left : {3, 2, 1}) {
        QTest::keyClick(&level, Qt::Key_Down);
        QCOMPARE(shown(), left);
    }
    QVERIFY(f->log().endsWith(QStringLiteral("four")));
    book().add(LogLevel::Info, QStringLiteral("five"));
    QCOMPARE(shown(), 1);
    QTest::keyClick(&level, Qt::Key_Home);
    QCOMPARE(shown(), 5);
    QVERIFY(f->log().endsWith(QStringLiteral("five")));
}

void PlayoutLogViewTest::textIsFiltered()
{
    fill(3);
    qCWarning(lcModule) << "other";
    settle();
    auto &filter = f->child<QLineEdit>("logFilter");
    QTest::keyClicks(&filter, QStringLiteral("LINE 1"));
    QVERIFY2(f->log().endsWith(QStringLiteral("info  line 1")) && !f->log().contains(QLatin1Char('\n')),
             qPrintable(f->log()));
    filter.selectAll();
    QTest::keyClicks(&filter, QStringLiteral("some.mod"));
    QVERIFY2(f->log().endsWith(QStringLiteral("warning  other")), qPrintable(f->log()));
    filter.selectAll();
    QTest::keyClicks(&filter, QStringLiteral("nothing like it"));
    QCOMPARE(f->log(), QString());
    QCOMPARE(lines().placeholderText(), QStringLiteral("No line is like this."));
    filter.clear();
    QVERIFY(f->log().contains(QStringLiteral("line 0")));
}

void PlayoutLogViewTest::clearEmptiesTheLog()
{
    fill(3);
    QTest::mouseClick(&f->child<QPushButton>("logClear"), Qt::LeftButton);
    QCOMPARE(f->log(), QString());
    QVERIFY(book().records().empty());
    QCOMPARE(lines().placeholderText(), QStringLiteral("Nothing has happened yet."));
    fill(1);
    QVERIFY(f->log().endsWith(QStringLiteral("line 0")));
}

void PlayoutLogViewTest::copyTakesTheSelectionOrAll()
{
    fill(3);
    QTest::keyClicks(&f->child<QLineEdit>("logFilter"), QStringLiteral("line"));
    auto &copy = f->child<QPushButton>("logCopy");
    QTest::mouseClick(&copy, Qt::LeftButton);
    QString expected;
    for (const LogRecord &record : book().records())
        expected += fullLine(record) + QLatin1Char('\n');
    QCOMPARE(QApplication::clipboard()->text(), expected);
    lines().setFocus();
    QTest::keyClick(&lines(), Qt::Key_A, Qt::ControlModifier);
    QTest::mouseClick(&copy, Qt::LeftButton);
    QCOMPARE(QApplication::clipboard()->text(), f->log());
}

void PlayoutLogViewTest::save(const QString &path)
{
    QTest::mouseClick(&f->child<QPushButton>("logSave"), Qt::LeftButton);
    auto *const files = f->host->window().findChild<QFileDialog *>(QStringLiteral("logSaveDialog"));
    QVERIFY(files);
    QVERIFY(QTest::qWaitForWindowExposed(files));
    auto *const name = files->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    QCOMPARE(name->text(), QStringLiteral("playout.log"));
    name->selectAll();
    QTest::keyClicks(name, path);
    QTest::keyClick(name, Qt::Key_Return);
}

void PlayoutLogViewTest::savesWhatIsShown()
{
    book().add(LogLevel::Info, QStringLiteral("studio студия"));
    book().add(LogLevel::Error, QStringLiteral("left out"));
    QTest::keyClicks(&f->child<QLineEdit>("logFilter"), QStringLiteral("studio"));
    const QString line = fullLine(book().records().front()) + QLatin1Char('\n');
    const QString path = f->data.filePath(QStringLiteral("saved"));
    save(path);
    QFile file(path + QStringLiteral(".log"));
    QTRY_VERIFY(file.exists());
    QVERIFY(file.open(QFile::ReadOnly));
    QCOMPARE(QString::fromUtf8(file.readAll()), line);
    QCOMPARE(book().records().back().text, QStringLiteral("The log was saved: ") + file.fileName());
}

void PlayoutLogViewTest::aFileThatCannotBeWrittenIsTold()
{
    save(QStringLiteral("/proc/playout.log"));
    QTRY_VERIFY(!book().records().empty());
    QVERIFY(book().records().back().level == LogLevel::Error);
    QVERIFY2(f->log().contains(QStringLiteral("The log was not saved: /proc/playout.log: ")), qPrintable(f->log()));
}

void PlayoutLogViewTest::theEndStaysInSight()
{
    fill(100);
    QVERIFY(lines().verticalScrollBar()->maximum() > 0);
    QVERIFY(isAtEnd());
    fill(LogBook::mostRecords);
    QVERIFY(isAtEnd());
    QCOMPARE(lines().blockCount(), LogBook::mostRecords);
}

void PlayoutLogViewTest::scrolledUpItStaysWhereItIs()
{
    fill(LogBook::mostRecords);
    QTest::keyClick(&lines(), Qt::Key_PageUp);
    QTest::keyClick(&lines(), Qt::Key_PageUp);
    QVERIFY(!isAtEnd());
    const QString read = topLine();
    QVERIFY(read.contains(QStringLiteral("line ")));
    book().add(LogLevel::Info, QStringLiteral("one more"));
    book().add(LogLevel::Info, QStringLiteral("another"));
    QCOMPARE(topLine(), read);
    QTest::keyClick(&lines(), Qt::Key_End);
    QVERIFY(isAtEnd());
    book().add(LogLevel::Info, QStringLiteral("the last"));
    QVERIFY(isAtEnd());
}

void PlayoutLogViewTest::theEndStaysInSightWhenTheWindowShrinks()
{
    fill(100);
    f->host->window().resize(1600, 1000);
    QTRY_COMPARE(f->host->window().height(), 1000);
    f->host->window().resize(1600, 900);
    QTRY_COMPARE(f->host->window().height(), 900);
    QTRY_VERIFY(isAtEnd());
    QTest::keyClick(&f->host->window(), Qt::Key_F9);
    QTRY_VERIFY(!f->child<QWidget>("panel").isVisible());
    QTRY_VERIFY(isAtEnd());
}

void PlayoutLogViewTest::f8HidesAndShowsIt()
{
    auto &log = f->child<QWidget>("log");
    QTest::keyClick(&f->host->window(), Qt::Key_F8);
    QVERIFY(!log.isVisible());
    fill(50);
    QTest::keyClick(&f->host->window(), Qt::Key_F8);
    QVERIFY(log.isVisible());
    QTRY_VERIFY(isAtEnd());
    QVERIFY(f->log().endsWith(QStringLiteral("line 49")));
}

void PlayoutLogViewTest::theHandleGivesItRoom()
{
    auto &log = f->child<QWidget>("log");
    const int before = log.height();
    auto *const handle = f->child<QSplitter>("stageSplitter").handle(1);
    const QPoint middle = handle->rect().center();
    QTest::mousePress(handle, Qt::LeftButton, {}, middle);
    const QPoint above = middle - QPoint(0, 64);
    QMouseEvent move(QEvent::MouseMove, above, handle->mapToGlobal(above), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(handle, &move);
    QTest::mouseRelease(handle, Qt::LeftButton, {}, middle);
    QTRY_COMPARE(log.height(), before + 64);
    QVERIFY(f->child<QWidget>("layer4").isVisible());
    // It keeps its height when the window changes.
    f->host->window().resize(1600, 960);
    QTRY_COMPARE(f->host->window().height(), 960);
    QTRY_COMPARE(log.height(), before + 64);
}

QTEST_MAIN(PlayoutLogViewTest)
#include "tst_playoutlogview.moc"
