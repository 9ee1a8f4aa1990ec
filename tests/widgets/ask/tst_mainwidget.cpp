#include "panelsupport.h"
#include "paneltest.h"
#include "widgets/answerwidget.h"
#include "widgets/askwidget.h"
#include "widgets/mainwidget_p.h"
#include "widgets/pictureviewerwidget.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTextEdit>
#include <QVBoxLayout>

/// How the panel is built and joined with its parts and with the controller.
class TestMainWidget : public PanelTest {
    Q_OBJECT

private Q_SLOTS:
    void methodsStandInTheirOrder();
    void partsStandInTheirOrder();
    void conversationTakesTheRoom();
    void recordsAreRegistered();
    void hostSignalsAreNotEmitted();

    void retryOfNothingDoesNothing();
    void retryOfAnUnknownTypeDoesNothing();
    void stopGenerateFinishedEnablesTheAskAreaOnly();
    void outcomesShowTheirTexts_data();
    void outcomesShowTheirTexts();
    void errorKeepsTheQuestion();
    void deletedPlaceholderEnables();
    void picturesEnableAtOnce();
    void textEnablesWhenItIsTyped();
    void userActionsReachTheController();
    void spareSignalsAreNotConnected();

    void setTwiceShowsEverythingTwice();
    void withoutControllerTheWishIsRefused();
    void controllerMayGoFirst();
    void panelMayGoFirst();
    void panelMayGoWhileWaiting();

    void equalSheetIsNotSetAgain();
    void sheetReachesControlsThatWereShownBeforeThePanel();
    void sheetReachesTheViewer();
    void viewerOpensOnThePanelsScreen();
    void viewerOpensWhereItWasWithoutAScreen();
    void keyboardReachesEveryPart();

private:
    AskWidget *askWidget() const { return panel->findChild<AskWidget *>(); }
    AnswerWidget *answerWidget() const { return panel->findChild<AnswerWidget *>(); }
};

void TestMainWidget::methodsStandInTheirOrder()
{
    QCOMPARE(declaredMethods(MainWidget::staticMetaObject, QMetaMethod::Signal),
             QStringList({
                 QStringLiteral("sigStopToGenerate()"),
                 QStringLiteral("sigSendToGenerateText(QString) strText"),
                 QStringLiteral("sigSendToGeneratePixture(PictureGenerateInfo) info"),
                 QStringLiteral("sigResetData()"),
                 QStringLiteral("sigClearAnswersRecord()"),
                 QStringLiteral("sigShowDialog()"),
             }));
    QCOMPARE(declaredMethods(MainWidget::staticMetaObject, QMetaMethod::Slot), QStringList());
    QCOMPARE(
        declaredMethods(*MainWidgetAccess::of(*panel).metaObject(), QMetaMethod::Slot),
        QStringList({
            QStringLiteral("slotModifyBtnClicked(QString,QuestionType,PictureGenerateInfo) question,type,picInfo"),
            QStringLiteral("slotLookImageBtnClicked(AIImage) image"),
            QStringLiteral("slotDownloadBtnClicked(AIImage) image"),
            QStringLiteral("slotTryAgainTextBtnClicked(ChatItemContext) context"),
            QStringLiteral("slotTryAgainImageBtnClicked(QString,PictureGenerateInfo) question,picInfo"),
            QStringLiteral("slotSendToGenerateText(QString) strText"),
            QStringLiteral("slotSendToGeneratePiture(PictureGenerateInfo) info"),
            QStringLiteral("slotStopToGenerate()"),
            QStringLiteral("slotActiveDeepSeekModel(bool) bActive"),
            QStringLiteral("slotActiverOnlineSearch(bool) bActive"),
            QStringLiteral("slotDownloadPicture(QString) strUrl"),
            QStringLiteral("slotClearAnswersAndQuestionsRecord()"),
            QStringLiteral("dealRequestError(ChatItemContext) context"),
            QStringLiteral("onUpdateStyleSheet(QString) strQSSContent"),
            QStringLiteral("onResetMainWidget()"),
            QStringLiteral("onTextGeneratedFinished(TextGeneratedPack) pack"),
            QStringLiteral("onPictureGeneratedFinished(QString,PictureGenerateInfo,AIImage) strQuestion,info,image"),
            QStringLiteral("onRequestFailed(ChatItemContext) context"),
            QStringLiteral("onDeleteGeneratingItem()"),
        }));
}

void TestMainWidget::partsStandInTheirOrder()
{
    QCOMPARE(panel->width(), 800);
    QCOMPARE(panel->minimumWidth(), 800);
    QCOMPARE(panel->maximumWidth(), 800);
    const QLayout *const column = panel->layout();
    QVERIFY(qobject_cast<const QVBoxLayout *>(column));
    QCOMPARE(column->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(column->spacing(), 0);
    QCOMPARE(column->count(), 4);
    QCOMPARE(column->itemAt(0)->widget(), answerWidget());
    QCOMPARE(column->itemAt(3)->widget(), askWidget());
    QVERIFY(column->itemAt(2)->spacerItem());
    const auto *const line = qobject_cast<QFrame *>(column->itemAt(1)->widget());
    QCOMPARE(line->objectName(), QStringLiteral("line"));
    QCOMPARE(line->size(), QSize(800, 1));
    QCOMPARE(line->frameShadow(), QFrame::Plain);
    QCOMPARE(line->frameShape(), QFrame::HLine);
    QCOMPARE(line->lineWidth(), 1);
    QVERIFY(viewer() && viewer()->parentWidget() == nullptr);
}

void TestMainWidget::conversationTakesTheRoom()
{
    QCOMPARE(answerWidget()->y(), 0);
    QCOMPARE(answerWidget()->geometry().bottom() + 1, child("line")->y());
    QCOMPARE(child("line")->geometry().bottom() + 1, askWidget()->y());
    QCOMPARE(askWidget()->geometry().bottom(), panel->rect().bottom());
    const int before = answerWidget()->height();
    panel->resize(800, 1000);
    QTRY_COMPARE(answerWidget()->height(), before + 100);
}

void TestMainWidget::recordsAreRegistered()
{
    for (const char *name : {"ChatItemContext", "TextGeneratedPack", "PictureGenerateInfo", "AIImage"})
        QVERIFY2(QMetaType::type(name) != QMetaType::UnknownType, name);
}

void TestMainWidget::hostSignalsAreNotEmitted()
{
    QSignalSpy stopped(panel.get(), &MainWidget::sigStopToGenerate);
    QSignalSpy sent(panel.get(), &MainWidget::sigSendToGenerateText);
    QSignalSpy reset(panel.get(), &MainWidget::sigResetData);
    QSignalSpy cleared(panel.get(), &MainWidget::sigClearAnswersRecord);
    ask(QStringLiteral("what?"));
    QVERIFY(acceptText());
    QTest::mouseClick(button("stop"), Qt::LeftButton);
    QTest::mouseClick(button("clearButton"), Qt::LeftButton);
    panel->resetMainWidget();
    QCOMPARE(stopped.count() + sent.count() + reset.count() + cleared.count(), 0);
}

void TestMainWidget::retryOfNothingDoesNothing()
{
    const QStringList before = conversation();
    Q_EMIT answerWidget()->sigTryAgainQuestionButtonClicked({});
    settle();
    QVERIFY(!isGenerating());
    QCOMPARE(conversation(), before);
    QCOMPARE(f->server.requestCount(), 0);
}

void TestMainWidget::retryOfAnUnknownTypeDoesNothing()
{
    ChatItemContext context;
    context.type = static_cast<QuestionType>(7);
    Q_EMIT answerWidget()->sigTryAgainQuestionButtonClicked(context);
    QVERIFY(!isGenerating());
}

void TestMainWidget::stopGenerateFinishedEnablesTheAskAreaOnly()
{
    f->controller.sigGenerateTextFinished(TextGeneratedPack{"q", "a"});
    QTRY_COMPARE(conversation().last(), QStringLiteral("AnswerText: a"));
    panel->setAskAndAnswerAreaEnable(false);
    QVERIFY(isGenerating() && !itemButton(1, "copyButton")->isEnabled());
    panel->onStopGenerateFinished();
    QVERIFY(!isGenerating());
    QVERIFY(!itemButton(1, "copyButton")->isEnabled());
}

void TestMainWidget::outcomesShowTheirTexts_data()
{
    QTest::addColumn<int>("outcome");
    QTest::addColumn<QString>("shown");
    QTest::newRow("failed") << 0 << "Request Error";
    QTest::newRow("time-out") << 1 << "Timeout";
    QTest::newRow("service error") << 2 << "the service's own text";
}

void TestMainWidget::outcomesShowTheirTexts()
{
    QFETCH(int, outcome);
    QFETCH(QString, shown);
    const QVector<sigslot::signal<const ChatItemBasic &> *> outcomes{
        &f->controller.sigRequestFailed, &f->controller.sigRequestTimeout, &f->controller.sigErrorOccured};
    panel->setAskAndAnswerAreaEnable(false);
    answerWidget()->addTextGeneratingItem();
    ChatItemBasic basic;
    basic.type = QuestionType::Text;
    basic.message = "the service's own text";
    (*outcomes.at(outcome))(basic);
    QVERIFY(!isGenerating());
    QCOMPARE(conversation().size(), 2);
    QTRY_COMPARE(conversation().last(), QStringLiteral("AnswerText: ") + shown);
}

void TestMainWidget::errorKeepsTheQuestion()
{
    ChatItemBasic basic;
    basic.type = QuestionType::Picture;
    basic.question = "a boat";
    basic.picInfo.style = "Monet";
    basic.picInfo.content = "a boat";
    f->controller.sigRequestFailed(basic);
    QSignalSpy again(answerWidget(), &AnswerWidget::sigTryAgainQuestionButtonClicked);
    f->server.expect("POST", ControllerFixture::picturePath(), ControllerFixture::accepted());
    itemButton(1, "tryAgainButton")->click();
    QVERIFY(f->repliesDone());
    const auto *const context = static_cast<const ChatItemContext *>(again.at(0).at(0).constData());
    QVERIFY(context->type == QuestionType::Picture);
    QCOMPARE(context->question, basic.question);
    QCOMPARE(context->picInfo.style, basic.picInfo.style);
    QVERIFY(context->images.empty());
    const QJsonObject sent = f->server.requests().first().json();
    QCOMPARE(sent.value(QStringLiteral("style")).toString(), QStringLiteral("Monet"));
}

void TestMainWidget::deletedPlaceholderEnables()
{
    panel->setAskAndAnswerAreaEnable(false);
    answerWidget()->addImageGeneratingItem();
    f->controller.sigDeleteGeneratingItem();
    QVERIFY(!isGenerating());
    QCOMPARE(conversation().size(), 1);
    answerWidget()->addTextGeneratingItem();
    panel->deleteGeneratingItem();
    QCOMPARE(conversation().size(), 1);
}

void TestMainWidget::picturesEnableAtOnce()
{
    panel->setAskAndAnswerAreaEnable(false);
    answerWidget()->addImageGeneratingItem();
    f->controller.sigGeneratePictureFinished(QStringLiteral("q"), PictureGenerateInfo(), AIImage());
    QVERIFY(!isGenerating());
    QCOMPARE(conversation().last(), QStringLiteral("AnswerImage: "));
    QCOMPARE(conversation().size(), 2);
}

void TestMainWidget::textEnablesWhenItIsTyped()
{
    panel->setAskAndAnswerAreaEnable(false);
    answerWidget()->addTextGeneratingItem();
    f->controller.sigGenerateTextFinished(TextGeneratedPack{"q", "abc"});
    QVERIFY(isGenerating());
    QCOMPARE(conversation().size(), 2);
    QSignalSpy typed(answerWidget(), &AnswerWidget::sigTypingFinished);
    QVERIFY(typed.wait());
    QCOMPARE(conversation().last(), QStringLiteral("AnswerText: abc"));
    QVERIFY(!isGenerating());
    QVERIFY(edit()->hasFocus());
}

void TestMainWidget::userActionsReachTheController()
{
    f->useRoles({false, true, false});
    const auto &names = f->clientPort;
    Q_EMIT askWidget()->sigActiveDeepSeekModel(true);
    Q_EMIT askWidget()->sigActiverOnlineSearch(true);
    Q_EMIT askWidget()->sigSendToGenerateText(QStringLiteral("text"));
    PictureGenerateInfo info;
    info.content = "picture";
    Q_EMIT askWidget()->sigSendToGenrateImage(info);
    Q_EMIT askWidget()->sigStopToGenerate();
    Q_EMIT answerWidget()->sigClearAllAnswers();
    QCOMPARE(names.calls.size(), 6);
    QCOMPARE(names.calls.at(2).as<QString>(), QStringLiteral("text"));
    QCOMPARE(names.calls.at(3).as<PictureGenerateInfo>().content, std::string("picture"));
    QCOMPARE(names.calls.at(0).as<bool>(), true);
    QCOMPARE(names.names().size(), 6);
}

void TestMainWidget::spareSignalsAreNotConnected()
{
    QCOMPARE(f->controller.sigChatItemEvent.slot_count(), std::size_t(1)); // the recorder's
    QCOMPARE(f->controller.sigNotify.slot_count(), std::size_t(1));
    QCOMPARE(f->controller.sigAiNotify.slot_count(), std::size_t(1));
    QCOMPARE(f->controller.sigThemeChanged.slot_count(), std::size_t(2));
}

void TestMainWidget::setTwiceShowsEverythingTwice()
{
    panel->setAIController(&f->controller);
    f->controller.sigGeneratePictureFinished(QStringLiteral("q"), PictureGenerateInfo(), AIImage());
    QCOMPARE(conversation().mid(1), QStringList({QStringLiteral("AnswerImage: "), QStringLiteral("AnswerImage: ")}));
}

void TestMainWidget::withoutControllerTheWishIsRefused()
{
    MainWidget lonely;
    lonely.setAIController(nullptr);
    const ExpectedLog refused(f->log, QStringLiteral("no controller is set"), 5);
    auto *const lonelyEdit = lonely.findChild<QTextEdit *>(QStringLiteral("askEdit"));
    QTest::keyClicks(lonelyEdit, QStringLiteral("anyone?"));
    QTest::keyClick(lonelyEdit, Qt::Key_Return);
    QVERIFY(lonelyEdit->isEnabled());
    Q_EMIT lonely.findChild<AskWidget *>()->sigSendToGenrateImage(PictureGenerateInfo());
    QVERIFY(lonelyEdit->isEnabled());
    Q_EMIT lonely.findChild<AskWidget *>()->sigActiveDeepSeekModel(true);
    Q_EMIT lonely.findChild<AskWidget *>()->sigActiverOnlineSearch(true);
    Q_EMIT lonely.findChild<AnswerWidget *>()->sigDownloadButtonClicked(AIImage());
    lonely.resetMainWidget();
}

void TestMainWidget::controllerMayGoFirst()
{
    auto other = std::make_unique<AiController>();
    MainWidget lonely;
    lonely.setAIController(other.get());
    other.reset();
    const ExpectedLog refused(f->log, QStringLiteral("no controller is set"));
    Q_EMIT lonely.findChild<AskWidget *>()->sigSendToGenerateText(QStringLiteral("anyone?"));
    Q_EMIT lonely.findChild<AskWidget *>()->sigStopToGenerate();
}

void TestMainWidget::panelMayGoFirst()
{
    panel.reset();
    f->controller.sigGenerateTextFinished(TextGeneratedPack{"q", "a"});
    f->controller.sigGeneratePictureFinished(QStringLiteral("q"), PictureGenerateInfo(), AIImage());
    f->controller.sigRequestFailed(ChatItemBasic());
    f->controller.sigErrorOccured(ChatItemBasic());
    f->controller.sigRequestTimeout(ChatItemBasic());
    f->controller.sigDeleteGeneratingItem();
    f->controller.sigResetMainWidget();
    f->controller.sigLanguageChanged();
    f->controller.sigThemeChanged(QString());
    QCOMPARE(f->controller.sigRequestFailed.slot_count(), std::size_t(1)); // the recorder's
    QVERIFY(viewer() == nullptr);
}

void TestMainWidget::panelMayGoWhileWaiting()
{
    ask(QStringLiteral("what?"));
    panel.reset(); // the placeholder is still posted
    settle();
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
    QVERIFY(f->repliesDone());
}

void TestMainWidget::equalSheetIsNotSetAgain()
{
    class StyleWatch : public QObject {
    public:
        int changes = 0;
        bool eventFilter(QObject *, QEvent *event) override
        {
            changes += event->type() == QEvent::StyleChange ? 1 : 0;
            return false;
        }
    } watch;
    panel->updateStyleSheet(defaultStyleSheet());
    panel->installEventFilter(&watch);
    panel->updateStyleSheet(defaultStyleSheet());
    QCOMPARE(watch.changes, 0);
    panel->updateStyleSheet(QStringLiteral("QLabel{color:red;}"));
    QVERIFY(watch.changes > 0);
    QCOMPARE(panel->styleSheet(), QStringLiteral("QLabel{color:red;}"));
}

void TestMainWidget::sheetReachesControlsThatWereShownBeforeThePanel()
{
    QWidget host;
    host.setStyleSheet(QStringLiteral("QLabel{color:red;}"));
    auto *const embedded = new MainWidget;
    embedded->setParent(&host);
    embedded->resetMainWidget();
    auto *const model = embedded->findChild<QPushButton *>(QStringLiteral("modelBtn"));
    model->hide();
    model->show();
    embedded->updateStyleSheet(QStringLiteral("QPushButton#modelBtn{color:#123456;}"));
    host.show();
    QCOMPARE(model->palette().color(QPalette::ButtonText), QColor(0x12, 0x34, 0x56));
}

void TestMainWidget::sheetReachesTheViewer()
{
    panel->updateStyleSheet(QStringLiteral("QLabel{color:red;}"));
    QCOMPARE(panel->styleSheet(), QStringLiteral("QLabel{color:red;}"));
    QCOMPARE(viewer()->styleSheet(), QStringLiteral("QLabel{color:red;}"));
}

void TestMainWidget::viewerOpensOnThePanelsScreen()
{
    viewer()->move(77, 55);
    Q_EMIT answerWidget()->sigLookImageButtonClicked({});
    QVERIFY(viewer()->isVisible() && viewer()->isFullScreen());
    QCOMPARE(viewer()->pos(), panel->screen()->geometry().topLeft());
    QCOMPARE(viewer()->findChild<QLabel *>(QStringLiteral("picture"))->text(), QStringLiteral("can not load picture"));
}

void TestMainWidget::viewerOpensWhereItWasWithoutAScreen()
{
    panel->move(50000, 50000);
    QTRY_VERIFY(panel->mapToGlobal(QPoint(0, 0)).x() >= 50000);
    QVERIFY(!QGuiApplication::screenAt(panel->mapToGlobal(QPoint(0, 0))));
    viewer()->move(33, 22);
    Q_EMIT answerWidget()->sigLookImageButtonClicked({});
    QVERIFY(viewer()->isVisible() && viewer()->isFullScreen());
    QCOMPARE(viewer()->normalGeometry().topLeft(), QPoint(33, 22));
    QTest::keyClick(viewer(), Qt::Key_Escape);
    QVERIFY(!viewer()->isVisible());
}

void TestMainWidget::keyboardReachesEveryPart()
{
    panel->findChild<QPushButton *>(QStringLiteral("askAndAnwser"))->setFocus();
    edit()->setPlainText(QStringLiteral("x"));
    QStringList reached;
    for (int step = 0; step < 20; ++step) {
        QWidget *const focused = QApplication::focusWidget();
        if (reached.contains(focused->objectName()))
            break;
        reached << focused->objectName();
        QTest::keyClick(focused, Qt::Key_Tab);
    }
    for (const char *name :
         {"askAndAnwser", "askEdit", "modelBtn", "onlineSearch", "sendMsg", "textBrowser", "clearButton"})
        QVERIFY2(reached.contains(QLatin1String(name)), qPrintable(reached.join(QLatin1Char(' '))));
    QVERIFY(reached.indexOf(QStringLiteral("askEdit")) < reached.indexOf(QStringLiteral("sendMsg")));
    QVERIFY(reached.indexOf(QStringLiteral("textBrowser")) < reached.indexOf(QStringLiteral("clearButton")));
}

QTEST_MAIN(TestMainWidget)
#include "tst_mainwidget.moc"
