#include "asktest.h"
#include "panelsupport.h"
#include "widgets/askwidget_p.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTextEdit>
#include <QtTest>

namespace {

const auto smile = QString::fromUcs4(U"\U0001F600");

} // namespace

class TestAskEdit : public AskTest {
    Q_OBJECT

private Q_SLOTS:
    void sendIsPossibleWithTextOnly();
    void emptyEditIsNotSentByReturn();
    void typingEndsAt200();
    void typingInTheMiddleEndsAt200();
    void pastingKeepsTheFirst200();
    void pastedFormatsAreDropped();
    void inputMethodEndsAt200();
    void surrogatePairIsNeverCut_data();
    void surrogatePairIsNeverCut();
    void textIsSentByKey_data();
    void textIsSentByKey();
    void shiftReturnBreaksTheLine_data();
    void shiftReturnBreaksTheLine();
    void returnWhileGeneratingDoesNothing();
    void otherKeysReachTheEdit();
};

void TestAskEdit::sendIsPossibleWithTextOnly()
{
    QVERIFY(!button("sendMsg")->isEnabled());
    QCOMPARE(sendOpacity(), 0.4);
    QTest::keyClicks(edit(), QStringLiteral("a"));
    QVERIFY(button("sendMsg")->isEnabled() && qFuzzyCompare(sendOpacity(), 1.0));
    QCOMPARE(counter(), QStringLiteral("1/200"));
    QTest::keyClick(edit(), Qt::Key_Backspace);
    QVERIFY(!button("sendMsg")->isEnabled() && qFuzzyCompare(sendOpacity(), 0.4));
    QCOMPARE(counter(), QStringLiteral("0/200"));
}

void TestAskEdit::emptyEditIsNotSentByReturn()
{
    QSignalSpy sent(ask.get(), &AskWidget::sigSendToGenerateText);
    QTest::keyClick(edit(), Qt::Key_Return);
    click("sendMsg");
    QCOMPARE(sent.count(), 0);
    QCOMPARE(written(), QString());
    QVERIFY(isShown("sendMsg"));
}

void TestAskEdit::typingEndsAt200()
{
    edit()->setPlainText(characters(198));
    edit()->moveCursor(QTextCursor::End);
    QTest::keyClicks(edit(), QStringLiteral("abc"));
    QCOMPARE(written(), characters(198) + QStringLiteral("ab"));
    QCOMPARE(cursor(), 200);
    QCOMPARE(counter(), QStringLiteral("200/200"));
    QVERIFY(button("sendMsg")->isEnabled());
}

void TestAskEdit::typingInTheMiddleEndsAt200()
{
    edit()->setPlainText(characters(200));
    edit()->moveCursor(QTextCursor::Start);
    QTest::keyClicks(edit(), QStringLiteral("a"));
    QCOMPARE(written(), QStringLiteral("a") + characters(199));
    QCOMPARE(cursor(), 200);
}

void TestAskEdit::pastingKeepsTheFirst200()
{
    QGuiApplication::clipboard()->setText(characters(200) + QString(50, QLatin1Char('y')));
    QTest::keyClick(edit(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(written(), characters(200));
    QCOMPARE(cursor(), 200);
    QCOMPARE(counter(), QStringLiteral("200/200"));
}

void TestAskEdit::pastedFormatsAreDropped()
{
    auto *const formatted = new QMimeData;
    formatted->setHtml(QStringLiteral("<b>bold</b>"));
    formatted->setText(QStringLiteral("bold"));
    QGuiApplication::clipboard()->setMimeData(formatted);
    QTest::keyClick(edit(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(written(), QStringLiteral("bold"));
    QVERIFY(!edit()->textCursor().charFormat().font().bold());
}

void TestAskEdit::inputMethodEndsAt200()
{
    edit()->setPlainText(characters(199));
    edit()->moveCursor(QTextCursor::End);
    QInputMethodEvent composing(QStringLiteral("zhong"), {});
    QCoreApplication::sendEvent(edit(), &composing);
    QCOMPARE(written(), characters(199));
    QInputMethodEvent committed;
    committed.setCommitString(QStringLiteral("中文"));
    QCoreApplication::sendEvent(edit(), &committed);
    QCOMPARE(written(), characters(199) + QStringLiteral("中"));
    QCOMPARE(counter(), QStringLiteral("200/200"));
    QCOMPARE(cursor(), 200);
}

void TestAskEdit::surrogatePairIsNeverCut_data()
{
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("kept");
    QTest::newRow("pair over the limit") << characters(199) + smile + characters(9) << characters(199);
    QTest::newRow("pair up to the limit") << characters(198) + smile + characters(9) << characters(198) + smile;
    QTest::newRow("only pairs") << smile.repeated(101) << smile.repeated(100);
    QTest::newRow("pairs one off") << QStringLiteral("x") + smile.repeated(101)
                                   << QStringLiteral("x") + smile.repeated(99);
}

void TestAskEdit::surrogatePairIsNeverCut()
{
    QFETCH(QString, pasted);
    QFETCH(QString, kept);
    QGuiApplication::clipboard()->setText(pasted);
    QTest::keyClick(edit(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(written(), kept);
    QCOMPARE(counter(), QStringLiteral("%1/200").arg(kept.size()));
    QCOMPARE(cursor(), kept.size());
}

void TestAskEdit::textIsSentByKey_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("Return") << int(Qt::Key_Return) << int(Qt::NoModifier);
    QTest::newRow("Enter") << int(Qt::Key_Enter) << int(Qt::KeypadModifier);
    QTest::newRow("Ctrl+Return") << int(Qt::Key_Return) << int(Qt::ControlModifier);
}

void TestAskEdit::textIsSentByKey()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QSignalSpy sent(ask.get(), &AskWidget::sigSendToGenerateText);
    QTest::keyClicks(edit(), QStringLiteral("hello"));
    QTest::keyClick(edit(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(sent.count(), 1);
    QCOMPARE(sent.at(0).at(0).toString(), QStringLiteral("hello"));
    QCOMPARE(written(), QString());
}

void TestAskEdit::shiftReturnBreaksTheLine_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
}

void TestAskEdit::shiftReturnBreaksTheLine()
{
    QFETCH(int, key);
    QSignalSpy sent(ask.get(), &AskWidget::sigSendToGenerateText);
    QTest::keyClicks(edit(), QStringLiteral("ab"));
    QTest::keyClick(edit(), Qt::Key_Left);
    QTest::keyClick(edit(), Qt::Key(key), Qt::ShiftModifier);
    QCOMPARE(written(), QStringLiteral("a\nb"));
    QCOMPARE(counter(), QStringLiteral("3/200"));
    QCOMPARE(sent.count(), 0);
}

void TestAskEdit::returnWhileGeneratingDoesNothing()
{
    QSignalSpy sent(ask.get(), &AskWidget::sigSendToGenerateText);
    edit()->setPlainText(QStringLiteral("next"));
    ask->setAskAreaEnable(false);
    edit()->setEnabled(true); // Qt delivers no key to a disabled edit
    QTest::keyClick(edit(), Qt::Key_Return);
    QTest::keyClick(edit(), Qt::Key_Enter);
    QCOMPARE(sent.count(), 0);
    QCOMPARE(written(), QStringLiteral("next"));
}

void TestAskEdit::otherKeysReachTheEdit()
{
    QTest::keyClicks(edit(), QStringLiteral("a b"));
    QTest::keyClick(edit(), Qt::Key_Home);
    QTest::keyClick(edit(), Qt::Key_Delete);
    QTest::keyClick(edit(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(written(), QStringLiteral("a b"));
}

QTEST_MAIN(TestAskEdit)
#include "tst_askedit.moc"
