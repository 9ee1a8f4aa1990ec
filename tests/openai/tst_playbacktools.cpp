#include "builtin/agentcommands.h"
#include "openai/playbacktools.h"
#include "openai/toolcalls.h"

#include <QJsonDocument>
#include <QTest>

using namespace tavro::assistantservice;

namespace {

const QVector<MediaItem> library{{QStringLiteral("m1"), QStringLiteral("Harbour.mp4")},
                                 {QStringLiteral("m2"), QStringLiteral("Sunset Beach")},
                                 {QStringLiteral("m3"), QStringLiteral("Sunset City")}};

ToolCall callOf(const QString &name, const QByteArray &arguments)
{
    return {name, QJsonDocument::fromJson(arguments).object(), true};
}

Understanding understand(const QVector<ToolCall> &calls)
{
    return understandCalls(calls, MediaNames(library), library, mediaForModel(library, {}));
}

QByteArray commandsFor(const Understanding &understanding)
{
    return QJsonDocument(agentCommands(understanding.intents, MediaNames(library))).toJson(QJsonDocument::Compact);
}

} // namespace

Q_DECLARE_METATYPE(Problem)

class PlaybackToolsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goodCallsBecomeCommands_data();
    void goodCallsBecomeCommands();
    void badCallsAreAProblem_data();
    void badCallsAreAProblem();
    void candidatesAreNamed();
    void firstProblemCounts();
    void severalCallsStayInOrder();
    void tooManyCallsAreRefused();
    void shownIdMeansTheItem();
    void unreadableArgumentsAreAProblem();
    void toolsListTheIdsOfASmallLibrary();
};

void PlaybackToolsTest::goodCallsBecomeCommands_data()
{
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QByteArray>("arguments");
    QTest::addColumn<QByteArray>("commands");
    QTest::newRow("play") << "play_media" << QByteArray(R"({"media_id":"m1","layer_id":2,"volume":0.5})")
                          << QByteArray(
                                 R"([{"cmdType":0,"params":{"bPlay":true,"layerId":2,"mediaId":"m1","volume":0.5}}])");
    QTest::newRow("everything") << "play_media"
                                << QByteArray(
                                       R"({"media_id":"m2","layer_id":2,"program_id":3,"output_id":4,"volume":1})")
                                << QByteArray(R"([{"cmdType":0,"params":{"bPlay":true,"layerId":2,"mediaId":"m2",)"
                                              R"("outputId":4,"programId":3,"volume":1}}])");
    QTest::newRow("numbers as texts")
        << "play_media" << QByteArray(R"({"media_id":"m1","layer_id":"2","volume":"0.5"})")
        << QByteArray(R"([{"cmdType":0,"params":{"bPlay":true,"layerId":2,"mediaId":"m1","volume":0.5}}])");
    QTest::newRow("null is not given") << "play_media" << QByteArray(R"({"media_id":"m1","layer_id":null})")
                                       << QByteArray(R"([{"cmdType":0,"params":{"bPlay":true,"mediaId":"m1"}}])");
    QTest::newRow("by name") << "play_media" << QByteArray(R"({"media_name":"harbour"})")
                             << QByteArray(R"([{"cmdType":0,"params":{"bPlay":true,"mediaId":"m1"}}])");
    QTest::newRow("name for an id") << "play_media" << QByteArray(R"({"media_id":"sunset city"})")
                                    << QByteArray(R"([{"cmdType":0,"params":{"bPlay":true,"mediaId":"m3"}}])");
    QTest::newRow("picture") << "play_generated_picture" << QByteArray(R"({"layer_id":1})")
                             << QByteArray(R"([{"cmdType":0,"params":{"bPlay":true,"layerId":1}}])");
    QTest::newRow("stop") << "stop_layer" << QByteArray(R"({"layer_id":1})")
                          << QByteArray(R"([{"cmdType":1001,"params":{"bPlay":false,"layerId":1}}])");
    QTest::newRow("stop a program") << "stop_layer" << QByteArray(R"({"program_id":1})")
                                    << QByteArray(R"([{"cmdType":1001,"params":{"bPlay":false,"programId":1}}])");
    QTest::newRow("stop all") << "stop_layer" << QByteArray(R"({"every_layer":true})")
                              << QByteArray(R"([{"cmdType":1001,"params":{"bPlay":false}}])");
    QTest::newRow("volume") << "set_volume" << QByteArray(R"({"layer_id":1,"volume":0})")
                            << QByteArray(R"([{"cmdType":1002,"params":{"layerId":1,"volume":0}}])");
    QTest::newRow("unknown arguments") << "stop_layer" << QByteArray(R"({"layer_id":1,"fade":true})")
                                       << QByteArray(R"([{"cmdType":1001,"params":{"bPlay":false,"layerId":1}}])");
}

void PlaybackToolsTest::goodCallsBecomeCommands()
{
    QFETCH(QString, tool);
    QFETCH(QByteArray, arguments);
    QFETCH(QByteArray, commands);
    const Understanding understanding = understand({callOf(tool, arguments)});
    QVERIFY(understanding.problem == Problem::None);
    QCOMPARE(commandsFor(understanding), commands);
}

void PlaybackToolsTest::badCallsAreAProblem_data()
{
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QByteArray>("arguments");
    QTest::addColumn<Problem>("problem");
    QTest::newRow("unknown tool") << "delete_media" << QByteArray(R"({"media_id":"m1"})") << Problem::Unsupported;
    QTest::newRow("no tool") << "" << QByteArray("{}") << Problem::Unsupported;
    QTest::newRow("nothing to play") << "play_media" << QByteArray(R"({"layer_id":1})") << Problem::NoMedia;
    QTest::newRow("unknown media") << "play_media" << QByteArray(R"({"media_id":"zebra"})") << Problem::UnknownMedia;
    QTest::newRow("ambiguous") << "play_media" << QByteArray(R"({"media_name":"sunset"})") << Problem::SeveralMedia;
    QTest::newRow("layer 0") << "stop_layer" << QByteArray(R"({"layer_id":0})") << Problem::WrongPlace;
    QTest::newRow("layer -1") << "stop_layer" << QByteArray(R"({"layer_id":-1})") << Problem::WrongPlace;
    QTest::newRow("layer 1.5") << "stop_layer" << QByteArray(R"({"layer_id":1.5})") << Problem::WrongPlace;
    QTest::newRow("layer 1e300") << "stop_layer" << QByteArray(R"({"layer_id":1e300})") << Problem::WrongPlace;
    QTest::newRow("layer in words") << "stop_layer" << QByteArray(R"({"layer_id":"two"})") << Problem::WrongPlace;
    QTest::newRow("layer true") << "stop_layer" << QByteArray(R"({"layer_id":true})") << Problem::WrongPlace;
    QTest::newRow("nowhere to stop") << "stop_layer" << QByteArray("{}") << Problem::NoLayer;
    QTest::newRow("nowhere to set") << "set_volume" << QByteArray(R"({"volume":0.5})") << Problem::NoLayer;
    QTest::newRow("no volume") << "set_volume" << QByteArray(R"({"layer_id":1})") << Problem::NoVolume;
    QTest::newRow("volume 50") << "set_volume" << QByteArray(R"({"layer_id":1,"volume":50})") << Problem::WrongVolume;
    QTest::newRow("volume -1") << "play_media" << QByteArray(R"({"media_id":"m1","volume":-1})")
                               << Problem::WrongVolume;
    QTest::newRow("volume in words") << "play_media" << QByteArray(R"({"media_id":"m1","volume":"half"})")
                                     << Problem::WrongVolume;
    QTest::newRow("volume NaN") << "play_media" << QByteArray(R"({"media_id":"m1","volume":"nan"})")
                                << Problem::WrongVolume;
}

void PlaybackToolsTest::badCallsAreAProblem()
{
    QFETCH(QString, tool);
    QFETCH(QByteArray, arguments);
    QFETCH(Problem, problem);
    const Understanding understanding = understand({callOf(tool, arguments)});
    QCOMPARE(static_cast<int>(understanding.problem), static_cast<int>(problem));
    QCOMPARE(understanding.troubled, 0);
}

void PlaybackToolsTest::candidatesAreNamed()
{
    const Understanding understanding =
        understand({callOf(QStringLiteral("play_media"), R"({"media_name":"sunset"})")});
    QCOMPARE(understanding.candidates, (QVector<int>{1, 2}));
    QCOMPARE(understanding.phrase, QStringLiteral("sunset"));
}

void PlaybackToolsTest::firstProblemCounts()
{
    const Understanding understanding = understand({callOf(QStringLiteral("play_media"), R"({"media_id":"m1"})"),
                                                    callOf(QStringLiteral("stop_layer"), R"({"layer_id":0})"),
                                                    callOf(QStringLiteral("play_media"), R"({})")});
    QCOMPARE(static_cast<int>(understanding.problem), static_cast<int>(Problem::WrongPlace));
    QCOMPARE(understanding.troubled, 1);
    QCOMPARE(understanding.phrase, QStringLiteral("0"));
}

void PlaybackToolsTest::severalCallsStayInOrder()
{
    const Understanding understanding = understand({callOf(QStringLiteral("stop_layer"), R"({"layer_id":1})"),
                                                    callOf(QStringLiteral("play_media"), R"({"media_id":"m1"})")});
    QVERIFY(understanding.problem == Problem::None);
    QCOMPARE(commandsFor(understanding),
             QByteArray(R"([{"cmdType":1001,"params":{"bPlay":false,"layerId":1}},)"
                        R"({"cmdType":0,"params":{"bPlay":true,"mediaId":"m1"}}])"));
}

void PlaybackToolsTest::tooManyCallsAreRefused()
{
    const ToolCall call = callOf(QStringLiteral("stop_layer"), R"({"layer_id":1})");
    QVERIFY(understand(QVector<ToolCall>(20, call)).problem == Problem::None);
    QVERIFY(understand(QVector<ToolCall>(21, call)).problem == Problem::Unsupported);
}

void PlaybackToolsTest::shownIdMeansTheItem()
{
    const QVector<MediaItem> media{{QStringLiteral("m1"), QStringLiteral("One")},
                                   {QString(5000, u'x'), QStringLiteral("Two")}};
    const QVector<ShownItem> shown = mediaForModel(media, {});
    const ToolCall call = callOf(QStringLiteral("play_media"), R"({"media_id":"item-2"})");
    const Understanding understanding = understandCalls({call}, MediaNames(media), media, shown);
    QVERIFY(understanding.problem == Problem::None);
    const QJsonObject command = agentCommands(understanding.intents, MediaNames(media)).first().toObject();
    QCOMPARE(command[QLatin1String("params")][QLatin1String("mediaId")].toString(), media[1].id);
}

void PlaybackToolsTest::unreadableArgumentsAreAProblem()
{
    QVERIFY(understand({{QStringLiteral("play_generated_picture"), {}, false}}).problem == Problem::Unsupported);
}

void PlaybackToolsTest::toolsListTheIdsOfASmallLibrary()
{
    const auto idParameter = [](const QVector<MediaItem> &media) {
        const QJsonObject function =
            playbackTools(mediaForModel(media, {})).at(0).toObject().value(QLatin1String("function")).toObject();
        return function[QLatin1String("parameters")][QLatin1String("properties")][QLatin1String("media_id")].toObject();
    };
    QCOMPARE(idParameter(library).value(QLatin1String("enum")).toArray(),
             (QJsonArray{QStringLiteral("m1"), QStringLiteral("m2"), QStringLiteral("m3")}));
    // An empty list of what is allowed would be no schema.
    QVERIFY(!idParameter({}).contains(QLatin1String("enum")));
}

QTEST_GUILESS_MAIN(PlaybackToolsTest)
#include "tst_playbacktools.moc"
