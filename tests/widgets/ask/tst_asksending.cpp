#include "asktest.h"
#include "panelsupport.h"
#include "widgets/askwidget_p.h"

#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTextEdit>
#include <QtTest>

#include <optional>

class TestAskSending : public AskTest {
    Q_OBJECT

private Q_SLOTS:
    void modeButtonsSwitch();
    void modeButtonsSwitchByKeyboard();
    void unknownModeChangesNothing();
    void textIsSent();
    void pictureIsSentInItsSize_data();
    void pictureIsSentInItsSize();
    void pictureWithoutRatioIsSquare();
    void senderMayGoWhileSending();
    void stopReports();
    void togglesReport();
    void disabledAreaCanBeStopped();
    void choicesSurviveTheWaiting();
    void focusWaitsAndComesBack();
    void focusElsewhereIsLeftAlone();
};

void TestAskSending::modeButtonsSwitch()
{
    click("generateImage");
    QVERIFY(button("generateImage")->isChecked() && !button("askAndAnwser")->isChecked());
    QVERIFY(!isShown("modelBtn") && !isShown("onlineSearch"));
    QVERIFY(isShown("ratioSelect") && isShown("styleSelect"));
    QVERIFY(edit()->placeholderText().startsWith(QStringLiteral("Describe the scene")));
    click("askAndAnwser");
    QVERIFY(button("askAndAnwser")->isChecked() && !button("generateImage")->isChecked());
    QVERIFY(isShown("modelBtn") && isShown("onlineSearch"));
    QVERIFY(!isShown("ratioSelect") && !isShown("styleSelect"));
    QCOMPARE(edit()->placeholderText(), QStringLiteral("Ask me anything..."));
}

void TestAskSending::modeButtonsSwitchByKeyboard()
{
    button("askAndAnwser")->setFocus(Qt::TabFocusReason);
    QTest::keyClick(button("askAndAnwser"), Qt::Key_Right);
    QVERIFY(button("generateImage")->hasFocus());
    QTest::keyClick(button("generateImage"), Qt::Key_Space);
    QVERIFY(button("generateImage")->isChecked());
    QVERIFY(isShown("styleSelect"));
}

void TestAskSending::unknownModeChangesNothing()
{
    click("generateImage");
    QPushButton stranger;
    AskWidgetAccess::of(*ask).slotGroupBtnClicked(&stranger);
    QVERIFY(isShown("styleSelect") && !isShown("modelBtn"));
}

void TestAskSending::textIsSent()
{
    QSignalSpy sent(ask.get(), &AskWidget::sigSendToGenerateText);
    QSignalSpy sentImages(ask.get(), &AskWidget::sigSendToGenrateImage);
    QString writtenMeanwhile;
    bool stopShownMeanwhile = false;
    connect(ask.get(), &AskWidget::sigSendToGenerateText, this, [&] {
        writtenMeanwhile = written();
        stopShownMeanwhile = isShown("stop") && !isShown("sendMsg");
    });
    QTest::keyClicks(edit(), QStringLiteral("play a clip"));
    click("sendMsg");
    QCOMPARE(sent.count(), 1);
    QCOMPARE(sent.at(0).at(0).toString(), QStringLiteral("play a clip"));
    QCOMPARE(sentImages.count(), 0);
    QCOMPARE(writtenMeanwhile, QStringLiteral("play a clip"));
    QVERIFY(stopShownMeanwhile);
    QVERIFY(isShown("stop") && !isShown("sendMsg"));
    QCOMPARE(written(), QString());
    QCOMPARE(counter(), QStringLiteral("0/200"));
}

void TestAskSending::pictureIsSentInItsSize_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("height");
    QTest::newRow("16:9") << 0 << 1080;
    QTest::newRow("16:10") << 1 << 1200;
    QTest::newRow("5:4") << 2 << 1536;
    QTest::newRow("4:3") << 3 << 1440;
}

void TestAskSending::pictureIsSentInItsSize()
{
    QFETCH(int, index);
    QFETCH(int, height);
    std::optional<PictureGenerateInfo> info;
    connect(ask.get(), &AskWidget::sigSendToGenrateImage, this, [&](const PictureGenerateInfo &sent) { info = sent; });
    QSignalSpy sentTexts(ask.get(), &AskWidget::sigSendToGenerateText);
    click("generateImage");
    for (int step = 0; step < index; ++step)
        QTest::keyClick(chooser("ratioSelect"), Qt::Key_Down);
    QTest::keyClick(chooser("styleSelect"), Qt::Key_Down);
    QTest::keyClicks(edit(), QStringLiteral("a harbour"));
    QTest::keyClick(edit(), Qt::Key_Return);
    QVERIFY(info);
    QCOMPARE(info->width, 1920);
    QCOMPARE(info->height, height);
    QCOMPARE(info->style, std::string("Ink Painting"));
    QCOMPARE(info->content, std::string("a harbour"));
    const PictureGenerateInfo defaults;
    QVERIFY(info->useSR == defaults.useSR && info->enableLogo == defaults.enableLogo
            && info->logoContent == defaults.logoContent);
    QCOMPARE(sentTexts.count(), 0);
    QCOMPARE(written(), QString());
    QVERIFY(isShown("stop"));
}

void TestAskSending::pictureWithoutRatioIsSquare()
{
    std::optional<PictureGenerateInfo> info;
    connect(ask.get(), &AskWidget::sigSendToGenrateImage, this, [&](const PictureGenerateInfo &sent) { info = sent; });
    click("generateImage");
    chooser("ratioSelect")->setCurrentIndex(-1);
    QTest::keyClicks(edit(), QStringLiteral("a"));
    click("sendMsg");
    QVERIFY(info);
    QCOMPARE(info->width, 1920);
    QCOMPARE(info->height, 1920);
}

void TestAskSending::senderMayGoWhileSending()
{
    connect(ask.get(), &AskWidget::sigSendToGenerateText, this, [this] { ask.reset(); });
    edit()->setPlainText(QStringLiteral("last words"));
    AskWidgetAccess::of(*ask).slotDealSendMsgBtnClicked();
    QVERIFY(!ask);
}

void TestAskSending::stopReports()
{
    QSignalSpy stopped(ask.get(), &AskWidget::sigStopToGenerate);
    ask->setAskAreaEnable(false);
    click("stop");
    QCOMPARE(stopped.count(), 1);
    QVERIFY(isShown("stop"));
}

void TestAskSending::togglesReport()
{
    QSignalSpy model(ask.get(), &AskWidget::sigActiveDeepSeekModel);
    QSignalSpy search(ask.get(), &AskWidget::sigActiverOnlineSearch);
    click("modelBtn");
    click("modelBtn");
    QCOMPARE(model.count(), 2);
    QCOMPARE(model.at(0).at(0).toBool(), true);
    QCOMPARE(model.at(1).at(0).toBool(), false);
    QCOMPARE(search.count(), 0);
    QTest::keyClick(button("onlineSearch"), Qt::Key_Space);
    QCOMPARE(search.count(), 1);
    QCOMPARE(search.at(0).at(0).toBool(), true);
    QCOMPARE(model.count(), 2);
}

void TestAskSending::disabledAreaCanBeStopped()
{
    const QVector<const char *> controls{"askAndAnwser", "generateImage", "askArea",     "askEdit",
                                         "modelBtn",     "onlineSearch",  "ratioSelect", "styleSelect"};
    ask->setAskAreaEnable(false);
    for (const char *name : controls)
        QVERIFY2(!child(name)->isEnabled(), name);
    QVERIFY(isShown("stop") && button("stop")->isEnabled() && !isShown("sendMsg"));
    ask->setAskAreaEnable(true);
    for (const char *name : controls)
        QVERIFY2(child(name)->isEnabled(), name);
    QVERIFY(!isShown("stop") && isShown("sendMsg"));
}

void TestAskSending::choicesSurviveTheWaiting()
{
    click("modelBtn");
    click("generateImage");
    chooser("ratioSelect")->setCurrentIndex(2);
    chooser("styleSelect")->setCurrentIndex(5);
    edit()->setPlainText(QStringLiteral("kept"));
    ask->setAskAreaEnable(false);
    ask->setAskAreaEnable(true);
    QVERIFY(button("modelBtn")->isChecked() && button("generateImage")->isChecked());
    QCOMPARE(chooser("ratioSelect")->currentIndex(), 2);
    QCOMPARE(chooser("styleSelect")->currentIndex(), 5);
    QVERIFY(button("sendMsg")->isEnabled());
    QVERIFY(isShown("styleSelect"));
}

void TestAskSending::focusWaitsAndComesBack()
{
    ask->setAskAreaEnable(false);
    QVERIFY(!button("stop")->hasFocus());
    QSignalSpy stopped(ask.get(), &AskWidget::sigStopToGenerate);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QCOMPARE(stopped.count(), 0);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(button("stop")->hasFocus());
    ask->setAskAreaEnable(true);
    ask->focusEdit();
    ask->setAskAreaEnable(false);
    ask->setAskAreaEnable(true);
    QVERIFY(edit()->hasFocus());
}

void TestAskSending::focusElsewhereIsLeftAlone()
{
    button("stop")->show();
    button("stop")->setFocus();
    ask->setAskAreaEnable(false);
    QVERIFY(button("stop")->hasFocus());
}

QTEST_MAIN(TestAskSending)
#include "tst_asksending.moc"
