#include "playout/hostfixture.h"
#include "support/waiting.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QTest>

using namespace tavro::playout;
using namespace tavro::testsupport;

/// The host's window from one start to the next.
class PlayoutLayoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { f.reset(); }
    void theWindowComesBackAsItWas();
    void damagedLayoutIsIgnored();
    void layoutOffEveryScreenIsIgnored();
    void resetBringsTheFirstLayoutBack();
    void withoutAFileNothingIsKept();
    void aServerDoesNotHideTheAssistantForOthers();

private:
    bool restart();
    void press(int key);
    QByteArray saved() const;
    bool isFirstLayout() const;

    std::unique_ptr<HostFixture> f;
};

void PlayoutLayoutTest::init()
{
    f = std::make_unique<HostFixture>();
    f->options.layoutFile = f->data.filePath(QStringLiteral("layout.ini"));
    QVERIFY(f->start());
}

bool PlayoutLayoutTest::restart()
{
    f->host.reset();
    return f->start();
}

void PlayoutLayoutTest::press(int key)
{
    QTest::keyClick(&f->host->window(), static_cast<Qt::Key>(key));
}

QByteArray PlayoutLayoutTest::saved() const
{
    QFile file(f->data.filePath(QStringLiteral("layout.ini")));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

bool PlayoutLayoutTest::isFirstLayout() const
{
    return f->host->window().size() == QSize(1600, 900) && f->host->window().isAssistantShown()
        && f->host->window().isLogShown();
}

void PlayoutLayoutTest::theWindowComesBackAsItWas()
{
    QVERIFY(isFirstLayout());
    f->host->window().setGeometry(24, 40, 1640, 980);
    QTRY_COMPARE(f->host->window().size(), QSize(1640, 980));
    WindowLayout layout = f->host->window().windowLayout();
    layout.logHeight = 300;
    f->host->window().setWindowLayout(layout);
    press(Qt::Key_F9);
    QVERIFY(restart());
    QCOMPARE(f->host->window().geometry(), QRect(24, 40, 1640, 980));
    QVERIFY(!f->host->window().isAssistantShown());
    QVERIFY(!f->child<QWidget>("panel").isVisible());
    QTRY_COMPARE(f->child<QWidget>("log").height(), 300);
    press(Qt::Key_F9);
    press(Qt::Key_F8);
    QVERIFY(restart());
    QVERIFY(f->host->window().isAssistantShown());
    QVERIFY(!f->host->window().isLogShown());
    QVERIFY(!f->child<QAction>("logAction").isChecked());
}

void PlayoutLayoutTest::damagedLayoutIsIgnored()
{
    press(Qt::Key_F9);
    f->host.reset();
    QVERIFY(saved().contains("assistant=0"));
    QFile file(f->options.layoutFile);
    QVERIFY(file.open(QFile::Append));
    file.write("version=broken\n");
    file.close();
    QVERIFY(f->start());
    QVERIFY(isFirstLayout());
}

void PlayoutLayoutTest::layoutOffEveryScreenIsIgnored()
{
    f->host.reset();
    QVERIFY(writeLayout(f->options.layoutFile, {{9000, 9000, 1700, 950}, false, false, false, 0}));
    QVERIFY(f->start());
    QVERIFY(isFirstLayout());
    QVERIFY(f->host->window().x() < 9000);
}

void PlayoutLayoutTest::resetBringsTheFirstLayoutBack()
{
    const int height = f->child<QWidget>("log").height();
    press(Qt::Key_F8);
    press(Qt::Key_F9);
    f->host->window().resize(1700, 1000);
    QTRY_COMPARE(f->host->window().size(), QSize(1700, 1000));
    QTest::keyClick(&f->host->window(), Qt::Key_V, Qt::AltModifier);
    QTRY_VERIFY(QApplication::activePopupWidget());
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_R);
    QTRY_VERIFY(isFirstLayout());
    QTRY_COMPARE(f->child<QWidget>("log").height(), height);
    QVERIFY(f->child<QWidget>("panel").isVisible());
}

void PlayoutLayoutTest::withoutAFileNothingIsKept()
{
    f->options.layoutFile.clear();
    f->host.reset();
    QVERIFY(QFile::remove(f->data.filePath(QStringLiteral("layout.ini"))));
    QVERIFY(f->start());
    press(Qt::Key_F9);
    QVERIFY(restart());
    QVERIFY(isFirstLayout());
    QCOMPARE(saved(), QByteArray());
}

void PlayoutLayoutTest::aServerDoesNotHideTheAssistantForOthers()
{
    f->options.role = tavro::playout::Role::Server;
    f->options.nats.servers = QStringList{QStringLiteral("nats://127.0.0.1:1")};
    QVERIFY(restart());
    QVERIFY(!f->host->window().isAssistantShown());
    QVERIFY(!f->child<QAction>("assistantAction").isEnabled());
    f->options.role = tavro::playout::Role::Local;
    QVERIFY(restart());
    QVERIFY(f->host->window().isAssistantShown());
}

QTEST_MAIN(PlayoutLayoutTest)
#include "tst_playoutlayout.moc"
