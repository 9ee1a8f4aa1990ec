#include "heldbrowser.h"
#include "translate/lookup.h"
#include "translate/translatemanager.h"
#include "widgets/chatitems.h"
#include "widgets/pixmaplabel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLayout>
#include <QMovie>
#include <QPushButton>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

namespace {

using Kind = ChatItemWidget::Kind;

ChatItemContext someContext()
{
    ChatItemContext context;
    context.type = QuestionType::Picture;
    context.question = "a harbour at night";
    context.message = "the message";
    context.picInfo.style = "Monet";
    context.images.resize(2);
    context.images[1].url = "http://127.0.0.1/pictures/2";
    return context;
}

std::unique_ptr<ChatItemWidget> makeItem(Kind kind, const ChatItemContext &context = someContext())
{
    switch (kind) {
    case Kind::Hello:
        return std::make_unique<HelloItemWidget>(context);
    case Kind::Question:
        return std::make_unique<QuestionItemWidget>(context);
    case Kind::AnswerText:
        return std::make_unique<AnswerTextItemWidget>(context);
    case Kind::AnswerImage:
        return std::make_unique<AnswerImageItemWidget>(context);
    case Kind::TextGenerating:
        return std::make_unique<TextGeneratingItemWidget>(context);
    case Kind::ImageGenerating:
        return std::make_unique<ImageGeneratingItemWidget>(context);
    }
    return nullptr;
}

QPushButton *buttonOf(const QWidget &item, const char *name)
{
    const auto *const row = item.findChild<QWidget *>(QStringLiteral("buttonRow"));
    return row->findChild<QPushButton *>(QLatin1String(name));
}

AutoResizeTextBrowser *browserOf(const QWidget &item)
{
    return item.findChild<AutoResizeTextBrowser *>(QStringLiteral("textBrowser"));
}

QMargins marginsOf(const QWidget &item)
{
    return item.findChild<QWidget *>(QStringLiteral("rightWidget"))->layout()->contentsMargins();
}

void addKinds()
{
    QTest::addColumn<Kind>("kind");
    QTest::newRow("hello") << Kind::Hello;
    QTest::newRow("question") << Kind::Question;
    QTest::newRow("answer text") << Kind::AnswerText;
    QTest::newRow("answer image") << Kind::AnswerImage;
    QTest::newRow("text generating") << Kind::TextGenerating;
    QTest::newRow("image generating") << Kind::ImageGenerating;
}

} // namespace

Q_DECLARE_METATYPE(tavro::aiassistant::ChatItemWidget::Kind)

class TestChatItemWidget : public QuietTest {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void metaObjectHasItsSignalsInOrder();
    void kindsHaveTheirValues();
    void kindsOfAConversationHaveNoTextOfTheirOwn();
    void eachKindIsBuiltAsItsOwn_data();
    void eachKindIsBuiltAsItsOwn();
    void boxIsAsWideAsWhatItHolds();
    void answerIsTypedAndReportsIt();
    void copyPutsTheTextOnTheClipboard();
    void modifyHandsTheQuestionBack();
    void tryAgainHandsTheContextBack();
    void hiddenButtonsOfAPictureItemDoNothing();
    void stopReportsFinishedEachTime_data() { addKinds(); }
    void stopReportsFinishedEachTime();
    void pictureSignalsAreForwarded();
    void retranslatesItsOwnTextsOnly_data();
    void retranslatesItsOwnTextsOnly();
    void buttonsAreEnabledAndDisabled();
    void unpaintedItemTakesPaintRequestsAgain();
    void disablingOutOfSightIsSeenAfterScrolling();

private:
    void useLanguage(const char *name) { TranslateManager::instance().switchLanguage(QLatin1String(name)); }
};

void TestChatItemWidget::initTestCase()
{
    TranslateManager::instance().loadLanguageFiles({QStringLiteral(":/aiassistant/language/aiassistant_en.xml"),
                                                    QStringLiteral(":/aiassistant/language/aiassistant_rus.xml")});
    useLanguage("en");
}

void TestChatItemWidget::metaObjectHasItsSignalsInOrder()
{
    const QMetaObject &meta = ChatItemWidget::staticMetaObject;
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        methods += QString::fromLatin1(meta.method(index).methodSignature());
    QCOMPARE(methods.join(u' '),
             QStringLiteral("sigModifyButtonClicked(QString,QuestionType,PictureGenerateInfo) "
                            "sigTryAgainQuestionButtonClicked(ChatItemContext) sigLookImageButtonClicked(AIImage) "
                            "sigDownloadButtonClicked(AIImage) "
                            "sigTryAgainImageButtonClicked(QString,PictureGenerateInfo) sigTypingFinished() "
                            "sigTyping()"));
}

void TestChatItemWidget::kindsHaveTheirValues()
{
    QCOMPARE(static_cast<std::int32_t>(Kind::Hello), 0);
    QCOMPARE(static_cast<std::int32_t>(Kind::Question), 1);
    QCOMPARE(static_cast<std::int32_t>(Kind::AnswerText), 2);
    QCOMPARE(static_cast<std::int32_t>(Kind::AnswerImage), 3);
    QCOMPARE(static_cast<std::int32_t>(Kind::TextGenerating), 4);
    QCOMPARE(static_cast<std::int32_t>(Kind::ImageGenerating), 5);
}

void TestChatItemWidget::kindsOfAConversationHaveNoTextOfTheirOwn()
{
    for (const Kind kind : {Kind::Question, Kind::AnswerText, Kind::AnswerImage})
        QCOMPARE(ChatItemWidget::fixedText(kind), QString());
    for (const Kind kind : {Kind::Hello, Kind::TextGenerating, Kind::ImageGenerating})
        QVERIFY(!ChatItemWidget::fixedText(kind).isEmpty());
}

void TestChatItemWidget::eachKindIsBuiltAsItsOwn_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QString>("avatar");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("buttons");
    QTest::addColumn<int>("rowHeight");
    const QString user = QStringLiteral("user");
    const QString assistant = QStringLiteral("aiassistant");
    const QString message = QStringLiteral("the message");
    QTest::newRow("hello") << Kind::Hello << assistant << message << QString() << 0;
    QTest::newRow("question") << Kind::Question << user << QStringLiteral("a harbour at night")
                              << QStringLiteral("copyButton modifyButton") << 20;
    QTest::newRow("answer text") << Kind::AnswerText << assistant << QString()
                                 << QStringLiteral("copyButton tryAgainButton") << 20;
    QTest::newRow("answer image") << Kind::AnswerImage << assistant << QString() << QString() << 0;
    QTest::newRow("text generating") << Kind::TextGenerating << assistant << message << QString() << 0;
    QTest::newRow("image generating") << Kind::ImageGenerating << assistant << message << QString() << 0;
}

void TestChatItemWidget::eachKindIsBuiltAsItsOwn()
{
    QFETCH(Kind, kind);
    const auto item = makeItem(kind);
    item->show();
    QCOMPARE(item->objectName(), QStringLiteral("chatItemWidget"));
    QCOMPARE(item->layout()->contentsMargins(), QMargins());
    QCOMPARE(item->layout()->spacing(), 8);
    const auto *const avatar = item->findChild<QLabel *>(QStringLiteral("avatar"));
    QCOMPARE(avatar->size(), QSize(36, 36));
    QTEST(avatar->property("type").toString(), "avatar");

    const bool ofPictures = kind == Kind::AnswerImage;
    QCOMPARE(marginsOf(*item), ofPictures ? QMargins(8, 6, 8, 6) : QMargins(12, 8, 12, 8));
    QCOMPARE(browserOf(*item) == nullptr, ofPictures);
    if (!ofPictures)
        QTEST(browserOf(*item)->toPlainText(), "text");
    QCOMPARE(item->findChild<PixmapLabel *>() != nullptr, ofPictures);
    const bool generating = kind == Kind::TextGenerating || kind == Kind::ImageGenerating;
    QCOMPARE(item->findChild<QMovie *>() != nullptr, generating);

    QStringList visible;
    for (const char *name : {"copyButton", "modifyButton", "tryAgainButton"}) {
        if (buttonOf(*item, name)->isVisible())
            visible += QLatin1String(name);
    }
    QTEST(visible.join(u' '), "buttons");
    QTEST(item->findChild<QWidget *>(QStringLiteral("buttonRow"))->height(), "rowHeight");
    QCOMPARE(buttonOf(*item, "copyButton")->text(), QStringLiteral("Copy"));
    QCOMPARE(buttonOf(*item, "modifyButton")->text(), QStringLiteral("Edit"));
    QCOMPARE(buttonOf(*item, "tryAgainButton")->text(), QStringLiteral("Try Again"));
}

void TestChatItemWidget::boxIsAsWideAsWhatItHolds()
{
    const auto item = makeItem(Kind::Hello);
    item->resize(760, item->height());
    item->show();
    QCoreApplication::processEvents();
    const auto *const box = item->findChild<QWidget *>(QStringLiteral("rightWidget"));
    QCOMPARE(box->x(), 36 + 8);
    QTRY_COMPARE(box->width(), browserOf(*item)->width() + 24);
    QCOMPARE(browserOf(*item)->mapTo(box, QPoint()).x(), 12);
}

void TestChatItemWidget::answerIsTypedAndReportsIt()
{
    const auto item = makeItem(Kind::AnswerText);
    holdTimers(*browserOf(*item));
    QSignalSpy typing(item.get(), &ChatItemWidget::sigTyping);
    QSignalSpy finished(item.get(), &ChatItemWidget::sigTypingFinished);
    for (int count = 0; count <= 11; ++count)
        typeOne(*browserOf(*item));
    QCOMPARE(browserOf(*item)->toPlainText(), QStringLiteral("the message"));
    QCOMPARE(typing.count(), 11);
    QCOMPARE(finished.count(), 1);
}

void TestChatItemWidget::copyPutsTheTextOnTheClipboard()
{
    const auto item = makeItem(Kind::Question);
    item->show();
    QTest::mouseClick(buttonOf(*item, "copyButton"), Qt::LeftButton);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("a harbour at night"));
}

void TestChatItemWidget::modifyHandsTheQuestionBack()
{
    const auto item = makeItem(Kind::Question);
    QString question;
    auto type = QuestionType::None;
    PictureGenerateInfo picInfo;
    connect(item.get(), &ChatItemWidget::sigModifyButtonClicked, this,
            [&](const QString &q, QuestionType t, const PictureGenerateInfo &p) {
                question = q;
                type = t;
                picInfo = p;
            });
    item->show();
    QTest::mouseClick(buttonOf(*item, "modifyButton"), Qt::LeftButton);
    QCOMPARE(question, QStringLiteral("a harbour at night"));
    // It is the item's kind, whatever was asked for.
    QCOMPARE(static_cast<std::int32_t>(type), static_cast<std::int32_t>(Kind::Question));
    QCOMPARE(picInfo.style, std::string("Monet"));
}

void TestChatItemWidget::tryAgainHandsTheContextBack()
{
    const auto item = makeItem(Kind::AnswerText);
    ChatItemContext context;
    connect(item.get(), &ChatItemWidget::sigTryAgainQuestionButtonClicked, this,
            [&context](const ChatItemContext &c) { context = c; });
    item->show();
    QTest::mouseClick(buttonOf(*item, "tryAgainButton"), Qt::LeftButton);
    QCOMPARE(context.type, QuestionType::Picture);
    QCOMPARE(context.question, std::string("a harbour at night"));
    QCOMPARE(context.message, std::string("the message"));
    QCOMPARE(context.picInfo.style, std::string("Monet"));
}

void TestChatItemWidget::hiddenButtonsOfAPictureItemDoNothing()
{
    const auto item = makeItem(Kind::AnswerImage);
    int modified = 0;
    connect(item.get(), &ChatItemWidget::sigModifyButtonClicked, this, [&modified] { ++modified; });
    buttonOf(*item, "copyButton")->click();
    buttonOf(*item, "modifyButton")->click();
    QCOMPARE(modified, 0);
}

void TestChatItemWidget::stopReportsFinishedEachTime()
{
    QFETCH(Kind, kind);
    const auto item = makeItem(kind);
    QSignalSpy finished(item.get(), &ChatItemWidget::sigTypingFinished);
    item->stopTyping();
    item->stopTyping();
    QCOMPARE(finished.count(), kind == Kind::AnswerImage ? 0 : 2);
}

void TestChatItemWidget::pictureSignalsAreForwarded()
{
    const auto item = makeItem(Kind::AnswerImage);
    auto *const pictures = item->findChild<PixmapLabel *>();
    QString told;
    connect(item.get(), &ChatItemWidget::sigLookImageButtonClicked, this,
            [&told](const AIImage &image) { told += QStringLiteral("look ") + QString::fromStdString(image.url); });
    connect(item.get(), &ChatItemWidget::sigDownloadButtonClicked, this,
            [&told](const AIImage &image) { told += QStringLiteral(" get ") + QString::fromStdString(image.url); });
    connect(item.get(), &ChatItemWidget::sigTryAgainImageButtonClicked, this,
            [&told](const QString &question, const PictureGenerateInfo &info) {
                told += QStringLiteral(" again ") + question + u' ' + QString::fromStdString(info.style);
            });
    Q_EMIT pictures->sigLookImageButtonClicked(AIImage{{}, {}, "1"});
    Q_EMIT pictures->sigDownloadButtonClicked(AIImage{{}, {}, "2"});
    Q_EMIT pictures->sigTryAgainImageButtonClicked(QStringLiteral("q"), item->context().picInfo);
    QCOMPARE(told, QStringLiteral("look 1 get 2 again q Monet"));
}

void TestChatItemWidget::retranslatesItsOwnTextsOnly_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("hello") << Kind::Hello << QByteArray("WelcomeText");
    QTest::newRow("question") << Kind::Question << QByteArray();
    QTest::newRow("answer text") << Kind::AnswerText << QByteArray();
    QTest::newRow("text generating") << Kind::TextGenerating << QByteArray("Thinking");
    QTest::newRow("image generating") << Kind::ImageGenerating << QByteArray("ImageGenerating");
}

void TestChatItemWidget::retranslatesItsOwnTextsOnly()
{
    QFETCH(Kind, kind);
    QFETCH(QByteArray, key);
    const auto item = makeItem(kind);
    holdTimers(*browserOf(*item));
    const QString before = browserOf(*item)->toPlainText();
    useLanguage("rus");
    item->retranslate();
    const QString copy = text("Copy");
    const QString expected = key.isEmpty() ? before : text(key.constData()).replace(u'#', u'\n');
    useLanguage("en");
    QCOMPARE(browserOf(*item)->toPlainText(), expected);
    QCOMPARE(buttonOf(*item, "copyButton")->text(), copy);
    QVERIFY(copy != text("Copy"));
}

void TestChatItemWidget::buttonsAreEnabledAndDisabled()
{
    const auto item = makeItem(Kind::Question);
    item->setButtonsEnabled(false);
    QVERIFY(!buttonOf(*item, "copyButton")->isEnabled());
    QVERIFY(!buttonOf(*item, "modifyButton")->isEnabled());
    QVERIFY(!buttonOf(*item, "tryAgainButton")->isEnabled());
    item->setButtonsEnabled(true);
    QVERIFY(buttonOf(*item, "copyButton")->isEnabled());
}

void TestChatItemWidget::unpaintedItemTakesPaintRequestsAgain()
{
    const auto item = makeItem(Kind::Question);
    {
        const ChatItemWidget::Unpainted unpainted(*item);
        QVERIFY(!buttonOf(*item, "copyButton")->updatesEnabled());
    }
    QVERIFY(buttonOf(*item, "copyButton")->updatesEnabled());
}

// An item that was out of sight shows what it became there.
void TestChatItemWidget::disablingOutOfSightIsSeenAfterScrolling()
{
    QWidget window;
    window.resize(300, 100);
    QWidget sheet(&window);
    sheet.resize(300, 400);
    auto *const item = new QuestionItemWidget(someContext(), &sheet);
    item->setGeometry(0, 200, 300, 80);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    {
        const ChatItemWidget::Unpainted unpainted(*item);
        item->setButtonsEnabled(false);
    }
    sheet.move(0, -200);
    QEvent paint(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&window, &paint);
    const QImage seen = onScreen(window);
    window.repaint();
    QCOMPARE(seen, onScreen(window));
    item->setButtonsEnabled(true);
    window.repaint();
    QVERIFY(seen != onScreen(window));
}

QTEST_MAIN(TestChatItemWidget)
#include "tst_chatitemwidget.moc"
