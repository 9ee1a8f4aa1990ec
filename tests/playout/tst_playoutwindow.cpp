#include "playout/hostfixture.h"
#include "view/outputview.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSlider>
#include <QTest>

using namespace tavro::playout;
using namespace tavro::testsupport;

class PlayoutWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { f.reset(); }
    void libraryIsSearched();
    void returnInTheSearchPlaysTheFirstItem();
    void doubleClickPlaysOnTheChosenLayer();
    void anEmptySearchResultSaysSo();
    void playStopAndFaderOfALayer();
    void outputsShowTheirPrograms();
    void theOutputDrawsWhatPlays();
    void theStageTakesTheRoomOfTheHiddenAssistant();
    void shortcutsMoveTheFocus();

private:
    std::unique_ptr<HostFixture> f;
};

void PlayoutWindowTest::init()
{
    f = std::make_unique<HostFixture>();
    QVERIFY(f->start());
}

void PlayoutWindowTest::libraryIsSearched()
{
    const auto &list = f->child<QListView>("mediaList");
    QCOMPARE(list.model()->rowCount(), 3);
    QCOMPARE(f->labelText("libraryCount"), QStringLiteral("3"));
    f->child<QLineEdit>("librarySearch").setFocus();
    QTest::keyClicks(&f->child<QLineEdit>("librarySearch"), QStringLiteral("HARB"));
    QCOMPARE(list.model()->rowCount(), 1);
    QCOMPARE(list.model()->index(0, 0).data().toString(), QStringLiteral("harbour"));
    QCOMPARE(f->labelText("libraryCount"), QStringLiteral("1 of 3"));
}

void PlayoutWindowTest::returnInTheSearchPlaysTheFirstItem()
{
    auto &search = f->child<QLineEdit>("librarySearch");
    QTest::keyClick(&f->host->window(), Qt::Key_3, Qt::ControlModifier);
    QTest::keyClicks(&search, QStringLiteral("market"));
    QTest::keyClick(&search, Qt::Key_Return);
    QCOMPARE(f->host->state().layer(1, 3).mediaId, QStringLiteral("market.png"));
    QVERIFY(f->host->state().layer(1, 3).playing);
}

void PlayoutWindowTest::doubleClickPlaysOnTheChosenLayer()
{
    auto &list = f->child<QListView>("mediaList");
    QTest::mouseClick(&f->child<QPushButton>("layer2Target"), Qt::LeftButton);
    const QPoint second = list.visualRect(list.model()->index(1, 0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, second);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, second);
    QCOMPARE(f->host->state().layer(1, 2).mediaId, QStringLiteral("market.png"));
    QCOMPARE(f->labelText("layer2State"), QStringLiteral("PLAYING"));
}

void PlayoutWindowTest::anEmptySearchResultSaysSo()
{
    QTest::keyClicks(&f->child<QLineEdit>("librarySearch"), QStringLiteral("zzz"));
    QVERIFY(f->child<QLabel>("libraryNothing").isVisible());
    QVERIFY(!f->child<QListView>("mediaList").isVisible());
}

void PlayoutWindowTest::playStopAndFaderOfALayer()
{
    f->host->state().put(1, 2, QStringLiteral("harbour.png"), false);
    QCOMPARE(f->labelText("layer2State"), QStringLiteral("STOPPED"));
    auto &button = f->child<QPushButton>("layer2PlayStop");
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(f->labelText("layer2State"), QStringLiteral("PLAYING"));
    QCOMPARE(button.text(), QStringLiteral("Stop"));
    QTest::keyClick(&button, Qt::Key_Space);
    QCOMPARE(f->labelText("layer2State"), QStringLiteral("STOPPED"));
    QTest::keyClick(&f->child<QSlider>("layer2Fader"), Qt::Key_PageDown);
    QCOMPARE(f->host->state().layer(1, 2).volume, 0.9);
    QCOMPARE(f->labelText("layer2Volume"), QStringLiteral("90 %"));
    QVERIFY(!f->child<QPushButton>("layer1PlayStop").isEnabled());
}

void PlayoutWindowTest::outputsShowTheirPrograms()
{
    f->host->state().put(2, 1, QStringLiteral("harbour.png"), true);
    QCOMPARE(f->labelText("layer1State"), QStringLiteral("EMPTY"));
    QTest::mouseClick(&f->child<QPushButton>("output2"), Qt::LeftButton);
    QCOMPARE(f->labelText("layer1State"), QStringLiteral("PLAYING"));
    auto &chooser = f->child<QComboBox>("programChooser");
    QCOMPARE(chooser.currentText(), QStringLiteral("Program 2"));
    QTest::keyClick(&chooser, Qt::Key_Up);
    QCOMPARE(f->host->state().programOf(2), 1);
    QCOMPARE(f->labelText("layer1State"), QStringLiteral("EMPTY"));
}

void PlayoutWindowTest::theOutputDrawsWhatPlays()
{
    auto &view = f->child<OutputView>("outputView");
    const auto centre = [&view] { return view.grab().toImage().pixelColor(view.rect().center()); };
    f->host->state().put(1, 1, QStringLiteral("harbour.png"), true);
    QTRY_COMPARE(centre(), QColor(Qt::red));
    f->host->state().put(1, 2, QStringLiteral("market.png"), true);
    QTRY_COMPARE(centre(), QColor(Qt::green));
    f->host->state().setPlaying(1, 2, false);
    QTRY_COMPARE(centre(), QColor(Qt::red));
    f->host->state().selectOutput(2);
    QVERIFY(centre() != QColor(Qt::red));
}

void PlayoutWindowTest::theStageTakesTheRoomOfTheHiddenAssistant()
{
    auto &stage = f->child<QWidget>("stage");
    auto &panel = f->child<QWidget>("panel");
    const int width = stage.width();
    const QSize size = f->host->window().size();
    QVERIFY(panel.isVisible());
    QTest::keyClick(&f->host->window(), Qt::Key_F9);
    QTRY_VERIFY(!panel.isVisible());
    QTRY_VERIFY(stage.width() >= width + 800);
    QTRY_COMPARE(f->child<QWidget>("layer1").y(), f->child<QWidget>("layer2").y());
    QVERIFY(!f->child<QPushButton>("assistantButton").isChecked());
    QTest::keyClick(&f->host->window(), Qt::Key_F9);
    QTRY_VERIFY(panel.isVisible());
    QTRY_VERIFY(panel.hasFocus());
    QTRY_COMPARE(stage.width(), width);
    QCOMPARE(f->host->window().size(), size);
    QVERIFY(f->child<QPushButton>("assistantButton").isChecked());
    QTest::mouseClick(&f->child<QPushButton>("dockHide"), Qt::LeftButton);
    QTRY_VERIFY(!panel.isVisible());
    QTest::mouseClick(&f->child<QPushButton>("assistantButton"), Qt::LeftButton);
    QTRY_VERIFY(panel.isVisible());
}

void PlayoutWindowTest::shortcutsMoveTheFocus()
{
    QVERIFY(f->child<QWidget>("panel").hasFocus());
    QTest::keyClick(&f->host->window(), Qt::Key_F, Qt::ControlModifier);
    QVERIFY(f->child<QLineEdit>("librarySearch").hasFocus());
    QTest::keyClick(&f->host->window(), Qt::Key_4, Qt::ControlModifier);
    QVERIFY(f->child<QPushButton>("layer4Target").isChecked());
}

QTEST_MAIN(PlayoutWindowTest)
#include "tst_playoutwindow.moc"
