#include "windowlayout.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace tavro::playout;

class PlayoutWindowLayoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void comesBackAsItWas();
    void damagedFileIsNone_data();
    void damagedFileIsNone();
    void noFileIsNone();
    void folderIsMade();
    void reach_data();
    void reach();

private:
    QTemporaryDir folder;
};

void PlayoutWindowLayoutTest::comesBackAsItWas()
{
    const QString path = folder.filePath(QStringLiteral("layout.ini"));
    const WindowLayout layout{{-8, 20, 1700, 950}, true, false, true, 240};
    QVERIFY(writeLayout(path, layout));
    const auto read = readLayout(path);
    QVERIFY(read);
    QCOMPARE(read->geometry, layout.geometry);
    QVERIFY(read->isMaximized);
    QVERIFY(!read->isAssistantShown);
    QVERIFY(read->isLogShown);
    QCOMPARE(read->logHeight, 240);
}

void PlayoutWindowLayoutTest::damagedFileIsNone_data()
{
    QTest::addColumn<QByteArray>("part");
    QTest::addColumn<QByteArray>("broken");
    const auto row = [](const char *name, const char *part, const char *broken) {
        QTest::newRow(name) << QByteArray(part) << QByteArray(broken);
    };
    row("a value is missing", "height=4\n", "");
    row("a word for a number", "x=1", "x=left");
    row("no width", "width=3", "width=0");
    row("far away", "y=2", "y=2000000000");
    row("more than a number", "height=4", "height=4000000000000");
    row("neither yes nor no", "log=1", "log=2");
    row("negative log", "logHeight=5", "logHeight=-5");
    row("of another version", "version=1", "version=2");
    row("no lines at all", "\n", "\x01\xff");
    row("cut off", "maximized=0\nversion", "maxi");
}

void PlayoutWindowLayoutTest::damagedFileIsNone()
{
    QFETCH(QByteArray, part);
    QFETCH(QByteArray, broken);
    QByteArray content =
        "[General]\nassistant=1\nheight=4\nlog=1\nlogHeight=5\nmaximized=0\nversion=1\nwidth=3\nx=1\ny=2\n";
    // Qt takes a file of the same size and time for unchanged.
    QString path;
    const auto write = [&] {
        static int number = 0;
        path = folder.filePath(QStringLiteral("damaged%1.ini").arg(++number));
        QFile file(path);
        return file.open(QFile::WriteOnly) && file.write(content) == content.size();
    };
    QVERIFY(write());
    QVERIFY(readLayout(path));
    QVERIFY(content.contains(part));
    content.replace(part, broken);
    QVERIFY(write());
    QVERIFY(!readLayout(path));
}

void PlayoutWindowLayoutTest::noFileIsNone()
{
    QVERIFY(!readLayout(folder.filePath(QStringLiteral("none.ini"))));
    QVERIFY(!readLayout(folder.path()));
}

void PlayoutWindowLayoutTest::folderIsMade()
{
    const QString path = folder.filePath(QStringLiteral("a/b/layout.ini"));
    QVERIFY(writeLayout(path, {{0, 0, 10, 10}, false, true, true, 0}));
    QVERIFY(readLayout(path));
    QVERIFY(!writeLayout(QStringLiteral("/proc/a/layout.ini"), {}));
}

void PlayoutWindowLayoutTest::reach_data()
{
    QTest::addColumn<QRect>("window");
    QTest::addColumn<bool>("isReached");
    QTest::newRow("inside") << QRect(0, 0, 1600, 900) << true;
    QTest::newRow("on the second screen") << QRect(2000, 100, 1600, 900) << true;
    QTest::newRow("over the edge") << QRect(1700, 1000, 1600, 900) << true;
    QTest::newRow("a corner only") << QRect(3790, 0, 1600, 900) << false;
    QTest::newRow("the upper edge is above") << QRect(0, -40, 1600, 900) << false;
    QTest::newRow("to the left") << QRect(-1600, 0, 1600, 900) << false;
    QTest::newRow("below") << QRect(0, 1080, 1600, 900) << false;
}

void PlayoutWindowLayoutTest::reach()
{
    QFETCH(QRect, window);
    const QVector<QRect> screens{{0, 0, 1920, 1080}, {1920, 0, 1920, 1080}};
    QTEST(isInReach({window, false, true, true, 0}, screens), "isReached");
    QVERIFY(!isInReach({window, false, true, true, 0}, {}));
}

QTEST_GUILESS_MAIN(PlayoutWindowLayoutTest)
#include "tst_playoutwindowlayout.moc"
