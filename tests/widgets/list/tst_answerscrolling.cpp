#include "answerlist.h"
#include "corpus.h"

#include <QApplication>
#include <QWheelEvent>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

/// The list as a user sees it: the end that it follows, items out of sight, the focus.
class TestAnswerScrolling : public QuietTest {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { loadListLanguages(); }
    void listFollowsWhatIsAdded();
    void listFollowsTheTyping();
    void enablingIsForTheItemsThatAreThere();
    void enablingReachesItemsOutOfSight();
    void tabVisitsTheItemsInOrder();
    void focusShowsTheItem();
    void wheelOverATextScrollsTheList();
};

void TestAnswerScrolling::listFollowsWhatIsAdded()
{
    List list;
    for (int count = 0; count < 30; ++count) {
        if (count % 5 == 4)
            list.addAnswerImageItem(pictureContext());
        else
            list.addQuestionItem(contextOf(chineseAnswer()));
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        QVERIFY2(list.isAtBottom(), qPrintable(QString::number(count)));
    }
    QVERIFY(list.bar()->maximum() > 0);
    list.bar()->setValue(0);
    list.addTextGeneratingItem();
    List::settleEvents();
    QVERIFY(list.isAtBottom());
}

void TestAnswerScrolling::listFollowsTheTyping()
{
    List list;
    for (int count = 0; count < 10; ++count)
        list.addQuestionItem(contextOf(englishAnswer()));
    list.addHeldAnswer(englishAnswer());
    while (AutoResizeTextBrowserAccess::of(*list.lastBrowser()).typingTimer.isActive()) {
        typeOne(*list.lastBrowser());
        QCoreApplication::processEvents();
        QVERIFY2(list.isAtBottom(), qPrintable(list.lastBrowser()->toPlainText()));
    }
}

void TestAnswerScrolling::enablingIsForTheItemsThatAreThere()
{
    List list;
    list.addQuestionItem(contextOf(QStringLiteral("before")));
    list.setItemsEnabled(false);
    const auto *const before = list.items().back()->findChild<QPushButton *>(QStringLiteral("copyButton"));
    QVERIFY(!before->isEnabled());
    list.addQuestionItem(contextOf(QStringLiteral("after")));
    const auto *const after = list.items().back()->findChild<QPushButton *>(QStringLiteral("copyButton"));
    QVERIFY(after->isEnabled());
    list.setItemsEnabled(false);
    QVERIFY(!after->isEnabled());
    list.setItemsEnabled(true);
    QVERIFY(before->isEnabled());
    QVERIFY(after->isEnabled());
}

void TestAnswerScrolling::enablingReachesItemsOutOfSight()
{
    List list;
    for (int count = 0; count < 40; ++count)
        list.addQuestionItem(contextOf(QStringLiteral("q")));
    List::settleEvents();
    list.setItemsEnabled(false);
    for (const auto *button : list.findChildren<QPushButton *>(QStringLiteral("modifyButton")))
        QVERIFY(!button->isEnabled());
    list.bar()->setValue(0);
    List::settleEvents();
    QEvent paint(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&list, &paint);
    const QImage seen = onScreen(list);
    list.repaint();
    QCOMPARE(seen, onScreen(list));
}

void TestAnswerScrolling::tabVisitsTheItemsInOrder()
{
    List list;
    list.addQuestionItem(contextOf(QStringLiteral("q")));
    list.addHeldAnswer(QStringLiteral("a"));
    list.typeWhole();
    QVERIFY(QTest::qWaitForWindowActive(&list));
    list.area()->setFocus();
    QStringList visited;
    for (int count = 0; count < 8; ++count) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        visited += QApplication::focusWidget()->objectName();
    }
    QCOMPARE(visited.join(u' '),
             QStringLiteral("textBrowser textBrowser copyButton modifyButton textBrowser copyButton tryAgainButton "
                            "clearButton"));
}

void TestAnswerScrolling::focusShowsTheItem()
{
    List list;
    for (int count = 0; count < 40; ++count)
        list.addQuestionItem(contextOf(QStringLiteral("q")));
    List::settleEvents();
    QVERIFY(QTest::qWaitForWindowActive(&list));
    QVERIFY(list.bar()->value() > 0);
    list.area()->setFocus();
    QTest::keyClick(list.area(), Qt::Key_Tab);
    QCOMPARE(list.bar()->value() < 60, true);
    QCOMPARE(list.area()->horizontalScrollBar()->value(), 0);
}

void TestAnswerScrolling::wheelOverATextScrollsTheList()
{
    List list;
    for (int count = 0; count < 40; ++count)
        list.addQuestionItem(contextOf(QStringLiteral("q")));
    List::settleEvents();
    const int before = list.bar()->value();
    QVERIFY(before > 0);
    const QPoint inText = list.lastBrowser()->mapTo(&list, QPoint(2, 2));
    QWheelEvent wheel(inText, list.mapToGlobal(inText), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    // Only a wheel from the platform goes on to the parents by itself.
    bool taken = false;
    for (QWidget *widget = list.lastBrowser()->viewport(); !taken && widget != nullptr; widget = widget->parentWidget())
        taken = QCoreApplication::sendEvent(widget, &wheel) && wheel.isAccepted();
    QVERIFY(list.bar()->value() < before);
}

QTEST_MAIN(TestAnswerScrolling)
#include "tst_answerscrolling.moc"
