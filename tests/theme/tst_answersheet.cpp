#include "sheettest.h"

#include <QFrame>
#include <QLabel>
#include <QTextBrowser>
#include <QtTest>

using namespace tavro::aiassistant;

namespace {

const QColor white(Qt::white);

} // namespace

class TestAnswerSheet : public SheetTest {
    Q_OBJECT

private Q_SLOTS:
    void lastRuleOfTheAnswerSheetCounts();
    void avatarFollowsTheTypeProperty_data();
    void avatarFollowsTheTypeProperty();
    void textButtonsHaveTheirIconAtTheLeft_data();
    void textButtonsHaveTheirIconAtTheLeft();
    void textButtonsHaveRoomForIconAndText_data() { textButtonsHaveTheirIconAtTheLeft_data(); }
    void textButtonsHaveRoomForIconAndText();
    void iconButtonsShowTheirImage_data();
    void iconButtonsShowTheirImage();
    void chatButtonsAnswerTheMouse_data();
    void chatButtonsAnswerTheMouse();
    void frameOfAnItemIsRound();
    void browserIsTransparentWithWhiteText();
};

void TestAnswerSheet::lastRuleOfTheAnswerSheetCounts()
{
    auto *bar = named<QFrame>("imageButtonFrame");
    bar->setStyleSheet(QStringLiteral("background:#2B2B2B;"));
    bar->setGeometry(40, 40, 80, 24);
    show();
    QCOMPARE(pixel(bar, middleLeft(bar)), QColor(QStringLiteral("#484848")));
    QCOMPARE(pixel(bar, {1, 12}), QColor(QStringLiteral("#2B2B2B")));
    QVERIFY(pixel(bar, {0, 0}) != QColor(QStringLiteral("#484848")));
}

void TestAnswerSheet::avatarFollowsTheTypeProperty_data()
{
    QTest::addColumn<QString>("type");
    QTest::newRow("aiassistant") << "aiassistant";
    QTest::newRow("user") << "user";
}

void TestAnswerSheet::avatarFollowsTheTypeProperty()
{
    QFETCH(QString, type);
    auto *avatar = named<QLabel>("avatar");
    avatar->setProperty("type", type);
    avatar->setGeometry(40, 40, 36, 36);
    show();
    QCOMPARE(areaOf(picture(avatar), theme().imageColor(type)), QRect(0, 0, 36, 36));
}

void TestAnswerSheet::textButtonsHaveTheirIconAtTheLeft_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("image");
    QTest::newRow("copy") << QByteArray("copyButton") << "copy_normal";
    QTest::newRow("modify") << QByteArray("modifyButton") << "modify_normal";
    QTest::newRow("clear") << QByteArray("clearButton") << "clear_normal";
    QTest::newRow("try again") << QByteArray("tryAgainButton") << "tryagain_normal";
}

void TestAnswerSheet::textButtonsHaveTheirIconAtTheLeft()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, image);
    QPushButton *made = button(name.constData(), {100, 20}, QStringLiteral("████"));
    show();
    QCOMPARE(areaOf(picture(made), theme().imageColor(image)), QRect(4, 2, 16, 16));
    const QRect text = areaOf(picture(made), theme().color(QStringLiteral("Button_Text_Normal")));
    QVERIFY(text.width() > 10);
    QVERIFY(text.left() > 20);
    QCOMPARE(pixel(made, {99, 10}), windowColor);
    QVERIFY(made->sizeHint().height() >= 18);
}

void TestAnswerSheet::textButtonsHaveRoomForIconAndText()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, image);
    QPushButton *made = button(name.constData(), {200, 20}, QStringLiteral("████"));
    show();
    const QColor textColor = theme().color(QStringLiteral("Button_Text_Normal"));
    const QRect wholeText = areaOf(picture(made), textColor);
    made->resize(made->sizeHint());
    QCOMPARE(areaOf(picture(made), theme().imageColor(image)).size(), QSize(16, 16));
    QCOMPARE(areaOf(picture(made), textColor).width(), wholeText.width());
}

void TestAnswerSheet::iconButtonsShowTheirImage_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("image");
    QTest::newRow("magnifier") << QByteArray("magnifierButton") << "magnifier_normal";
    QTest::newRow("download") << QByteArray("downloadButton") << "download_normal";
    QTest::newRow("modify") << QByteArray("modifyButton") << "modify_normal";
}

void TestAnswerSheet::iconButtonsShowTheirImage()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, image);
    auto *bar = named<QFrame>("imageButtonFrame");
    bar->setStyleSheet(QStringLiteral("background:#2B2B2B;"));
    bar->setGeometry(40, 40, 80, 24);
    auto *made = named<QPushButton>(name.constData(), bar);
    made->setGeometry(8, 4, 16, 16);
    show();
    QCOMPARE(areaOf(picture(made), theme().imageColor(image)), QRect(0, 0, 16, 16));
    made->setFocus();
    QCOMPARE(pixel(made, {0, 8}), QColor(QStringLiteral("#FF6D00")));
    const QRect beside = areaOf(picture(made), theme().imageColor(image));
    QVERIFY(beside.width() >= 14 && beside.height() >= 14);
}

void TestAnswerSheet::chatButtonsAnswerTheMouse_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name :
         {"copyButton", "modifyButton", "clearButton", "tryAgainButton", "downloadButton", "magnifierButton"})
        QTest::newRow(name) << QByteArray(name);
}

void TestAnswerSheet::chatButtonsAnswerTheMouse()
{
    QFETCH(QByteArray, name);
    QPushButton *made = button(name.constData(), {100, 30});
    made->setFocusPolicy(Qt::NoFocus);
    const QPoint free(97, 15);
    show();
    QCOMPARE(pixel(made, free), windowColor);
    QTest::mouseMove(made);
    QTRY_VERIFY(made->underMouse());
    QCOMPARE(pixel(made, free), over(theme().color(QStringLiteral("Color_W15")), windowColor));
    QTest::mousePress(made, Qt::LeftButton);
    QCOMPARE(pixel(made, free), over(theme().color(QStringLiteral("Color_B20")), windowColor));
    QTest::mouseRelease(made, Qt::LeftButton);
}

void TestAnswerSheet::frameOfAnItemIsRound()
{
    auto *frame = named<QWidget>("rightWidget");
    frame->setGeometry(40, 40, 100, 50);
    show();
    QCOMPARE(pixel(frame, middleLeft(frame)), QColor(QStringLiteral("#404040")));
    QCOMPARE(pixel(frame, {0, 0}), windowColor);
    QCOMPARE(pixel(frame, {50, 25}), windowColor);
}

void TestAnswerSheet::browserIsTransparentWithWhiteText()
{
    auto *browser = named<QTextBrowser>("textBrowser");
    browser->setGeometry(40, 40, 200, 40);
    browser->setPlainText(QStringLiteral("████"));
    auto *label = named<QLabel>("textLabel");
    label->setGeometry(40, 100, 200, 40);
    label->setText(QStringLiteral("████"));
    show();
    QCOMPARE(pixel(browser, {199, 39}), windowColor);
    QCOMPARE(pixel(browser, {0, 20}), windowColor);
    QVERIFY(areaOf(picture(browser), white).width() > 10);
    QVERIFY(areaOf(picture(label), white).width() > 10);
}

QTEST_MAIN(TestAnswerSheet)
#include "tst_answersheet.moc"
