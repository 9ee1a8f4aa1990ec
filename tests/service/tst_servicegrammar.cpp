#include "builtin/builtinengine.h"
#include "grammartable.h"

#include <QtTest>

using namespace grammartable;
using tavro::assistantservice::BuiltinEngine;

namespace {

QVector<MediaItem> library()
{
    const std::pair<const char *, const char *> items[] = {
        {"m1", "Harbour.mp4"},
        {"m2", "Harbour Night.mp4"},
        {"m3", "Sunset_Beach.mov"},
        {"m4", "Program 1 Opener"},
        {"m5", "海港夜景.mp4"},
        {"m6", "城市的夜"},
        {"m7", "雪山"},
        {"m8", "Clip 1"},
        {"m9", "Clip 10"},
        {"m10", "Salt and Pepper"},
        {"m11", "City Lights 2.mp4"},
        {"m12", "City Lights 3.mp4"},
        {"m13", "Forest Walk"},
        {"m14", "Camera Two"},
    };
    QVector<MediaItem> media;
    for (const auto &[id, name] : items) {
        media.append({QString::fromUtf8(id), QString::fromUtf8(name)});
    }
    return media;
}

void check()
{
    grammartable::check(library());
}

} // namespace

class ServiceGrammarTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void englishPlay_data();
    void englishPlay() { check(); }
    void englishStopAndVolume_data();
    void englishStopAndVolume() { check(); }
    void chinese_data();
    void chinese() { check(); }
    void russianAndKorean_data();
    void russianAndKorean() { check(); }
    void asksBackAndChangesNothing_data();
    void asksBackAndChangesNothing() { check(); }
    void understandsAnswersToItsQuestions_data();
    void understandsAnswersToItsQuestions() { check(); }
    void leavesOtherQuestionsAlone_data();
    void leavesOtherQuestionsAlone() { check(); }
    void mentionsTheSwitchesOnlyWhereTheyMatter();
    void tellsItemsOfOneNameApartById();
    void saysThatTheLibraryIsEmpty();
    void survivesAnyText_data();
    void survivesAnyText();
};

void ServiceGrammarTest::englishPlay_data()
{
    columns();
    row("play harbour on layer 2 at half volume", "0 bPlay=true layerId=2 mediaId=m1 volume=0.5",
        "Playing Harbour.mp4 on layer 2 at 50 % volume.");
    row("Please play the Harbour Night clip on the second layer at 30 percent",
        "0 bPlay=true layerId=2 mediaId=m2 volume=0.3", "at 30 % volume");
    row("could you show sunset beach on layer two, program 1, output 3?",
        "0 bPlay=true layerId=2 mediaId=m3 outputId=3 programId=1", "Playing Sunset_Beach.mov");
    row("play HARBOUR-NIGHT.MP4", "0 bPlay=true mediaId=m2", "Playing Harbour Night.mp4.");
    row("play harbournight", "0 bPlay=true mediaId=m2", "Playing");
    row("play forest", "0 bPlay=true mediaId=m13", "Forest Walk");
    row("play walk forest", "0 bPlay=true mediaId=m13", "Forest Walk");
    row("play clip 1", "0 bPlay=true mediaId=m8", "Clip 1.");
    row("play clip 10 on layer one", "0 bPlay=true layerId=1 mediaId=m9", "Clip 10");
    row("play clip 01", "0 bPlay=true mediaId=m8", "Clip 1.");
    row("play camera 2 on the 3rd layer", "0 bPlay=true layerId=3 mediaId=m14", "Camera Two");
    row("play program 1 opener on layer 3", "0 bPlay=true layerId=3 mediaId=m4", "Program 1 Opener on layer 3");
    row("play \"City Lights 3\" on layer 1", "0 bPlay=true layerId=1 mediaId=m12", "City Lights 3");
    row("play harbour muted on layer 2", "0 bPlay=true layerId=2 mediaId=m1 volume=0", "without sound");
    row("play harbour at full volume", "0 bPlay=true mediaId=m1 volume=1", "at 100 %");
    row("play harbour at 0.3 volume on layer two", "0 bPlay=true layerId=2 mediaId=m1 volume=0.3", "30 %");
    row("play harbour on layer 1 with the volume at twenty five percent",
        "0 bPlay=true layerId=1 mediaId=m1 volume=0.25", "25 %");
    row("on layer 4 play sunset beach", "0 bPlay=true layerId=4 mediaId=m3", "layer 4");
    row("put clip 10 on layer 2", "0 bPlay=true layerId=2 mediaId=m9", "Clip 10");
    row("can you put Sunset Beach on?", "0 bPlay=true mediaId=m3", "Sunset_Beach");
    row("harbour night on layer 2", "0 bPlay=true layerId=2 mediaId=m2", "Playing");
    row("play harbour-night on layers 1 and 2", "0 bPlay=true layerId=1 mediaId=m2; 0 bPlay=true layerId=2 mediaId=m2",
        "on layers 1 and 2");
    row("play harbour on layer 1 and forest walk on layer 2",
        "0 bPlay=true layerId=1 mediaId=m1; 0 bPlay=true layerId=2 mediaId=m13", "Playing Forest Walk on layer 2.");
    row("play salt and pepper on layer 1 and set the volume to 20%", "0 bPlay=true layerId=1 mediaId=m10 volume=0.2",
        "Salt and Pepper");
    row("stop layer 1 and play forest walk on layer 2",
        "1001 bPlay=false layerId=1; 0 bPlay=true layerId=2 mediaId=m13",
        "Stopping layer 1. Playing Forest Walk on layer 2.");
    row("play the generated picture on layer 1", "0 bPlay=true layerId=1", "Playing the generated picture on layer 1.");
    row("put the picture you just made on layer 2", "0 bPlay=true layerId=2", "generated picture");
}

void ServiceGrammarTest::englishStopAndVolume_data()
{
    columns();
    row("stop layer 2", "1001 bPlay=false layerId=2", "Stopping layer 2.");
    row("please stop the second layer now", "1001 bPlay=false layerId=2", "Stopping layer 2.");
    row("stop layers 1 and 3", "1001 bPlay=false layerId=1; 1001 bPlay=false layerId=3", "layers 1 and 3");
    row("stop everything", "1001 bPlay=false", "Stopping every layer.");
    row("stop program 2", "1001 bPlay=false programId=2", "every layer on program 2");
    row("turn off layer 2", "1001 bPlay=false layerId=2", "Stopping layer 2.");
    row("set the volume of layer 2 to 50%", "1002 layerId=2 volume=0.5", "Setting the volume of layer 2 to 50 %.");
    row("set layer 2 to 30", "1002 layerId=2 volume=0.3", "30 %");
    row("volume 30 on layer 1", "1002 layerId=1 volume=0.3", "30 %");
    row("layer 2 volume 75 percent", "1002 layerId=2 volume=0.75", "75 %");
    row("turn layer 2 down to 20%", "1002 layerId=2 volume=0.2", "20 %");
    row("mute layer 3", "1002 layerId=3 volume=0", "Muting layer 3.");
    row("turn off the sound on layer 1", "1002 layerId=1 volume=0", "Muting layer 1.");
    row("set layer 1 to full volume", "1002 layerId=1 volume=1", "100 %");
}

void ServiceGrammarTest::chinese_data()
{
    columns();
    row("播放海港夜景", "0 bPlay=true mediaId=m5", "正在播放“海港夜景.mp4”。");
    row("请在第二层播放海港夜景，音量百分之三十", "0 bPlay=true layerId=2 mediaId=m5 volume=0.3", "正在第 2 层播放");
    row("把雪山放到第1层，一半音量", "0 bPlay=true layerId=1 mediaId=m7 volume=0.5", "音量 50%");
    row("播放城市的夜到图层2", "0 bPlay=true layerId=2 mediaId=m6", "城市的夜");
    row("在节目1的第二层播放海港夜景", "0 bPlay=true layerId=2 mediaId=m5 programId=1", "节目 1");
    row("在第二层以50%的音量播放雪山", "0 bPlay=true layerId=2 mediaId=m7 volume=0.5", "50%");
    row("播放雪山，三成音量", "0 bPlay=true mediaId=m7 volume=0.3", "30%");
    row("播放“城市的夜”到第3层，静音", "0 bPlay=true layerId=3 mediaId=m6 volume=0", "静音");
    row("播放海港", "0 bPlay=true mediaId=m5", "海港夜景");
    row("請在第二層播放雪山", "0 bPlay=true layerId=2 mediaId=m7", "正在第 2 層播放「雪山」");
    row("停止第二层", "1001 bPlay=false layerId=2", "正在停止第 2 层。");
    row("停止第一层和第二层", "1001 bPlay=false layerId=1; 1001 bPlay=false layerId=2", "停止");
    row("停止所有图层", "1001 bPlay=false", "所有图层");
    row("第二层静音", "1002 layerId=2 volume=0", "静音");
    row("将第一层的音量设为30%", "1002 layerId=1 volume=0.3", "30%");
    row("把第二层的音量调到一半", "1002 layerId=2 volume=0.5", "50%");
    row("播放刚才生成的图片", "0 bPlay=true", "生成的图片");
    row("播放剛才生成的圖片到第二層", "0 bPlay=true layerId=2", "產生的圖片");
    row("播放雪山 第0层", "", "没有第 0 层");
    row("第一层音量调到150%", "", "0 到 100%");
    row("播放第三集", "", "没有找到“第三集”");
    row("播放夜", "", "哪一个");
    row("不要播放海港夜景", "", "不做任何更改");
    row("播放", "", "要播放什么");
}

void ServiceGrammarTest::russianAndKorean_data()
{
    columns();
    row("воспроизведи Harbour Night на слое 2 с громкостью 50%", "0 bPlay=true layerId=2 mediaId=m2 volume=0.5",
        "Воспроизвожу «Harbour Night.mp4»");
    row("останови слой 2", "1001 bPlay=false layerId=2", "Останавливаю");
    row("громкость слоя 2 30%", "1002 layerId=2 volume=0.3", "30 %");
    row("выключи звук на слое 1", "1002 layerId=1 volume=0", "Выключаю звук");
    row("레이어 2에서 Harbour Night 재생해줘", "0 bPlay=true layerId=2 mediaId=m2", "재생");
    row("2번 레이어 정지", "1001 bPlay=false layerId=2", "정지합니다");
    row("레이어 2 볼륨 30%", "1002 layerId=2 volume=0.3", "30%");
}

void ServiceGrammarTest::asksBackAndChangesNothing_data()
{
    columns();
    row("play city lights on layer 1", "", "Which one do you mean: 1. City Lights 2.mp4, 2. City Lights 3.mp4?");
    row("play harb", "", "Which one");
    row("play zebra", "", "I found nothing named \"zebra\"");
    row("play harbuor nite", "", "Did you mean: 1. Harbour Night.mp4?");
    row("play harbour and forest walk", "", "I found nothing named");
    row("play", "", "What shall I play?");
    row("play it on layer 2", "", "What shall I play?");
    row("stop", "", "Which layer shall I stop?");
    row("stop harbour", "", "Which layer shall I stop?");
    row("set the volume to 50%", "", "For which layer");
    row("set the volume of layer 2", "", "Which volume");
    row("unmute layer 2", "", "Which volume");
    row("turn the volume up", "", "I do not know the present volume");
    row("lower the volume of layer 1 by 10%", "", "I do not know the present volume");
    row("set layer 1 volume to 150%", "", "The volume goes from 0 to 100 %; 150 % is not possible.");
    row("set the volume of layer 1 to -5%", "", "-5 % is not possible");
    row("play harbour on layer 0", "", "there is no layer 0");
    row("play harbour on layer -1", "", "there is no layer -1");
    row("play harbour on layer 2.5", "", "there is no layer 2.5");
    row("stop layer minus two", "", "there is no layer -2");
    row("play harbour on program 0", "", "there is no program 0");
    row("play harbour on output 99999999999", "", "there is no output");
    row("play harbour at 120 percent", "", "120 % is not possible");
    row("pause layer 2", "", "not pause");
    row("don't play harbour", "", "I leave everything as it is");
    row("play harbour on layer 1 and stop", "", "Which layer shall I stop?");
}

void ServiceGrammarTest::understandsAnswersToItsQuestions_data()
{
    columns();
    row("play city lights on layer 1 || the second one", "0 bPlay=true layerId=1 mediaId=m12", "City Lights 3");
    row("play city lights on layer 1 || 1", "0 bPlay=true layerId=1 mediaId=m11", "City Lights 2");
    row("play city lights on layer 1 || city lights 3", "0 bPlay=true layerId=1 mediaId=m12", "City Lights 3");
    row("play city lights || the last one on layer 4", "0 bPlay=true layerId=4 mediaId=m12", "layer 4");
    row("play city lights || play the second one", "0 bPlay=true mediaId=m12", "City Lights 3");
    row("play city lights || the seventh one", "", "No language model");
    row("play city lights || stop layer 1", "1001 bPlay=false layerId=1", "Stopping");
    row("play city lights || what is a layer?", "", "No language model");
    row("play harbuor nite || yes", "0 bPlay=true mediaId=m2", "Harbour Night");
    row("play it on layer 2 || forest walk", "0 bPlay=true layerId=2 mediaId=m13", "Forest Walk");
    row("stop || 2", "1001 bPlay=false layerId=2", "Stopping layer 2.");
    row("stop || layer 3 please", "1001 bPlay=false layerId=3", "Stopping layer 3.");
    row("set the volume || layer 2 || 40 percent", "1002 layerId=2 volume=0.4", "40 %");
    row("play harbour on layer 0 || layer 1", "0 bPlay=true layerId=1 mediaId=m1", "layer 1");
    row("播放夜 || 第二个", "0 bPlay=true mediaId=m6", "城市的夜");
    row("播放夜 || 海港夜景", "0 bPlay=true mediaId=m5", "海港夜景");
    row("hello || 2", "", "No language model");
}

void ServiceGrammarTest::leavesOtherQuestionsAlone_data()
{
    columns();
    const char english[] = "No language model is configured";
    row("what is the capital of France?", "", english);
    row("Who wrote the play Hamlet?", "", english);
    row("how do I play harbour on layer 2?", "", english);
    row("show me how to cook", "", english);
    row("", "", english);
    row("今天天气怎么样？", "", "没有配置语言模型");
    row("今天天氣怎麼樣？", "", "沒有設定語言模型");
    row("как дела?", "", "не настроена языковая модель");
    row("오늘 날씨 어때?", "", "언어 모델");
}

void ServiceGrammarTest::mentionsTheSwitchesOnlyWhereTheyMatter()
{
    const std::atomic<bool> cancelled{false};
    const BuiltinEngine engine;
    const QString note = QStringLiteral("switches have no effect");
    const auto answer = [&](bool model, bool search, const char *text) {
        return engine.answer({model, search, conversation(QString::fromUtf8(text)), library()}, cancelled).answer;
    };
    QVERIFY(answer(true, false, "tell me a story").contains(note));
    QVERIFY(answer(false, true, "tell me a story").contains(note));
    QVERIFY(!answer(false, false, "tell me a story").contains(note));
    QVERIFY(!answer(true, true, "stop layer 2").contains(note));
}

void ServiceGrammarTest::tellsItemsOfOneNameApartById()
{
    const QVector<MediaItem> media{{QStringLiteral("a"), QStringLiteral("Intro")},
                                   {QStringLiteral("b"), QStringLiteral("Intro")}};
    const TextResult asked = ask(QStringLiteral("play intro"), media);
    QVERIFY(asked.agentCommands.isEmpty());
    QVERIFY2(asked.answer.contains(QStringLiteral("1. Intro (a), 2. Intro (b)")), qPrintable(asked.answer));
}

void ServiceGrammarTest::saysThatTheLibraryIsEmpty()
{
    const TextResult asked = ask(QStringLiteral("play harbour"), {});
    QVERIFY(asked.agentCommands.isEmpty());
    QVERIFY(asked.answer.contains(QStringLiteral("media library is empty")));
}

void ServiceGrammarTest::survivesAnyText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("signs only") << QStringLiteral("!!! ??? %%% ### --- \"\"");
    QTest::newRow("unclosed quote") << QStringLiteral("play \"harbour");
    QTest::newRow("half a surrogate pair") << (QStringLiteral("play ") + QChar(0xD83D));
    QTest::newRow("number without end") << QStringLiteral("play harbour on layer ") + QString(400, QLatin1Char('9'));
    QTest::newRow("Chinese number without end")
        << QStringLiteral("第") + QString(400, QChar(u'九')) + QStringLiteral("层");
    QTest::newRow("verbs only") << QStringLiteral("play stop set mute play stop and and then , ; play");
    QTest::newRow("very long") << QStringLiteral("play harbour and ").repeated(6000);
    QTest::newRow("longest that is read") << QStringLiteral("play harbour and ").repeated(23);
    QTest::newRow("format signs") << QStringLiteral("play {where} %1 {name}");
}

void ServiceGrammarTest::survivesAnyText()
{
    QFETCH(QString, text);
    QVERIFY(!ask(text, library()).answer.isEmpty());
}

QTEST_GUILESS_MAIN(ServiceGrammarTest)
#include "tst_servicegrammar.moc"
