#include "corpus.h"
#include "heldbrowser.h"

#include <QClipboard>
#include <QPointer>
#include <QScrollBar>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

namespace {

auto &partsOf(AutoResizeTextBrowser &browser)
{
    return AutoResizeTextBrowserAccess::of(browser);
}

} // namespace

class TestAutoResizeTextBrowser : public QuietTest {
    Q_OBJECT

private Q_SLOTS:
    void metaObjectHasItsMethodsInOrder();
    void isSetUp();
    void typingBeginsWithNothing();
    void typesOneCharacterATickByItself();
    void typingEndsWithTheWholeText();
    void emptyTextIsTypedAtOnce();
    void emptyTextTakesOneRow();
    void cursorBlinksWhileTyping();
    void cursorIsGoneOnceTheTextIsWhole();
    void textAtOnceEndsTyping();
    void stopKeepsWhatWasTyped_data();
    void stopKeepsWhatWasTyped();
    void stoppedBrowserTypesNoMore();
    void stopBeforeTheFirstCharacter();
    void sizeChangesInTheEventLoop();
    void resizerTakesTheSize();
    void markupIsShownAsItIs();
    void selectionSurvivesTyping();
    void isSelectedByKeyboard();
    void isSelectedByMouse();
    void selectionIsNotSeenInAnInactiveWindow();
    void wheelIsLeftToTheList();
    void doesNotScroll();
    void scrollBarsGoWithTheBrowser();
    void paintedPartlyLikeWhole_data();
    void paintedPartlyLikeWhole();
};

void TestAutoResizeTextBrowser::metaObjectHasItsMethodsInOrder()
{
    const QMetaObject &meta = AutoResizeTextBrowser::staticMetaObject;
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        methods += QString::fromLatin1(meta.method(index).methodSignature());
    QCOMPARE(methods.join(u' '),
             QStringLiteral("sigTypingFinished() sigTyping() slotTypeTimeout() slotCursorTimeout()"));
}

void TestAutoResizeTextBrowser::isSetUp()
{
    AutoResizeTextBrowser browser;
    QCOMPARE(browser.document()->documentMargin(), 0.0);
    QCOMPARE(browser.document()->textWidth(), 690.0);
    QCOMPARE(browser.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(browser.verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(browser.contextMenuPolicy(), Qt::NoContextMenu);
    QCOMPARE(browser.textInteractionFlags(), Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    QVERIFY(browser.isReadOnly());
    QCOMPARE(browser.palette().color(QPalette::Inactive, QPalette::HighlightedText), QColor(255, 255, 255));
    QCOMPARE(partsOf(browser).typingTimer.interval(), 50);
    QCOMPARE(partsOf(browser).cursorTimer.interval(), 500);
    QVERIFY(partsOf(browser).cursorVisible);
    QVERIFY(!partsOf(browser).stopped);
}

void TestAutoResizeTextBrowser::typingBeginsWithNothing()
{
    AutoResizeTextBrowser browser;
    browser.showText(QStringLiteral("before"));
    browser.typeText(QStringLiteral("after"));
    QCOMPARE(browser.toPlainText(), QString());
    QVERIFY(partsOf(browser).typingTimer.isActive());
    QVERIFY(partsOf(browser).cursorTimer.isActive());
}

void TestAutoResizeTextBrowser::typesOneCharacterATickByItself()
{
    AutoResizeTextBrowser browser;
    QSignalSpy typing(&browser, &AutoResizeTextBrowser::sigTyping);
    QSignalSpy finished(&browser, &AutoResizeTextBrowser::sigTypingFinished);
    partsOf(browser).typingTimer.setInterval(1);
    browser.typeText(QStringLiteral("clip"));
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(typing.count(), 4);
    QCOMPARE(browser.toPlainText(), QStringLiteral("clip"));
}

void TestAutoResizeTextBrowser::typingEndsWithTheWholeText()
{
    AutoResizeTextBrowser browser;
    holdTimers(browser);
    QSignalSpy typing(&browser, &AutoResizeTextBrowser::sigTyping);
    QSignalSpy finished(&browser, &AutoResizeTextBrowser::sigTypingFinished);
    browser.typeText(QStringLiteral("ab"));
    typeOne(browser);
    QCOMPARE(browser.toPlainText(), QStringLiteral("a|"));
    typeOne(browser);
    QCOMPARE(browser.toPlainText(), QStringLiteral("ab|"));
    QCOMPARE(typing.count(), 2);
    QCOMPARE(finished.count(), 0);
    typeOne(browser);
    QCOMPARE(browser.toPlainText(), QStringLiteral("ab"));
    QCOMPARE(typing.count(), 2);
    QCOMPARE(finished.count(), 1);
    QVERIFY(!partsOf(browser).typingTimer.isActive());
    QVERIFY(!partsOf(browser).cursorTimer.isActive());
}

void TestAutoResizeTextBrowser::emptyTextIsTypedAtOnce()
{
    AutoResizeTextBrowser browser;
    holdTimers(browser);
    QSignalSpy typing(&browser, &AutoResizeTextBrowser::sigTyping);
    QSignalSpy finished(&browser, &AutoResizeTextBrowser::sigTypingFinished);
    browser.typeText(QString());
    typeOne(browser);
    QCOMPARE(typing.count(), 0);
    QCOMPARE(finished.count(), 1);
}

void TestAutoResizeTextBrowser::emptyTextTakesOneRow()
{
    AutoResizeTextBrowser browser;
    browser.showText(QString());
    QCoreApplication::processEvents();
    QCOMPARE(browser.height(), browser.fontMetrics().lineSpacing());
}

void TestAutoResizeTextBrowser::cursorBlinksWhileTyping()
{
    AutoResizeTextBrowser browser;
    holdTimers(browser);
    browser.typeText(QStringLiteral("abc"));
    blink(browser);
    QCOMPARE(browser.toPlainText(), QString());
    blink(browser);
    QCOMPARE(browser.toPlainText(), QStringLiteral("|"));
    typeOne(browser);
    blink(browser);
    QCOMPARE(browser.toPlainText(), QStringLiteral("a"));
    typeOne(browser);
    QCOMPARE(browser.toPlainText(), QStringLiteral("ab"));
    blink(browser);
    QCOMPARE(browser.toPlainText(), QStringLiteral("ab|"));
}

void TestAutoResizeTextBrowser::cursorIsGoneOnceTheTextIsWhole()
{
    AutoResizeTextBrowser browser;
    browser.showText(QStringLiteral("whole"));
    blink(browser);
    QCOMPARE(browser.toPlainText(), QStringLiteral("whole"));
    blink(browser);
    QCOMPARE(browser.toPlainText(), QStringLiteral("whole"));
}

void TestAutoResizeTextBrowser::textAtOnceEndsTyping()
{
    AutoResizeTextBrowser browser;
    holdTimers(browser);
    QSignalSpy finished(&browser, &AutoResizeTextBrowser::sigTypingFinished);
    browser.typeText(QStringLiteral("typed"));
    typeOne(browser);
    browser.showText(QStringLiteral("at once"));
    QCOMPARE(browser.toPlainText(), QStringLiteral("at once"));
    QCOMPARE(partsOf(browser).shownCount, 7);
    QVERIFY(!partsOf(browser).cursorVisible);
    QVERIFY(!partsOf(browser).typingTimer.isActive());
    QVERIFY(!partsOf(browser).cursorTimer.isActive());
    QCOMPARE(finished.count(), 0);
}

void TestAutoResizeTextBrowser::stopKeepsWhatWasTyped_data()
{
    QTest::addColumn<int>("typed");
    QTest::addColumn<bool>("blinked");
    QTest::newRow("one character") << 1 << false;
    QTest::newRow("in the middle") << 40 << false;
    QTest::newRow("in the middle, cursor off") << 40 << true;
    QTest::newRow("behind a line") << englishAnswer().indexOf(u'\n') + 1 << false;
    QTest::newRow("the last character") << englishAnswer().size() << false;
    QTest::newRow("finished") << englishAnswer().size() + 1 << false;
}

void TestAutoResizeTextBrowser::stopKeepsWhatWasTyped()
{
    QFETCH(int, typed);
    QFETCH(bool, blinked);
    AutoResizeTextBrowser browser;
    holdTimers(browser);
    browser.typeText(englishAnswer());
    for (int count = 0; count < typed; ++count)
        typeOne(browser);
    if (blinked)
        blink(browser);
    QSignalSpy finished(&browser, &AutoResizeTextBrowser::sigTypingFinished);
    browser.stopTyping();
    QCoreApplication::processEvents();
    AutoResizeTextBrowser expected;
    expected.showText(englishAnswer().left(typed));
    QCoreApplication::processEvents();
    QCOMPARE(browser.toPlainText(), englishAnswer().left(typed));
    QCOMPARE(browser.size(), expected.size());
    QCOMPARE(finished.count(), 0);
    QVERIFY(!partsOf(browser).typingTimer.isActive());
    QVERIFY(!partsOf(browser).cursorTimer.isActive());
}

void TestAutoResizeTextBrowser::stoppedBrowserTypesNoMore()
{
    AutoResizeTextBrowser browser;
    holdTimers(browser);
    browser.typeText(QStringLiteral("abc"));
    typeOne(browser);
    browser.stopTyping();
    QSignalSpy typing(&browser, &AutoResizeTextBrowser::sigTyping);
    typeOne(browser);
    blink(browser);
    browser.stopTyping();
    QCOMPARE(browser.toPlainText(), QStringLiteral("a"));
    QCOMPARE(typing.count(), 0);
}

void TestAutoResizeTextBrowser::stopBeforeTheFirstCharacter()
{
    AutoResizeTextBrowser browser;
    holdTimers(browser);
    browser.typeText(QStringLiteral("abc"));
    blink(browser);
    blink(browser);
    browser.stopTyping();
    QCOMPARE(browser.toPlainText(), QString());
}

void TestAutoResizeTextBrowser::sizeChangesInTheEventLoop()
{
    AutoResizeTextBrowser browser;
    browser.showText(QStringLiteral("a line"));
    QCoreApplication::processEvents();
    const QSize before = browser.size();
    browser.showText(QStringLiteral("a line and\nanother one"));
    QCOMPARE(browser.size(), before);
    QCoreApplication::processEvents();
    QCOMPARE(browser.height(), 2 * before.height());
    QCOMPARE(browser.minimumSize(), browser.maximumSize());
}

void TestAutoResizeTextBrowser::resizerTakesTheSize()
{
    AutoResizeTextBrowser browser;
    const QSize before = browser.size();
    QSize taken;
    browser.setResizer([&taken](const QSize &size) { taken = size; });
    browser.showText(QStringLiteral("a line"));
    QCoreApplication::processEvents();
    QCOMPARE(browser.size(), before);
    QCOMPARE(taken.height(), browser.fontMetrics().lineSpacing());
}

void TestAutoResizeTextBrowser::markupIsShownAsItIs()
{
    AutoResizeTextBrowser browser;
    browser.showText(QStringLiteral("<b>bold</b>"));
    QCOMPARE(browser.toPlainText(), QStringLiteral("<b>bold</b>"));
}

void TestAutoResizeTextBrowser::selectionSurvivesTyping()
{
    AutoResizeTextBrowser browser;
    holdTimers(browser);
    browser.typeText(QStringLiteral("select me while I type"));
    for (int count = 0; count < 9; ++count)
        typeOne(browser);
    QTextCursor cursor = browser.textCursor();
    cursor.setPosition(0);
    cursor.setPosition(6, QTextCursor::KeepAnchor);
    browser.setTextCursor(cursor);
    typeOne(browser);
    blink(browser);
    typeOne(browser);
    QCOMPARE(browser.textCursor().selectedText(), QStringLiteral("select"));
}

void TestAutoResizeTextBrowser::isSelectedByKeyboard()
{
    AutoResizeTextBrowser browser;
    browser.showText(QStringLiteral("two words"));
    browser.show();
    QVERIFY(QTest::qWaitForWindowActive(&browser));
    QTest::keyClick(&browser, Qt::Key_Right, Qt::ShiftModifier | Qt::ControlModifier);
    QCOMPARE(browser.textCursor().selectedText(), QStringLiteral("two "));
    QTest::keyClick(&browser, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("two "));
    QTest::keyClick(&browser, Qt::Key_X);
    QCOMPARE(browser.toPlainText(), QStringLiteral("two words"));
}

void TestAutoResizeTextBrowser::isSelectedByMouse()
{
    AutoResizeTextBrowser browser;
    browser.showText(QStringLiteral("two words"));
    browser.show();
    QVERIFY(QTest::qWaitForWindowActive(&browser));
    QTest::mouseDClick(browser.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(3, browser.height() / 2));
    QCOMPARE(browser.textCursor().selectedText(), QStringLiteral("two"));
}

void TestAutoResizeTextBrowser::selectionIsNotSeenInAnInactiveWindow()
{
    const AutoResizeTextBrowser browser;
    QCOMPARE(browser.palette().brush(QPalette::Inactive, QPalette::Highlight).color().alpha(), 0);
    QVERIFY(browser.palette().brush(QPalette::Active, QPalette::Highlight).color().alpha() > 0);
}

void TestAutoResizeTextBrowser::wheelIsLeftToTheList()
{
    AutoResizeTextBrowser browser;
    browser.showText(chineseAnswer());
    QCoreApplication::processEvents();
    const QSize before = browser.size();
    for (const Qt::KeyboardModifiers modifiers :
         {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ControlModifier)}) {
        QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, -120), Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(browser.viewport(), &wheel);
        QVERIFY(!wheel.isAccepted());
    }
    QCoreApplication::processEvents();
    QCOMPARE(browser.size(), before);
}

void TestAutoResizeTextBrowser::doesNotScroll()
{
    AutoResizeTextBrowser browser;
    browser.showText(QStringLiteral("short"));
    browser.show();
    QCoreApplication::processEvents();
    QCOMPARE(browser.horizontalScrollBar()->maximum(), 0);
    QCOMPARE(browser.verticalScrollBar()->maximum(), 0);
}

// They are not its children, lest they take part in the panel's style.
void TestAutoResizeTextBrowser::scrollBarsGoWithTheBrowser()
{
    QWidget panel;
    const int before = QApplication::allWidgets().size();
    auto *const browser = new AutoResizeTextBrowser(&panel);
    QVERIFY(browser->findChildren<QScrollBar *>().isEmpty());
    const QPointer<QScrollBar> down = browser->verticalScrollBar();
    const QPointer<QScrollBar> across = browser->horizontalScrollBar();
    browser->showText(QStringLiteral("some text\nin lines"));
    panel.show();
    QVERIFY(down && across && !down->isVisible() && !across->isVisible());
    delete browser;
    QVERIFY(!down && !across);
    QCOMPARE(QApplication::allWidgets().size(), before);
}

void TestAutoResizeTextBrowser::paintedPartlyLikeWhole_data()
{
    QTest::addColumn<QString>("text");
    for (const CorpusText &row : corpus())
        QTest::newRow(row.name) << row.text;
}

// What the ticks left on the screen, with only a part painted each time, beside a whole painting.
void TestAutoResizeTextBrowser::paintedPartlyLikeWhole()
{
    QFETCH(QString, text);
    QWidget window;
    window.resize(720, 400);
    AutoResizeTextBrowser browser(&window);
    holdTimers(browser);
    browser.typeText(text);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    for (int count = 1; count <= text.size(); ++count) {
        typeOne(browser);
        if (count % 7 == 3)
            blink(browser);
        QEvent paint(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&window, &paint);
        if (count % 13 != 0 && count != text.size())
            continue;
        const QImage seen = onScreen(window);
        window.repaint();
        QCOMPARE(seen, onScreen(window));
    }
}

QTEST_MAIN(TestAutoResizeTextBrowser)
#include "tst_autoresizetextbrowser.moc"
