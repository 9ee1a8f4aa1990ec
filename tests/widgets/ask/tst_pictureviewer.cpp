#include "panelsupport.h"
#include "support/logcatcher.h"
#include "support/waiting.h"
#include "widgets/pictureviewerwidget_p.h"

#include <QAccessible>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

#include <memory>
#include <optional>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

namespace {

AIImage image(const QSize &size, const char *url)
{
    AIImage made;
    if (!size.isEmpty()) {
        made.pixmap = QPixmap(size);
        made.pixmap.fill(Qt::red);
    }
    made.description = "a harbour";
    made.url = url;
    return made;
}

} // namespace

class TestPictureViewer : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void methodsStandInTheirOrder();
    void isAWindowWithoutFrame();
    void childrenHaveTheirSizes();
    void childrenHaveTheirPlaces();
    void smallScreenKeepsTheButtonsInReach();
    void pictureIsScaledToTheLabelsHeight_data();
    void pictureIsScaledToTheLabelsHeight();
    void pictureIsScaledAnewForAnotherScreensScale();
    void missingPictureIsSaid();
    void pictureComesBackAfterAMissingOne();
    void browsingDoesNothing();
    void closeHides();
    void escapeHides();
    void otherKeysDoNotHide();
    void downloadReportsTheAddress();
    void downloadWithoutPictureReportsAnEmptyAddress();
    void screenIsDimmed_data();
    void screenIsDimmed();
    void textFollowsTheLanguage();
    void keyboardReachesTheButtons();
    void openViewerLetsTheHostQuit();

private:
    template <typename Widget = QPushButton>
    Widget *child(const char *name) const
    {
        return m_viewer->findChild<Widget *>(QLatin1String(name));
    }
    QPixmap shown() const { return child<QLabel>("picture")->pixmap(Qt::ReturnByValue); }
    void open();

    std::optional<LogCatcher> m_log;
    std::unique_ptr<PictureViewerWidget> m_viewer;
};

void TestPictureViewer::init()
{
    m_log.emplace();
    useLanguage(QStringLiteral("en"));
    m_viewer = std::make_unique<PictureViewerWidget>();
}

void TestPictureViewer::cleanup()
{
    m_viewer.reset();
    const QString complaints = complaintsOf(*m_log);
    m_log.reset();
    QCOMPARE(complaints, QString());
}

void TestPictureViewer::open()
{
    m_viewer->show();
    m_viewer->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_viewer.get()));
}

void TestPictureViewer::methodsStandInTheirOrder()
{
    QCOMPARE(declaredMethods(PictureViewerWidget::staticMetaObject, QMetaMethod::Signal),
             QStringList{QStringLiteral("sigDownloadPicture(QString) strNetUrl")});
    QCOMPARE(declaredMethods(*PictureViewerWidgetAccess::of(*m_viewer).metaObject(), QMetaMethod::Slot),
             QStringList({QStringLiteral("slotLastBtnClicked()"), QStringLiteral("slotNextBtnClicked()"),
                          QStringLiteral("slotDownloadBtnClicked()")}));
}

void TestPictureViewer::isAWindowWithoutFrame()
{
    QCOMPARE(m_viewer->objectName(), QStringLiteral("pictureViewer"));
    QVERIFY(m_viewer->isWindow());
    QVERIFY(m_viewer->windowFlags().testFlag(Qt::FramelessWindowHint));
    QVERIFY(m_viewer->testAttribute(Qt::WA_TranslucentBackground));
}

void TestPictureViewer::childrenHaveTheirSizes()
{
    for (const char *name : {"close", "lastPicture", "nextPicture"}) {
        QCOMPARE(child(name)->minimumSize(), QSize(50, 50));
        QCOMPARE(child(name)->maximumSize(), QSize(50, 50));
    }
    const auto *const picture = child<QLabel>("picture");
    QCOMPARE(picture->minimumHeight(), 788);
    QCOMPARE(picture->maximumHeight(), 788);
    QCOMPARE(picture->alignment(), Qt::AlignCenter);
    QCOMPARE(child("download")->minimumHeight(), 44);
    QCOMPARE(child("download")->maximumHeight(), 44);
    QCOMPARE(child("download")->iconSize(), QSize(16, 16));
    QCOMPARE(child("download")->text(), QStringLiteral("下载图像至素材库"));
    QCOMPARE(m_viewer->layout()->contentsMargins(), QMargins(160, 64, 150, 94));
    QCOMPARE(m_viewer->layout()->spacing(), 10);
    QCOMPARE(m_viewer->layout()->itemAt(1)->layout()->spacing(), 60);
    QCOMPARE(m_viewer->layout()->itemAt(1)->layout()->contentsMargins(), QMargins(0, 0, 0, 20));
}

void TestPictureViewer::childrenHaveTheirPlaces()
{
    m_viewer->resize(1920, 1080);
    m_viewer->showImage(image({1920, 1080}, "u"));
    open();
    QCOMPARE(m_viewer->size(), QSize(1920, 1080));
    QCOMPARE(child("close")->geometry(), QRect(1920 - 150 - 50, 64, 50, 50));
    QCOMPARE(child<QLabel>("picture")->geometry(), QRect(160, 124, 1920 - 160 - 150, 788));
    const QRect download = child("download")->geometry();
    QCOMPARE(download.bottom(), 1080 - 94 - 1);
    QVERIFY(std::abs(download.center().x() - (160 + (1920 - 160 - 150) / 2)) <= 1);
}

void TestPictureViewer::smallScreenKeepsTheButtonsInReach()
{
    m_viewer->showImage(image({1920, 1080}, "u"));
    open();
    m_viewer->resize(1280, 720);
    QTRY_COMPARE(m_viewer->size(), QSize(1280, 720));
    for (const char *name : {"close", "download"}) {
        QVERIFY2(m_viewer->rect().contains(child(name)->geometry()), name);
        QCOMPARE(m_viewer->childAt(child(name)->geometry().center()), child(name));
    }
    QCOMPARE(child<QLabel>("picture")->height(), 788);
}

void TestPictureViewer::pictureIsScaledToTheLabelsHeight_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("shownSize");
    QTest::newRow("16:9") << QSize(1920, 1080) << QSize(1400, 788);
    QTest::newRow("4K") << QSize(3840, 2160) << QSize(1400, 788);
    QTest::newRow("4:3") << QSize(1920, 1440) << QSize(1050, 788);
    QTest::newRow("width is truncated") << QSize(1000, 777) << QSize(1014, 788);
    QTest::newRow("small one grows") << QSize(16, 9) << QSize(1400, 788);
    QTest::newRow("upright") << QSize(9, 16) << QSize(443, 788);
}

void TestPictureViewer::pictureIsScaledToTheLabelsHeight()
{
    QFETCH(QSize, size);
    QFETCH(QSize, shownSize);
    m_viewer->showImage(image(size, "u"));
    QCOMPARE(shown().size() / shown().devicePixelRatio(), shownSize);
    QCOMPARE(shown().devicePixelRatio(), m_viewer->devicePixelRatioF());
    QVERIFY(!child<QLabel>("picture")->hasScaledContents());
}

void TestPictureViewer::pictureIsScaledAnewForAnotherScreensScale()
{
    m_viewer->showImage(image({1920, 1080}, "u"));
    const QPixmap sharp = shown();
    QPixmap ofAnotherScreen = sharp.scaled(sharp.size() * 2);
    ofAnotherScreen.setDevicePixelRatio(sharp.devicePixelRatio() * 2);
    child<QLabel>("picture")->setPixmap(ofAnotherScreen);
    open();
    QCOMPARE(shown().devicePixelRatio(), sharp.devicePixelRatio());
    QCOMPARE(shown().size(), sharp.size());
}

void TestPictureViewer::missingPictureIsSaid()
{
    m_viewer->showImage(image({1920, 1080}, "http://pictures/one"));
    m_viewer->showImage(image({}, "http://pictures/none"));
    QCOMPARE(child<QLabel>("picture")->text(), QStringLiteral("can not load picture"));
    QVERIFY(shown().isNull());
    QSignalSpy asked(m_viewer.get(), &PictureViewerWidget::sigDownloadPicture);
    child("download")->click();
    QCOMPARE(asked.at(0).at(0).toString(), QStringLiteral("http://pictures/none"));
}

void TestPictureViewer::pictureComesBackAfterAMissingOne()
{
    m_viewer->showImage(image({}, "u"));
    m_viewer->showImage(image({1920, 1080}, "u"));
    QVERIFY(!shown().isNull());
    QCOMPARE(child<QLabel>("picture")->text(), QString());
}

void TestPictureViewer::browsingDoesNothing()
{
    m_viewer->showImage(image({1920, 1080}, "u"));
    open();
    const qint64 key = shown().cacheKey();
    QSignalSpy asked(m_viewer.get(), &PictureViewerWidget::sigDownloadPicture);
    for (const char *name : {"lastPicture", "nextPicture"}) {
        QVERIFY(!child(name)->isVisible());
        child(name)->click();
        QVERIFY(!child(name)->isVisible());
    }
    QCOMPARE(shown().cacheKey(), key);
    QCOMPARE(asked.count(), 0);
    QVERIFY(m_viewer->isVisible());
}

void TestPictureViewer::closeHides()
{
    open();
    QTest::mouseClick(child("close"), Qt::LeftButton);
    QVERIFY(!m_viewer->isVisible());
}

void TestPictureViewer::escapeHides()
{
    open();
    child("download")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(!m_viewer->isVisible());
}

void TestPictureViewer::otherKeysDoNotHide()
{
    open();
    QTest::keyClick(m_viewer.get(), Qt::Key_Left);
    QTest::keyClick(m_viewer.get(), Qt::Key_Q);
    QVERIFY(m_viewer->isVisible());
}

void TestPictureViewer::downloadReportsTheAddress()
{
    m_viewer->showImage(image({192, 108}, "http://pictures/one"));
    m_viewer->showImage(image({192, 108}, "http://pictures/two"));
    open();
    QSignalSpy asked(m_viewer.get(), &PictureViewerWidget::sigDownloadPicture);
    QTest::mouseClick(child("download"), Qt::LeftButton);
    QCOMPARE(asked.count(), 1);
    QCOMPARE(asked.at(0).at(0).toString(), QStringLiteral("http://pictures/two"));
    QVERIFY(m_viewer->isVisible());
}

void TestPictureViewer::downloadWithoutPictureReportsAnEmptyAddress()
{
    QSignalSpy asked(m_viewer.get(), &PictureViewerWidget::sigDownloadPicture);
    child("download")->click();
    QCOMPARE(asked.count(), 1);
    QCOMPARE(asked.at(0).at(0).toString(), QString());
}

void TestPictureViewer::screenIsDimmed_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::newRow("without a sheet") << QString();
    QTest::newRow("with the panel's sheet") << defaultStyleSheet();
}

void TestPictureViewer::screenIsDimmed()
{
    QFETCH(QString, sheet);
    m_viewer->setStyleSheet(sheet);
    open();
    QImage picture(m_viewer->size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    m_viewer->render(&picture, QPoint(), QRegion(), QWidget::DrawChildren);
    for (const QPoint place : {QPoint(0, 0), QPoint(picture.width() - 1, 0), QPoint(80, picture.height() / 2),
                               QPoint(picture.width() - 1, picture.height() - 1)})
        QCOMPARE(picture.pixelColor(place), QColor(0, 0, 0, 217));
}

void TestPictureViewer::textFollowsTheLanguage()
{
    m_viewer->retranslate();
    QCOMPARE(child("download")->text(), QStringLiteral("Download Image to Media Library"));
    useLanguage(QStringLiteral("rus"));
    m_viewer->retranslate();
    QCOMPARE(child("download")->text(), QStringLiteral("Скачать изображение в медиатеку"));
}

void TestPictureViewer::keyboardReachesTheButtons()
{
    m_viewer->retranslate();
    open();
    QStringList reached;
    for (int step = 0; step < 2; ++step) {
        QTest::keyClick(m_viewer->focusWidget() ? m_viewer->focusWidget() : m_viewer.get(), Qt::Key_Tab);
        reached << m_viewer->focusWidget()->objectName();
    }
    reached.sort();
    QCOMPARE(reached.join(QLatin1Char(' ')), QStringLiteral("close download"));
    for (const char *name : {"close", "download"}) {
        QAccessibleInterface *const interface = QAccessible::queryAccessibleInterface(child(name));
        QVERIFY2(!interface->text(QAccessible::Name).isEmpty(), name);
    }
    QVERIFY(!child("close")->toolTip().isEmpty());
}

void TestPictureViewer::openViewerLetsTheHostQuit()
{
    QWidget hostWindow;
    hostWindow.show();
    open();
    QTimer::singleShot(0, &hostWindow, &QWidget::close);
    QTimer::singleShot(waitLimit, qApp, [] { QCoreApplication::exit(1); });
    QCOMPARE(QCoreApplication::exec(), 0);
}

QTEST_MAIN(TestPictureViewer)
#include "tst_pictureviewer.moc"
