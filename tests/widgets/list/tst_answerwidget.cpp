#include "answerlist.h"
#include "corpus.h"
#include "translate/lookup.h"
#include "widgets/pixmaplabel.h"

#include <QLayout>
#include <QPointer>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

/// What stands in the list, and what the list tells of it.
class TestAnswerWidget : public QuietTest {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { loadListLanguages(); }
    void metaObjectHasItsSignalsInOrder();
    void isBuilt();
    void beginsWithTheWelcome();
    void everyAddEndsBeforeTheStretch();
    void answerTakesThePlaceOfThePlaceholder_data();
    void answerTakesThePlaceOfThePlaceholder();
    void deletesOneOfEachPlaceholder();
    void errorItemTypesItsMessage();
    void itemsSignalsAreForwarded();
    void endOfTypingIsReportedInOrder();
    void stopKeepsWhatWasTypedAndReportsEachItem();
    void stopWithPicturesOnlyAsksForTheFocus();
    void clearLeavesNothing();
    void resetLeavesTheWelcomeOnly();
    void resetWithinResetDoesNothing();
    void resetWhileTyping();
    void retranslatesAllItems();
    void nothingIsLeftOverOfManyItems();
};

void TestAnswerWidget::metaObjectHasItsSignalsInOrder()
{
    const QMetaObject &meta = AnswerWidget::staticMetaObject;
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        methods += QString::fromLatin1(meta.method(index).methodSignature());
    QCOMPARE(methods.join(u' '),
             QStringLiteral("sigModifyButtonClicked(QString,QuestionType,PictureGenerateInfo) "
                            "sigDownloadButtonClicked(AIImage) sigLookImageButtonClicked(AIImage) "
                            "sigTryAgainImageButtonClicked(QString,PictureGenerateInfo) "
                            "sigTryAgainQuestionButtonClicked(ChatItemContext) sigClearAllAnswers() "
                            "sigTypingFinished() sigNeedSetFocus()"));
}

void TestAnswerWidget::isBuilt()
{
    const List list;
    QCOMPARE(list.layout()->contentsMargins(), QMargins(0, 0, 0, 10));
    QCOMPARE(list.layout()->spacing(), 10);
    QCOMPARE(list.area()->width(), 800);
    QCOMPARE(list.area()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(list.area()->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    QCOMPARE(list.sheet()->objectName(), QStringLiteral("itemsWidget"));
    QCOMPARE(list.sheet()->width(), 800);
    QCOMPARE(list.sheet()->styleSheet(), QStringLiteral("QWidget#itemsWidget{background: transparent;}"));
    QCOMPARE(list.sheet()->layout()->contentsMargins(), QMargins(20, 20, 20, 0));
    QCOMPARE(list.sheet()->layout()->spacing(), 24);
    QVERIFY(list.sheet()->layout()->itemAt(1)->spacerItem() != nullptr);
    QCOMPARE(list.clearButton()->text(), QStringLiteral("Clear"));
    QVERIFY(list.clearButton()->y() >= list.area()->geometry().bottom() + 10);
    QCOMPARE(list.clearButton()->geometry().right() + 1, 780);
}

void TestAnswerWidget::beginsWithTheWelcome()
{
    const List list;
    QCOMPARE(list.kinds(), QStringList{QStringLiteral("HelloItemWidget")});
    QCOMPARE(list.lastBrowser()->toPlainText(),
             QStringLiteral("Hello, I\u2019m your AI Assistant.\nNice to meet you! "));
}

void TestAnswerWidget::everyAddEndsBeforeTheStretch()
{
    List list;
    list.addQuestionItem(contextOf(QStringLiteral("q")));
    list.addTextGeneratingItem();
    QCOMPARE(list.lastBrowser()->toPlainText(), QStringLiteral("Thinking:"));
    list.addImageGeneratingItem();
    QCOMPARE(list.lastBrowser()->toPlainText(), QStringLiteral("Generating image..."));
    QCOMPARE(list.kinds().join(u' '),
             QStringLiteral("HelloItemWidget QuestionItemWidget TextGeneratingItemWidget ImageGeneratingItemWidget"));
    const QLayout *const layout = list.sheet()->layout();
    QVERIFY(layout->itemAt(layout->count() - 1)->spacerItem() != nullptr);
}

void TestAnswerWidget::answerTakesThePlaceOfThePlaceholder_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("text") << QStringLiteral("AnswerTextItemWidget");
    QTest::newRow("image") << QStringLiteral("AnswerImageItemWidget");
    QTest::newRow("error") << QStringLiteral("AnswerTextItemWidget");
}

void TestAnswerWidget::answerTakesThePlaceOfThePlaceholder()
{
    QFETCH(QString, kind);
    List list;
    list.addTextGeneratingItem();
    const QPointer<ChatItemWidget> placeholder = list.items().back();
    if (kind == QStringLiteral("AnswerImageItemWidget"))
        list.addAnswerImageItem(contextOf(QStringLiteral("q")));
    else if (QLatin1String(QTest::currentDataTag()) == QLatin1String("error"))
        list.addErrorItem(contextOf(QStringLiteral("q"), QStringLiteral("failed")));
    else
        list.addAnswerTextItem(contextOf(QStringLiteral("q"), QStringLiteral("a")));
    QCOMPARE(list.kinds(), (QStringList{QStringLiteral("HelloItemWidget"), kind}));
    QVERIFY(!placeholder.isNull());
    List::settleEvents();
    QVERIFY(placeholder.isNull());
}

void TestAnswerWidget::deletesOneOfEachPlaceholder()
{
    List list;
    list.addTextGeneratingItem();
    list.addImageGeneratingItem();
    list.addTextGeneratingItem();
    const ChatItemWidget *const second = list.items().back();
    list.deleteGeneratingItem();
    QCOMPARE(list.kinds().join(u' '), QStringLiteral("HelloItemWidget TextGeneratingItemWidget"));
    QCOMPARE(list.items().back(), second);
    list.deleteGeneratingItem();
    list.deleteGeneratingItem();
    QCOMPARE(list.kinds().join(u' '), QStringLiteral("HelloItemWidget"));
}

void TestAnswerWidget::errorItemTypesItsMessage()
{
    List list;
    list.addErrorItem(contextOf(QStringLiteral("q"), QStringLiteral("Timeout")));
    holdTimers(*list.lastBrowser());
    typeOne(*list.lastBrowser());
    QCOMPARE(list.lastBrowser()->toPlainText(), QStringLiteral("T|"));
    list.typeWhole();
    QCOMPARE(list.lastBrowser()->toPlainText(), QStringLiteral("Timeout"));
}

void TestAnswerWidget::itemsSignalsAreForwarded()
{
    List list;
    QString told;
    connect(&list, &AnswerWidget::sigModifyButtonClicked, this,
            [&told](const QString &question) { told += QStringLiteral("modify ") + question; });
    connect(&list, &AnswerWidget::sigTryAgainQuestionButtonClicked, this, [&told](const ChatItemContext &context) {
        told += QStringLiteral(" again ") + QString::fromStdString(context.message);
    });
    connect(&list, &AnswerWidget::sigLookImageButtonClicked, this, [&told] { told += QStringLiteral(" look"); });
    connect(&list, &AnswerWidget::sigDownloadButtonClicked, this, [&told] { told += QStringLiteral(" get"); });
    connect(&list, &AnswerWidget::sigTryAgainImageButtonClicked, this, [&told] { told += QStringLiteral(" redraw"); });
    list.addQuestionItem(contextOf(QStringLiteral("q")));
    List::settleEvents();
    QTest::mouseClick(list.items().back()->findChild<QPushButton *>(QStringLiteral("modifyButton")), Qt::LeftButton);
    list.addHeldAnswer(QStringLiteral("a"));
    QTest::mouseClick(list.items().back()->findChild<QPushButton *>(QStringLiteral("tryAgainButton")), Qt::LeftButton);
    list.addAnswerImageItem(contextOf(QStringLiteral("q")));
    auto *const pictures = list.items().back()->findChild<PixmapLabel *>();
    Q_EMIT pictures->sigLookImageButtonClicked({});
    Q_EMIT pictures->sigDownloadButtonClicked({});
    Q_EMIT pictures->sigTryAgainImageButtonClicked({}, {});
    QCOMPARE(told, QStringLiteral("modify q again a look get redraw"));
}

void TestAnswerWidget::endOfTypingIsReportedInOrder()
{
    List list;
    QString told;
    connect(&list, &AnswerWidget::sigTypingFinished, this, [&told] { told += u'F'; });
    connect(&list, &AnswerWidget::sigNeedSetFocus, this, [&told] { told += u'N'; });
    list.addHeldAnswer(QStringLiteral("ab"));
    typeOne(*list.lastBrowser());
    typeOne(*list.lastBrowser());
    QCOMPARE(told, QString());
    typeOne(*list.lastBrowser());
    QCOMPARE(told, QStringLiteral("FN"));
}

void TestAnswerWidget::stopKeepsWhatWasTypedAndReportsEachItem()
{
    List list;
    QString told;
    connect(&list, &AnswerWidget::sigTypingFinished, this, [&told] { told += u'F'; });
    connect(&list, &AnswerWidget::sigNeedSetFocus, this, [&told] { told += u'N'; });
    list.addAnswerImageItem(contextOf(QStringLiteral("q")));
    list.addHeldAnswer(QStringLiteral("not all of it"));
    for (int count = 0; count < 7; ++count)
        typeOne(*list.lastBrowser());
    list.stop();
    QCOMPARE(list.lastBrowser()->toPlainText(), QStringLiteral("not all"));
    QCOMPARE(told, QStringLiteral("FNFNN")); // welcome, answer, and the list itself
    typeOne(*list.lastBrowser());
    QCOMPARE(list.lastBrowser()->toPlainText(), QStringLiteral("not all"));
}

void TestAnswerWidget::stopWithPicturesOnlyAsksForTheFocus()
{
    List list;
    list.clearButton()->click();
    list.addAnswerImageItem(contextOf(QStringLiteral("q")));
    QSignalSpy finished(&list, &AnswerWidget::sigTypingFinished);
    QSignalSpy focus(&list, &AnswerWidget::sigNeedSetFocus);
    list.stop();
    QCOMPARE(finished.count(), 0);
    QCOMPARE(focus.count(), 1);
}

void TestAnswerWidget::clearLeavesNothing()
{
    List list;
    list.addQuestionItem(contextOf(QStringLiteral("q")));
    List::settleEvents();
    QSignalSpy cleared(&list, &AnswerWidget::sigClearAllAnswers);
    QTest::mouseClick(list.clearButton(), Qt::LeftButton);
    QCOMPARE(list.kinds(), QStringList());
    QCOMPARE(list.sheet()->layout()->count(), 1);
    QCOMPARE(cleared.count(), 1);
    List::settleEvents();
    QVERIFY(list.findChildren<ChatItemWidget *>().isEmpty());
    list.addQuestionItem(contextOf(QStringLiteral("after")));
    List::settleEvents();
    QCOMPARE(list.items().front()->y(), 20);
}

void TestAnswerWidget::resetLeavesTheWelcomeOnly()
{
    List list;
    for (int count = 0; count < 20; ++count)
        list.addQuestionItem(contextOf(englishAnswer()));
    List::settleEvents();
    QSignalSpy cleared(&list, &AnswerWidget::sigClearAllAnswers);
    list.reset();
    QCOMPARE(list.kinds(), QStringList{QStringLiteral("HelloItemWidget")});
    QCOMPARE(cleared.count(), 1);
    List::settleEvents();
    QCOMPARE(list.findChildren<ChatItemWidget *>().size(), 1);
    QCOMPARE(list.items().front()->y(), 20);
    QCOMPARE(list.bar()->maximum(), 0);
    list.reset();
    QCOMPARE(cleared.count(), 2);
}

void TestAnswerWidget::resetWithinResetDoesNothing()
{
    List list;
    int cleared = 0;
    connect(&list, &AnswerWidget::sigClearAllAnswers, this, [&list, &cleared] {
        ++cleared;
        list.reset();
    });
    list.reset();
    QCOMPARE(cleared, 1);
    QCOMPARE(list.kinds(), QStringList{QStringLiteral("HelloItemWidget")});
}

void TestAnswerWidget::resetWhileTyping()
{
    List list;
    list.addHeldAnswer(englishAnswer());
    typeOne(*list.lastBrowser());
    QSignalSpy finished(&list, &AnswerWidget::sigTypingFinished);
    list.reset();
    List::settleEvents();
    QCOMPARE(finished.count(), 0);
    QCOMPARE(list.kinds(), QStringList{QStringLiteral("HelloItemWidget")});
}

void TestAnswerWidget::retranslatesAllItems()
{
    List list;
    list.addQuestionItem(contextOf(QStringLiteral("q")));
    list.addTextGeneratingItem();
    useListLanguage("rus");
    list.retranslate();
    const QString clear = text("Clear");
    const QString welcome = text("WelcomeText").replace(u'#', u'\n');
    const QString thinking = text("Thinking");
    const QString modify = text("Modify");
    useListLanguage("en");
    QCOMPARE(list.clearButton()->text(), clear);
    QCOMPARE(list.items()[0]->findChild<AutoResizeTextBrowser *>()->toPlainText(), welcome);
    QCOMPARE(list.items()[1]->findChild<QPushButton *>(QStringLiteral("modifyButton"))->text(), modify);
    QCOMPARE(list.lastBrowser()->toPlainText(), thinking);
    QVERIFY(clear != text("Clear"));
}

void TestAnswerWidget::nothingIsLeftOverOfManyItems()
{
    List list;
    List::settleEvents();
    const int widgets = list.findChildren<QWidget *>().size();
    const int objects = list.findChildren<QObject *>().size();
    for (int round = 0; round < 100; ++round) {
        list.addQuestionItem(contextOf(QStringLiteral("q")));
        list.addTextGeneratingItem();
        list.addHeldAnswer(QStringLiteral("a\nb"));
        list.typeWhole();
        list.addImageGeneratingItem();
        list.addAnswerImageItem(contextOf(QStringLiteral("q")));
        list.setItemsEnabled(round % 2 == 0);
    }
    list.reset();
    List::settleEvents();
    QCOMPARE(list.findChildren<QWidget *>().size(), widgets);
    QCOMPARE(list.findChildren<QObject *>().size(), objects);
    QCOMPARE(list.findChildren<QTimer *>().size(), 0);
}

QTEST_MAIN(TestAnswerWidget)
#include "tst_answerwidget.moc"
