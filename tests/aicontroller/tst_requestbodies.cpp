#include "controllertest.h"
#include "support/jsonshape.h"

#include <QJsonArray>

#include <cstdint>
#include <limits>

namespace {

const char textBody[] = "{\n"
                        "    \"enableDS\": true,\n"
                        "    \"enableNet\": false,\n"
                        "    \"mediaList\": [\n"
                        "        {\n"
                        "            \"id\": \"m1\",\n"
                        "            \"name\": \"One\"\n"
                        "        }\n"
                        "    ],\n"
                        "    \"messages\": [\n"
                        "        {\n"
                        "            \"content\": \"What \\\"now\\\"?\",\n"
                        "            \"type\": false\n"
                        "        }\n"
                        "    ]\n"
                        "}\n";

const char pictureBody[] = "{\n"
                           "    \"content\": \"a hill\",\n"
                           "    \"enableLogo\": true,\n"
                           "    \"height\": 480,\n"
                           "    \"logoContent\": \"logo\",\n"
                           "    \"logoLanguage\": true,\n"
                           "    \"logoOpacity\": 0.5,\n"
                           "    \"logoPositon\": 200,\n"
                           "    \"style\": \"oil\",\n"
                           "    \"useSR\": false,\n"
                           "    \"width\": 640\n"
                           "}\n";

const char defaultPictureBody[] = "{\n"
                                  "    \"content\": \"\",\n"
                                  "    \"enableLogo\": false,\n"
                                  "    \"height\": 2160,\n"
                                  "    \"logoContent\": \"width\",\n"
                                  "    \"logoLanguage\": false,\n"
                                  "    \"logoOpacity\": 0.3499999940395355,\n"
                                  "    \"logoPositon\": 0,\n"
                                  "    \"style\": \"\",\n"
                                  "    \"useSR\": true,\n"
                                  "    \"width\": 3840\n"
                                  "}\n";

} // namespace

/// The bodies of the two generation requests, as the service receives them.
class RequestBodiesTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void textQuestionIsPostedByteForByte();
    void pictureRequestIsPostedByteForByte();
    void defaultPictureParametersAreSent();
    void integersAreSentAsIntegers();
    void emptyMediaLibraryIsAnEmptyList();
    void mediaLibraryKeepsItsOrderAndDoubles();
    void anyTextSurvivesTheWay_data();
    void anyTextSurvivesTheWay();

private:
    HttpRequest lastRequest() const { return f->server.requests().last(); }
};

void RequestBodiesTest::textQuestionIsPostedByteForByte()
{
    f->controller.activeDeepseekModel(true);
    f->controller.setMediaLibAllResources({{"m1", "One"}});
    QVERIFY(f->askText(QStringLiteral("What \"now\"?")));
    QCOMPARE(f->server.requestCount(), 1);
    QCOMPARE(lastRequest().method, QByteArrayLiteral("POST"));
    QCOMPARE(lastRequest().target, QByteArrayLiteral("/ai/texttotext/generate/"));
    QCOMPARE(lastRequest().body, QByteArray(textBody));
    QCOMPARE(f->signalled.summary(), QString());
}

void RequestBodiesTest::pictureRequestIsPostedByteForByte()
{
    f->controller.setMediaLibAllResources({{"m1", "One"}});
    f->controller.activeOnlineSearch(true);
    const PictureGenerateInfo info{"oil", 640, 480, false, "a hill", true, 200, true, 0.5F, "logo"};
    QVERIFY(f->askPicture(info));
    QCOMPARE(lastRequest().method, QByteArrayLiteral("POST"));
    QCOMPARE(lastRequest().target, QByteArrayLiteral("/ai/texttoimage/generate/"));
    QCOMPARE(lastRequest().body, QByteArray(pictureBody));
}

void RequestBodiesTest::defaultPictureParametersAreSent()
{
    QVERIFY(f->askPicture({}));
    QCOMPARE(lastRequest().body, QByteArray(defaultPictureBody));
}

void RequestBodiesTest::integersAreSentAsIntegers()
{
    PictureGenerateInfo info;
    info.width = std::numeric_limits<std::int32_t>::max();
    info.height = std::numeric_limits<std::int32_t>::min();
    info.logoPositon = 255;
    QVERIFY(f->askPicture(info));
    QCOMPARE(rawValueOf(lastRequest().body, "width"), QByteArrayLiteral("2147483647"));
    QCOMPARE(rawValueOf(lastRequest().body, "height"), QByteArrayLiteral("-2147483648"));
    QCOMPARE(rawValueOf(lastRequest().body, "logoPositon"), QByteArrayLiteral("255"));
}

void RequestBodiesTest::emptyMediaLibraryIsAnEmptyList()
{
    QVERIFY(f->askText());
    QCOMPARE(shapeOf(lastRequest().json()),
             QStringLiteral("enableDS:bool enableNet:bool mediaList:array messages:array"));
    QVERIFY(lastRequest().json().value(QLatin1String("mediaList")).toArray().isEmpty());
}

void RequestBodiesTest::mediaLibraryKeepsItsOrderAndDoubles()
{
    f->controller.setMediaLibAllResources({{"b", "\xE4\xB8\xAD"}, {"a", ""}, {"b", "again"}});
    QVERIFY(f->askText());
    const QJsonArray list = lastRequest().json().value(QLatin1String("mediaList")).toArray();
    QCOMPARE(list.size(), 3);
    for (const QJsonValue &entry : list)
        QCOMPARE(shapeOf(entry.toObject()), QStringLiteral("id:string name:string"));
    QCOMPARE(list.at(0).toObject().value(QLatin1String("name")).toString(), QStringLiteral("\u4e2d"));
    QCOMPARE(list.at(1).toObject().value(QLatin1String("id")).toString(), QStringLiteral("a"));
    QCOMPARE(list.at(2).toObject().value(QLatin1String("name")).toString(), QStringLiteral("again"));
}

void RequestBodiesTest::anyTextSurvivesTheWay_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("quotes and backslashes") << QStringLiteral("\"a\\b\" 'c'");
    QTest::newRow("control characters") << QStringLiteral("a\r\n\tb\u0001\u2028");
    QTest::newRow("emoji") << QStringLiteral("\U0001F600 \u4e2d\u6587 e\u0301");
    QTest::newRow("NUL") << QStringLiteral("a") + QChar(QChar::Null) + QStringLiteral("b");
    QTest::newRow("100 kB") << QString(100 * 1024, QLatin1Char('x'));
    QTest::newRow("100 kB, three bytes each") << QString(100 * 1024, QChar(0x4e2d));
}

void RequestBodiesTest::anyTextSurvivesTheWay()
{
    QFETCH(QString, text);
    QVERIFY(f->askText(text));
    const QJsonArray messages = lastRequest().json().value(QLatin1String("messages")).toArray();
    QCOMPARE(messages.at(0).toObject().value(QLatin1String("content")).toString(), text);

    PictureGenerateInfo info;
    info.content = text.toStdString();
    QVERIFY(f->askPicture(info));
    QCOMPARE(lastRequest().json().value(QLatin1String("content")).toString(), text);
    QVERIFY(f->poll(ControllerFixture::failed(QStringLiteral("no"))));
    QCOMPARE(QString::fromStdString(f->signalled.errorOccured.argument<0>(0).question), text);
}

QTEST_GUILESS_MAIN(RequestBodiesTest)
#include "tst_requestbodies.moc"
