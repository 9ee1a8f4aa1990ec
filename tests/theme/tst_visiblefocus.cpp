#include "sheettest.h"

#include <QComboBox>
#include <QtTest>

using namespace tavro::aiassistant;

class TestVisibleFocus : public SheetTest {
    Q_OBJECT

private Q_SLOTS:
    void focusIsVisibleAndMovesNothing_data();
    void focusIsVisibleAndMovesNothing();
    void focusOfAComboBoxIsVisible();
};

void TestVisibleFocus::focusIsVisibleAndMovesNothing_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("checked");
    for (const char *name : {"copyButton", "modifyButton", "clearButton", "tryAgainButton", "sendMsg", "stop",
                             "download", "askAndAnwser", "generateImage", "onlineSearch", "modelBtn", "any"})
        QTest::newRow(name) << QByteArray(name) << false;
    for (const char *name : {"magnifierButton", "downloadButton", "close", "lastPicture", "nextPicture"})
        QTest::newRow(name) << QByteArray(name) << false;
    for (const char *name : {"askAndAnwser", "generateImage", "onlineSearch", "modelBtn"})
        QTest::addRow("%s, checked", name) << QByteArray(name) << true;
}

void TestVisibleFocus::focusIsVisibleAndMovesNothing()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, checked);
    QPushButton *made = button(name.constData(), {140, 44}, QStringLiteral("Text"));
    made->setCheckable(checked);
    made->setChecked(checked);
    show();
    const QImage before = picture(made);
    made->setFocus();
    QVERIFY(made->hasFocus());
    const QImage after = picture(made);
    // The frame has changed on all four sides, nothing else has.
    const int inset = checked ? 1 : 0;
    for (const QPoint &at : {QPoint(inset, 22), QPoint(139 - inset, 22), QPoint(70, inset), QPoint(70, 43 - inset)})
        QVERIFY(before.pixelColor(at) != after.pixelColor(at));
    const QRect inside = before.rect().adjusted(4, 4, -4, -4);
    const bool imageFillsButton = name == "magnifierButton" || name == "downloadButton";
    if (!imageFillsButton)
        QCOMPARE(after.copy(inside), before.copy(inside));
}

void TestVisibleFocus::focusOfAComboBoxIsVisible()
{
    auto *box = named<QComboBox>("ratioSelect");
    box->setGeometry(40, 40, 120, 30);
    show();
    const QColor before = pixel(box, middleLeft(box));
    box->setFocus();
    QCOMPARE(pixel(box, middleLeft(box)), QColor(QStringLiteral("#FF6D00")));
    QVERIFY(pixel(box, middleLeft(box)) != before);
}

QTEST_MAIN(TestVisibleFocus)
#include "tst_visiblefocus.moc"
