#include "aicontroller/chatrecords.h"

#include <QTest>

#include <type_traits>

using namespace tavro::aiassistant;

namespace {

static_assert(std::is_same_v<std::underlying_type_t<QuestionType>, std::int32_t>);
static_assert(std::is_same_v<decltype(PictureGenerateInfo::style), std::string>);
static_assert(std::is_same_v<decltype(PictureGenerateInfo::width), std::int32_t>);
static_assert(std::is_same_v<decltype(PictureGenerateInfo::height), std::int32_t>);
static_assert(std::is_same_v<decltype(PictureGenerateInfo::useSR), bool>);
static_assert(std::is_same_v<decltype(PictureGenerateInfo::content), std::string>);
static_assert(std::is_same_v<decltype(PictureGenerateInfo::enableLogo), bool>);
static_assert(std::is_same_v<decltype(PictureGenerateInfo::logoPositon), std::uint8_t>);
static_assert(std::is_same_v<decltype(PictureGenerateInfo::logoLanguage), bool>);
static_assert(std::is_same_v<decltype(PictureGenerateInfo::logoOpacity), float>);
static_assert(std::is_same_v<decltype(PictureGenerateInfo::logoContent), std::string>);
static_assert(std::is_same_v<decltype(ChatItemContext::images), std::vector<AIImage>>);
static_assert(std::is_copy_constructible_v<ChatItemContext> && std::is_copy_assignable_v<ChatItemContext>);

} // namespace

class ChatRecordsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void questionTypesHaveTheirNumbers();
    void pictureParametersBeginWithTheirDefaults();
    void fieldsStandInOrder();
    void chatItemBeginsAsNoQuestion();
    void contextBeginsAsAChatItemWithoutImages();
    void otherRecordsBeginEmpty();
    void copyOfAContextSharesPixmaps();
    void copyOfAnEmptyContextIsEmpty();
};

void ChatRecordsTest::questionTypesHaveTheirNumbers()
{
    QCOMPARE(int(QuestionType::Text), 1);
    QCOMPARE(int(QuestionType::Picture), 2);
}

void ChatRecordsTest::pictureParametersBeginWithTheirDefaults()
{
    const PictureGenerateInfo info;
    QVERIFY(info.style.empty());
    QCOMPARE(info.width, 3840);
    QCOMPARE(info.height, 2160);
    QCOMPARE(info.useSR, true);
    QVERIFY(info.content.empty());
    QCOMPARE(info.enableLogo, false);
    QCOMPARE(int(info.logoPositon), 0);
    QCOMPARE(info.logoLanguage, false);
    QVERIFY(!(info.logoOpacity < 0.35F) && !(info.logoOpacity > 0.35F));
    QCOMPARE(info.logoContent, std::string("width"));
}

void ChatRecordsTest::fieldsStandInOrder()
{
    const PictureGenerateInfo info{"s", 1, 2, false, "c", true, 3, true, 0.5F, "l"};
    QCOMPARE(info.style, std::string("s"));
    QCOMPARE(info.width, 1);
    QCOMPARE(info.height, 2);
    QCOMPARE(info.content, std::string("c"));
    QCOMPARE(int(info.logoPositon), 3);
    QCOMPARE(info.logoContent, std::string("l"));

    const ChatItemBasic basic{QuestionType::Text, "q", info, "m"};
    QCOMPARE(basic.question, std::string("q"));
    QCOMPARE(basic.message, std::string("m"));
    const TextGeneratedPack text{"q", "a"};
    QCOMPARE(text.answer, std::string("a"));
    const PicturedGeneratedPack picture{"q", info, {"d", "u"}};
    QCOMPARE(picture.content, std::string("q"));
    QCOMPARE(picture.source.description, std::string("d"));
    QCOMPARE(picture.source.url, std::string("u"));
    const AIImage image{QPixmap(), "d", "u"};
    QCOMPARE(image.url, std::string("u"));
}

void ChatRecordsTest::chatItemBeginsAsNoQuestion()
{
    const ChatItemBasic basic;
    QCOMPARE(int(basic.type), 0);
    QVERIFY(basic.type != QuestionType::Text && basic.type != QuestionType::Picture);
    QVERIFY(basic.question.empty());
    QCOMPARE(basic.picInfo.width, 3840);
    QVERIFY(basic.message.empty());
}

void ChatRecordsTest::contextBeginsAsAChatItemWithoutImages()
{
    const ChatItemContext context;
    QCOMPARE(int(context.type), 0);
    QVERIFY(context.question.empty());
    QCOMPARE(context.picInfo.logoContent, std::string("width"));
    QVERIFY(context.message.empty());
    QVERIFY(context.images.empty());
}

void ChatRecordsTest::otherRecordsBeginEmpty()
{
    const AIImage image;
    QVERIFY(image.pixmap.isNull() && image.description.empty() && image.url.empty());
    const TextGeneratedPack text;
    QVERIFY(text.question.empty() && text.answer.empty());
    const PicturedGeneratedPack picture;
    QVERIFY(picture.content.empty() && picture.source.description.empty() && picture.source.url.empty());
    QCOMPARE(picture.picInfo.height, 2160);
}

void ChatRecordsTest::copyOfAContextSharesPixmaps()
{
    QPixmap pixmap(4, 3);
    pixmap.fill(Qt::red);
    ChatItemContext context;
    context.images = {{pixmap, "first", "u1"}, {QPixmap(), "second", "u2"}};

    ChatItemContext copy = context;
    QCOMPARE(copy.images.size(), std::size_t(2));
    QCOMPARE(copy.images[0].pixmap.cacheKey(), pixmap.cacheKey());
    QCOMPARE(copy.images[1].url, std::string("u2"));
    copy.images[0].description = "changed";
    QCOMPARE(context.images[0].description, std::string("first"));
}

void ChatRecordsTest::copyOfAnEmptyContextIsEmpty()
{
    const ChatItemContext context;
    const ChatItemContext copy = context;
    QVERIFY(copy.images.empty());
}

QTEST_MAIN(ChatRecordsTest)
#include "tst_chatrecords.moc"
