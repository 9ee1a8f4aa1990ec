#include "sheettest.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFrame>
#include <QStyledItemDelegate>
#include <QTextEdit>
#include <QtTest>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

namespace {

const QColor white(Qt::white);
const QColor black(Qt::black);

} // namespace

class TestAskSheet : public SheetTest {
    Q_OBJECT

private Q_SLOTS:
    void lastRuleOfTheAskSheetCounts_data();
    void lastRuleOfTheAskSheetCounts();
    void askAreaLooksTheSameWhenDisabled();
    void checkableButtonsTurnOrange_data();
    void checkableButtonsTurnOrange();
    void sendAndStopAnswerTheMouse_data();
    void sendAndStopAnswerTheMouse();
    void comboBoxShowsItsState();
    void comboBoxListMarksTheEntryUnderTheMouse_data();
    void comboBoxListMarksTheEntryUnderTheMouse();
};

void TestAskSheet::lastRuleOfTheAskSheetCounts_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("line") << QByteArray("line");
    QTest::newRow("line2") << QByteArray("line2");
}

void TestAskSheet::lastRuleOfTheAskSheetCounts()
{
    QFETCH(QByteArray, name);
    auto *line = named<QFrame>(name.constData());
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Plain);
    line->setLineWidth(1);
    line->setGeometry(0, 40, 400, 1);
    show();
    QCOMPARE(areaOf(picture(line), black), QRect(0, 0, 400, 1));
}

void TestAskSheet::askAreaLooksTheSameWhenDisabled()
{
    auto *area = named<QFrame>("askArea");
    area->setGeometry(40, 40, 200, 100);
    auto *edit = named<QTextEdit>("askEdit", area);
    edit->setGeometry(10, 10, 100, 40);
    edit->setPlainText(QStringLiteral("████"));
    show();
    for (const bool enabled : {true, false}) {
        area->setEnabled(enabled);
        QCOMPARE(pixel(area, middleLeft(area)), QColor(QStringLiteral("#404040")));
        QCOMPARE(pixel(area, {150, 50}), QColor(QStringLiteral("#181818")));
        QCOMPARE(pixel(edit, {99, 39}), QColor(QStringLiteral("#181818")));
        QVERIFY(areaOf(picture(edit), white).width() > 10);
    }
}

void TestAskSheet::checkableButtonsTurnOrange_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QColor>("border");
    for (const char *name : {"askAndAnwser", "generateImage"})
        QTest::newRow(name) << QByteArray(name) << QColor(QStringLiteral("#777777"));
    for (const char *name : {"onlineSearch", "modelBtn"})
        QTest::newRow(name) << QByteArray(name) << QColor(QStringLiteral("#404040"));
}

void TestAskSheet::checkableButtonsTurnOrange()
{
    QFETCH(QByteArray, name);
    QFETCH(QColor, border);
    const QColor orange(QStringLiteral("#FF6D00"));
    QPushButton *made = button(name.constData(), {140, 30}, QStringLiteral("████"));
    made->setCheckable(true);
    show();
    QCOMPARE(pixel(made, middleLeft(made)), border);
    QCOMPARE(pixel(made, {3, 15}), QColor(QStringLiteral("#2B2B2B")));
    QVERIFY(areaOf(picture(made), white).width() > 10);
    made->setChecked(true);
    for (const bool enabled : {true, false}) {
        made->setEnabled(enabled);
        QCOMPARE(pixel(made, middleLeft(made)), orange);
        QCOMPARE(pixel(made, {3, 15}), QColor(QStringLiteral("#2B2B2B")));
        const QImage inside = picture(made).copy(10, 3, 120, 24);
        QVERIFY(areaOf(inside, orange).width() > 10);
        QVERIFY(areaOf(inside, white).isNull());
    }
}

void TestAskSheet::sendAndStopAnswerTheMouse_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("send") << QByteArray("sendMsg");
    QTest::newRow("stop") << QByteArray("stop");
}

void TestAskSheet::sendAndStopAnswerTheMouse()
{
    QFETCH(QByteArray, name);
    QPushButton *made = button(name.constData(), {100, 30}, QStringLiteral("████"));
    made->setFocusPolicy(Qt::NoFocus);
    const QPoint free(4, 15);
    show();
    QCOMPARE(pixel(made, free), theme().color(QStringLiteral("GeneralButtonBackgroundNormal")));
    QVERIFY(areaOf(picture(made), white).width() > 10);
    QTest::mouseMove(made);
    QTRY_VERIFY(made->underMouse());
    QCOMPARE(pixel(made, free), theme().color(QStringLiteral("GeneralButtonBackgroundHover")));
    QTest::mousePress(made, Qt::LeftButton);
    QCOMPARE(pixel(made, free), theme().color(QStringLiteral("GeneralButtonBackgroundPressed")));
    QTest::mouseRelease(made, Qt::LeftButton);
}

void TestAskSheet::comboBoxShowsItsState()
{
    auto *box = named<QComboBox>("ratioSelect");
    box->setGeometry(40, 40, 120, 30);
    box->addItem(QStringLiteral("████"));
    show();
    QCOMPARE(pixel(box, middleLeft(box)), QColor(QStringLiteral("gray")));
    QCOMPARE(pixel(box, {3, 15}), QColor(QStringLiteral("#161616")));
    const QRect arrow = areaOf(picture(box), theme().imageColor(QStringLiteral("downArrow")));
    QVERIFY(arrow.left() > 90 && arrow.width() == arrow.height() && arrow.width() >= 8);
    QTest::mouseMove(box);
    QTRY_VERIFY(box->underMouse());
    QCOMPARE(pixel(box, middleLeft(box)), QColor(QStringLiteral("#FF6D00")));
    box->setEnabled(false);
    QCOMPARE(pixel(box, {3, 15}), QColor(QStringLiteral("#323232")));
    QVERIFY(areaOf(picture(box), QColor(QStringLiteral("#7F8182"))).width() > 10);
}

void TestAskSheet::comboBoxListMarksTheEntryUnderTheMouse_data()
{
    QTest::addColumn<bool>("styled");
    QTest::newRow("Qt's own delegate") << false;
    QTest::newRow("styled delegate") << true;
}

void TestAskSheet::comboBoxListMarksTheEntryUnderTheMouse()
{
    QFETCH(bool, styled);
    const ExpectedLog offscreenHasNoGrab(log(), QStringLiteral("This plugin does not support"), 0);
    auto *box = named<QComboBox>("styleSelect");
    box->setGeometry(40, 40, 120, 30);
    box->addItems({QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three")});
    if (styled)
        box->setItemDelegate(new QStyledItemDelegate(box));
    show();
    box->showPopup();
    QAbstractItemView *list = box->view();
    QTRY_VERIFY(list->isVisible());
    const QRect second = list->visualRect(list->model()->index(1, 0));
    QTest::mouseMove(list->viewport(), second.center());
    QTRY_COMPARE(list->currentIndex().row(), 1);
    const QPoint free = second.topRight() + QPoint(-3, 3);
    QCOMPARE(pixel(list->viewport(), free), QColor(QStringLiteral("#FF6D00")));
    QCOMPARE(pixel(list->viewport(), free + QPoint(0, second.height())), QColor(QStringLiteral("#161616")));
    QVERIFY(areaOf(picture(list->viewport()).copy(second), black).width() > 5);
    box->hidePopup();
}

QTEST_MAIN(TestAskSheet)
#include "tst_asksheet.moc"
