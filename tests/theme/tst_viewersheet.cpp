#include "sheettest.h"

#include <QtTest>

using namespace tavro::aiassistant;

namespace {

const QColor white(Qt::white);

} // namespace

class TestViewerSheet : public SheetTest {
    Q_OBJECT

private Q_SLOTS:
    void lastRuleOfTheViewerSheetCounts();
    void closeChangesItsImage();
    void downloadAnswersTheMouse();
    void downloadHasRoomForIconAndText();
    void viewerImagesAreCentred_data();
    void viewerImagesAreCentred();
};

void TestViewerSheet::lastRuleOfTheViewerSheetCounts()
{
    QPushButton *download = button("download", {200, 44});
    show();
    download->setFocus();
    QCOMPARE(pixel(download, middleLeft(download)), white);
}

void TestViewerSheet::closeChangesItsImage()
{
    QPushButton *close = button("close", {50, 50});
    close->setFocusPolicy(Qt::NoFocus);
    show();
    QCOMPARE(pixel(close, {25, 25}), theme().imageColor(QStringLiteral("close")));
    QTest::mouseMove(close);
    QTRY_VERIFY(close->underMouse());
    QCOMPARE(pixel(close, {25, 25}), theme().imageColor(QStringLiteral("closeHover")));
    QTest::mousePress(close, Qt::LeftButton);
    QCOMPARE(pixel(close, {25, 25}), theme().imageColor(QStringLiteral("closePressed")));
    QTest::mouseRelease(close, Qt::LeftButton);
}

void TestViewerSheet::downloadAnswersTheMouse()
{
    QPushButton *download = button("download", {200, 44}, QStringLiteral("████"));
    download->setFocusPolicy(Qt::NoFocus);
    const QPoint free(4, 22);
    const QRect icon(12, 12, 20, 20);
    show();
    QCOMPARE(pixel(download, free), theme().color(QStringLiteral("BackgroundColor_6")));
    QCOMPARE(areaOf(picture(download), theme().imageColor(QStringLiteral("downloadBig"))), icon);
    QVERIFY(areaOf(picture(download), white).left() > icon.right());
    QTest::mouseMove(download);
    QTRY_VERIFY(download->underMouse());
    QCOMPARE(pixel(download, free), theme().color(QStringLiteral("BackgroundColor_7")));
    QCOMPARE(areaOf(picture(download), theme().imageColor(QStringLiteral("downloadBigHover"))), icon);
    QTest::mousePress(download, Qt::LeftButton);
    QCOMPARE(pixel(download, free), theme().color(QStringLiteral("BackgroundColor_5")));
    QCOMPARE(areaOf(picture(download), theme().imageColor(QStringLiteral("downloadBigPressed"))).size(), icon.size());
    QTest::mouseRelease(download, Qt::LeftButton);
}

void TestViewerSheet::downloadHasRoomForIconAndText()
{
    QPushButton *download = button("download", {300, 44}, QStringLiteral("████"));
    // The viewer gives the button an icon of its own, whose file is not there.
    download->setIcon(QIcon(QStringLiteral("/nowhere/downloadBig.png")));
    show();
    const QRect wholeText = areaOf(picture(download), white);
    download->resize(download->sizeHint().width(), 44);
    QCOMPARE(areaOf(picture(download), theme().imageColor(QStringLiteral("downloadBig"))).size(), QSize(20, 20));
    QCOMPARE(areaOf(picture(download), white).width(), wholeText.width());
}

void TestViewerSheet::viewerImagesAreCentred_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("image");
    QTest::newRow("last") << QByteArray("lastPicture") << "last";
    QTest::newRow("next") << QByteArray("nextPicture") << "next";
    QTest::newRow("close") << QByteArray("close") << "close";
}

void TestViewerSheet::viewerImagesAreCentred()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, image);
    QPushButton *made = button(name.constData(), {50, 50});
    show();
    QCOMPARE(areaOf(picture(made), theme().imageColor(image)), QRect(9, 9, 32, 32));
}

QTEST_MAIN(TestViewerSheet)
#include "tst_viewersheet.moc"
