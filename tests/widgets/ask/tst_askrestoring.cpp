#include "asktest.h"
#include "panelsupport.h"
#include "widgets/askwidget_p.h"

#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTextEdit>
#include <QtTest>

class TestAskRestoring : public AskTest {
    Q_OBJECT

private Q_SLOTS:
    void resetReturnsToTheStart();
    void resetReportsTogglesThatWereOn();
    void resetEnablesTheArea();
    void modifiedTextQuestionComesBack();
    void retriedQuestionLeavesTheEdit();
    void unknownTypeLeavesTheMode();
    void longQuestionComesBackCut();
    void styleIsRestoredWhereItIsTheFirst_data();
    void styleIsRestoredWhereItIsTheFirst();
    void styleOfEqualEntriesGoesToTheLast();
    void pictureIsTriedAgain();
};

void TestAskRestoring::resetReturnsToTheStart()
{
    click("generateImage");
    chooser("ratioSelect")->setCurrentIndex(3);
    chooser("styleSelect")->setCurrentIndex(9);
    edit()->setPlainText(QStringLiteral("draft"));
    ask->reset();
    QVERIFY(button("askAndAnwser")->isChecked() && !button("generateImage")->isChecked());
    QVERIFY(isShown("modelBtn") && isShown("onlineSearch") && !isShown("ratioSelect") && !isShown("styleSelect"));
    QCOMPARE(edit()->placeholderText(), QStringLiteral("Ask me anything..."));
    QCOMPARE(written(), QString());
    QCOMPARE(chooser("ratioSelect")->currentIndex(), 0);
    QCOMPARE(chooser("styleSelect")->currentIndex(), 0);
}

void TestAskRestoring::resetReportsTogglesThatWereOn()
{
    click("modelBtn");
    QSignalSpy model(ask.get(), &AskWidget::sigActiveDeepSeekModel);
    QSignalSpy search(ask.get(), &AskWidget::sigActiverOnlineSearch);
    ask->reset();
    QVERIFY(!button("modelBtn")->isChecked() && !button("onlineSearch")->isChecked());
    QCOMPARE(model.count(), 1);
    QCOMPARE(model.at(0).at(0).toBool(), false);
    QCOMPARE(search.count(), 0);
}

void TestAskRestoring::resetEnablesTheArea()
{
    ask->setAskAreaEnable(false);
    ask->reset();
    QVERIFY(edit()->isEnabled() && isShown("sendMsg") && !isShown("stop"));
}

void TestAskRestoring::modifiedTextQuestionComesBack()
{
    click("generateImage");
    ask->setQuestion(QStringLiteral("once more"), QuestionType::Text, {}, true);
    QVERIFY(button("askAndAnwser")->isChecked() && isShown("modelBtn") && !isShown("styleSelect"));
    QCOMPARE(written(), QStringLiteral("once more"));
    QCOMPARE(cursor(), 9);
    QVERIFY(button("sendMsg")->isEnabled());
}

void TestAskRestoring::retriedQuestionLeavesTheEdit()
{
    edit()->setPlainText(QStringLiteral("draft"));
    ask->setQuestion(QStringLiteral("again"), QuestionType::Picture, {}, false);
    QVERIFY(button("generateImage")->isChecked() && isShown("styleSelect"));
    QCOMPARE(written(), QStringLiteral("draft"));
}

void TestAskRestoring::unknownTypeLeavesTheMode()
{
    click("generateImage");
    ask->setQuestion(QStringLiteral("what"), QuestionType::None, {}, true);
    QVERIFY(button("generateImage")->isChecked() && isShown("styleSelect"));
    QCOMPARE(written(), QStringLiteral("what"));
}

void TestAskRestoring::longQuestionComesBackCut()
{
    ask->setQuestion(characters(250), QuestionType::Text, {}, true);
    QCOMPARE(written(), characters(200));
    QCOMPARE(counter(), QStringLiteral("200/200"));
}

void TestAskRestoring::styleIsRestoredWhereItIsTheFirst_data()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<int>("index");
    QTest::newRow("first") << "Portrait Photography" << 0;
    QTest::newRow("second stays") << "Ink Painting" << 4;
    QTest::newRow("unknown stays") << "Cubism" << 4;
    QTest::newRow("none stays") << "" << 4;
}

void TestAskRestoring::styleIsRestoredWhereItIsTheFirst()
{
    QFETCH(QString, style);
    QFETCH(int, index);
    PictureGenerateInfo info;
    info.style = style.toStdString();
    chooser("ratioSelect")->setCurrentIndex(2);
    chooser("styleSelect")->setCurrentIndex(4);
    ask->setQuestion(QString(), QuestionType::Picture, info, false);
    QCOMPARE(chooser("styleSelect")->currentIndex(), index);
    chooser("styleSelect")->setCurrentIndex(4);
    ask->tryAgainPicture(QString(), info);
    QCOMPARE(chooser("styleSelect")->currentIndex(), index);
    QCOMPARE(chooser("ratioSelect")->currentIndex(), 2);
}

void TestAskRestoring::styleOfEqualEntriesGoesToTheLast()
{
    useLanguage(QString());
    ask->retranslate();
    chooser("styleSelect")->setCurrentIndex(4);
    ask->tryAgainPicture(QString(), {});
    QCOMPARE(chooser("styleSelect")->currentIndex(), 9);
}

void TestAskRestoring::pictureIsTriedAgain()
{
    QSignalSpy sent(ask.get(), &AskWidget::sigSendToGenrateImage);
    ask->tryAgainPicture(QStringLiteral("a harbour"), {});
    QVERIFY(button("generateImage")->isChecked() && isShown("ratioSelect") && !isShown("modelBtn"));
    QCOMPARE(written(), QStringLiteral("a harbour"));
    QCOMPARE(counter(), QStringLiteral("9/200"));
    QVERIFY(button("sendMsg")->isEnabled());
    QCOMPARE(sent.count(), 0);
}

QTEST_MAIN(TestAskRestoring)
#include "tst_askrestoring.moc"
