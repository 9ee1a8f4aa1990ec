#include "conversation.h"
#include "support/waiting.h"
#include "widgets/answerwidget.h"
#include "widgets/askwidget.h"
#include "widgets/mainwidget.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextEdit>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

/// The panel without a mouse.
class TestKeyboard : public ConversationTest {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void tabVisitsAllInOrder_data();
    void tabVisitsAllInOrder();
    void questionModeHasItsOwnControls();
    void disabledControlsArePassedOver();
    void keyPressesTheButton_data();
    void keyPressesTheButton();
    void arrowChoosesTheMode();
    void choosersAreOperated();
    void focusIsSeen_data();
    void focusIsSeen();
    void clickIntoTheConversationDrawsNoRing();
    void viewerIsOperated();

private:
    QStringList walk(Qt::Key key);
    QWidget *control(const QString &name) const;
    QWidget *focused(const QString &name) const; ///< null where it does not take the keyboard
    QImage pictureOf(const QWidget &widget) const;
};

namespace {

QStringList words(const char *line)
{
    return QString::fromLatin1(line).split(QStringLiteral(", "));
}

// From the edit on, which has the keyboard after each answer: what belongs to the question, then the conversation from
// top to bottom, then the modes.
const char *const order = "askEdit, ratioSelect, styleSelect, sendMsg, scrollArea, textBrowser 1, "
                          "textBrowser 2, copyButton 1, modifyButton 1, textBrowser 3, copyButton 2, tryAgainButton, "
                          "textBrowser 4, copyButton 3, modifyButton 2, "
                          "PixmapCellLabel 1, magnifierButton 1, downloadButton 1, modifyButton 3, "
                          "PixmapCellLabel 2, magnifierButton 2, downloadButton 2, modifyButton 4, "
                          "clearButton, generateImage, askEdit";
// A thumbnail's buttons show when the keyboard has come to it, so they are not there on the way back.
const char *const orderBack = "askEdit, generateImage, clearButton, PixmapCellLabel 2, PixmapCellLabel 1, "
                              "modifyButton 2, copyButton 3, textBrowser 4, tryAgainButton, copyButton 2, "
                              "textBrowser 3, modifyButton 1, copyButton 1, textBrowser 2, textBrowser 1, scrollArea, "
                              "sendMsg, styleSelect, ratioSelect, askEdit";

} // namespace

void TestKeyboard::initTestCase()
{
    QApplication::setCursorFlashTime(0); // a cursor that blinks is not always seen
}

QStringList TestKeyboard::walk(Qt::Key key)
{
    child("askEdit")->setFocus();
    QStringList visited{nameOf(QApplication::focusWidget())};
    constexpr int enough = 100;
    do {
        QTest::keyClick(QApplication::focusWidget(), key);
        visited << nameOf(QApplication::focusWidget());
    } while (visited.last() != visited.first() && visited.size() < enough);
    return visited;
}

QWidget *TestKeyboard::control(const QString &name) const
{
    const QList<QWidget *> all = panel->window().findChildren<QWidget *>();
    for (QWidget *const widget : all) {
        if (!widget->isHidden() && nameOf(widget) == name)
            return widget;
    }
    return nullptr;
}

QWidget *TestKeyboard::focused(const QString &name) const
{
    QWidget *const widget = control(name);
    // A thumbnail has its buttons while the keyboard is on it.
    if (widget && !widget->isVisible())
        widget->parentWidget()->parentWidget()->setFocus(Qt::TabFocusReason);
    if (widget)
        widget->setFocus(Qt::TabFocusReason);
    return widget && widget->hasFocus() ? widget : nullptr;
}

void TestKeyboard::tabVisitsAllInOrder_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("Tab") << Qt::Key_Tab << words(order);
    QTest::newRow("Shift+Tab") << Qt::Key_Backtab << words(orderBack);
}

void TestKeyboard::tabVisitsAllInOrder()
{
    QFETCH(Qt::Key, key);
    QFETCH(QStringList, expected);
    child<QTextEdit>("askEdit")->setPlainText(QStringLiteral("text"));
    QCOMPARE(walk(key), expected);
    QCOMPARE(child<QTextEdit>("askEdit")->toPlainText(), QStringLiteral("text"));
}

void TestKeyboard::questionModeHasItsOwnControls()
{
    panel->ask().reset();
    const QStringList visited = walk(Qt::Key_Tab);
    // Without a text there is nothing to send.
    QCOMPARE(visited.mid(0, 4).join(QStringLiteral(", ")),
             QStringLiteral("askEdit, modelBtn, onlineSearch, scrollArea"));
    QCOMPARE(visited.at(visited.size() - 2), QStringLiteral("askAndAnwser"));
}

void TestKeyboard::disabledControlsArePassedOver()
{
    panel->panel().setAskAndAnswerAreaEnable(false);
    child("stop")->setFocus();
    QStringList visited;
    for (int step = 0; step < 30; ++step) {
        visited << nameOf(QApplication::focusWidget());
        QVERIFY2(QApplication::focusWidget()->isEnabled(), qPrintable(visited.last()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QVERIFY(visited.contains(QStringLiteral("textBrowser 3")));
    QVERIFY(visited.contains(QStringLiteral("PixmapCellLabel 1")));
    QVERIFY(visited.lastIndexOf(QStringLiteral("stop")) > 0);
}

void TestKeyboard::keyPressesTheButton_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<Qt::Key>("key");
    const std::pair<const char *, Qt::Key> keys[] = {
        {"Space", Qt::Key_Space}, {"Return", Qt::Key_Return}, {"Enter", Qt::Key_Enter}};
    for (const char *const name :
         {"sendMsg", "stop", "clearButton", "copyButton 1", "modifyButton 1", "tryAgainButton", "magnifierButton 1",
          "downloadButton 2", "modifyButton 4", "modelBtn", "onlineSearch"}) {
        for (const auto &[text, key] : keys)
            QTest::addRow("%s, %s", name, text) << QString::fromLatin1(name) << key;
    }
}

void TestKeyboard::keyPressesTheButton()
{
    QFETCH(QString, name);
    QFETCH(Qt::Key, key);
    // What a press is followed by is not looked at here, and there is no service.
    panel->ask().disconnect();
    panel->answers().disconnect();
    if (name == QLatin1String("stop"))
        panel->ask().setAskAreaEnable(false);
    else if (name == QLatin1String("sendMsg"))
        child<QTextEdit>("askEdit")->setPlainText(QStringLiteral("text"));
    else if (name == QLatin1String("modelBtn") || name == QLatin1String("onlineSearch"))
        panel->ask().reset();
    auto *const button = qobject_cast<QPushButton *>(focused(name));
    QVERIFY(button);
    const bool wasChecked = button->isChecked();
    QSignalSpy clicked(button, &QPushButton::clicked);
    QTest::keyClick(button, key);
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(button->isChecked(), button->isCheckable() && !wasChecked);
}

void TestKeyboard::arrowChoosesTheMode()
{
    QVERIFY(focused(QStringLiteral("generateImage")));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
    QVERIFY(child<QPushButton>("askAndAnwser")->isChecked());
    QVERIFY(child("askAndAnwser")->hasFocus());
    QVERIFY(child("modelBtn")->isVisible());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    QVERIFY(child<QPushButton>("generateImage")->isChecked());
    QVERIFY(child("ratioSelect")->isVisible());
}

void TestKeyboard::choosersAreOperated()
{
    for (const char *const name : {"ratioSelect", "styleSelect"}) {
        auto *const chooser = qobject_cast<QComboBox *>(focused(QLatin1String(name)));
        QVERIFY(chooser);
        QTest::keyClick(chooser, Qt::Key_Down);
        QCOMPARE(chooser->currentIndex(), 1);
        QTest::keyClick(chooser, Qt::Key_Space);
        QTRY_VERIFY(chooser->view()->isVisible());
        QTest::keyClick(chooser->view(), Qt::Key_Down);
        QTest::keyClick(chooser->view(), Qt::Key_Return);
        QTRY_VERIFY(!chooser->view()->isVisible());
        QCOMPARE(chooser->currentIndex(), 2);
    }
}

void TestKeyboard::focusIsSeen_data()
{
    QTest::addColumn<QString>("name");
    QStringList names = words(order);
    names.removeLast();
    for (const char *const name : {"askAndAnwser", "modelBtn", "onlineSearch", "stop"})
        names << QString::fromLatin1(name);
    for (const QString &name : qAsConst(names))
        QTest::newRow(qPrintable(name)) << name;
}

void TestKeyboard::focusIsSeen()
{
    QFETCH(QString, name);
    if (name == QLatin1String("stop"))
        panel->ask().setAskAreaEnable(false);
    else if (name == QLatin1String("sendMsg"))
        child<QTextEdit>("askEdit")->setPlainText(QStringLiteral("text"));
    else if (!control(name))
        panel->ask().reset(); // to the other mode
    QWidget *const widget = focused(name);
    QVERIFY(widget);
    const QImage with = pictureOf(*widget);
    const auto *const bar = widget->parentWidget();
    if (bar->objectName() == QLatin1String("imageButtonFrame"))
        bar->parentWidget()->setFocus(Qt::TabFocusReason);
    else
        panel->window().setFocus();
    QVERIFY(!widget->hasFocus());
    QVERIFY(pictureOf(*widget) != with);
}

QImage TestKeyboard::pictureOf(const QWidget &widget) const
{
    const QRect place(widget.mapTo(&panel->window(), QPoint()), widget.size());
    return panel->picture().copy(place);
}

void TestKeyboard::clickIntoTheConversationDrawsNoRing()
{
    auto *const area = child<QWidget>("scrollArea");
    child("askEdit")->setFocus();
    const QImage before = pictureOf(*area);
    QTest::mouseClick(child("itemsWidget"), Qt::LeftButton, Qt::NoModifier, QPoint(780, 5));
    QVERIFY(area->hasFocus());
    QCOMPARE(pictureOf(*area), before);
}

void TestKeyboard::viewerIsOperated()
{
    panel->openViewer(samplePicture(Qt::red), {1920, 1080});
    QWidget &viewer = panel->window();
    QSignalSpy downloads(qobject_cast<PictureViewerWidget *>(&viewer), &PictureViewerWidget::sigDownloadPicture);
    QStringList visited;
    for (int step = 0; step < 4; ++step) {
        visited << nameOf(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(visited.join(QStringLiteral(", ")), QStringLiteral("pictureViewer, close, download, close"));
    QVERIFY(viewer.findChild<QWidget *>(QStringLiteral("download"))->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(downloads.count(), 2);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(!viewer.isVisible());
    panel->panel().activateWindow();
    QTRY_VERIFY(panel->panel().isActiveWindow());
    viewer.show();
    viewer.activateWindow();
    QTRY_VERIFY(viewer.isActiveWindow());
    QVERIFY(viewer.hasFocus());
    QTest::keyClick(&viewer, Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY(!viewer.isVisible());
}

QTEST_MAIN(TestKeyboard)
#include "tst_keyboard.moc"
