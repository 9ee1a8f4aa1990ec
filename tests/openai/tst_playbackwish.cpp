#include "openai/playbackwish.h"

#include <QTest>

using namespace tavro::assistantservice;

namespace {

// "u:hello|a:hi": who said what.
QVector<ChatMessage> conversation(const QString &written)
{
    QVector<ChatMessage> messages;
    const QStringList parts = written.split(QLatin1Char('|'), Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        messages.append({part.startsWith(QLatin1Char('a')), part.mid(2)});
    }
    return messages;
}

const QVector<MediaItem> library{{QStringLiteral("m1"), QStringLiteral("Harbour.mp4")},
                                 {QStringLiteral("m2"), QStringLiteral("Stop Motion")},
                                 {QStringLiteral("m3"), QStringLiteral("海港夜景")},
                                 {QStringLiteral("m4"), QStringLiteral("Sunset")}};

// "p": plays Harbour, "s": stops layer 1, "S": stops every layer, "v": sets a volume.
bool covers(const PlaybackWish &wish, QChar kind)
{
    Intent intent;
    intent.places.layers = {1};
    if (kind == QLatin1Char('p')) {
        intent.media = 0;
    } else {
        intent.action = kind == QLatin1Char('v') ? Intent::Action::SetVolume : Intent::Action::Stop;
    }
    if (kind == QLatin1Char('S')) {
        intent.places.layers.clear();
        intent.everyLayer = true;
    }
    return wish.covers(intent);
}

QString coveredKinds(const QString &written)
{
    const QVector<ChatMessage> messages = conversation(written);
    const MediaNames names(library);
    const PlaybackWish wish(messages, names);
    QString kinds;
    for (const char kind : {'p', 's', 'S', 'v'}) {
        kinds += covers(wish, QLatin1Char(kind)) ? QString(QLatin1Char(kind)) : QString();
    }
    return kinds;
}

} // namespace

/// What an operator's words let a model do.
class PlaybackWishTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wordsAllow_data();
    void wordsAllow();
    void wordsForbid_data();
    void wordsForbid();
};

void PlaybackWishTest::wordsAllow_data()
{
    QTest::addColumn<QString>("said");
    QTest::addColumn<QString>("kinds");
    const auto row = [](const char *said, const char *kinds) {
        QTest::newRow(said) << QString::fromUtf8(said) << kinds;
    };
    row("u:play the harbour", "p");
    row("u:put the harbour on two, half volume", "pv");
    row("u:could you bring up the harbour please", "p");
    row("u:I want to see the harbour", "p");
    row("u:how about the harbour?", "p");
    row("u:Harbour on layer 2", "p");
    row("u:harbour, please", "p");
    row("u:stop layer 1", "s");
    row("u:stop", "sS");
    row("u:stop the music", "sS");
    row("u:kill layer 1", "s");
    row("u:take everything down", "sS");
    row("u:turn layers 1 and 2 and all the others off", "sS");
    row("u:get the second layer off the air", "s");
    row("u:replace layer 1 with the harbour", "ps");
    row("u:make it louder", "v");
    row("u:mute layer 1", "v");
    row("u:50 % on layer 1", "v");
    row("u:it is too loud", "v");
    row("u:do not play the harbour, stop layer 1", "s");
    row("u:在第一层播放海港夜景", "p");
    row("u:能不能播放海港", "p");
    row("u:换成海港", "p");
    row("u:停止第一层", "s");
    row("u:把所有图层都关掉", "sS");
    row("u:太吵了", "v");
    row("u:第一层音量百分之三十", "v");
    row("u:播放海港夜景，停止第一層", "ps");
    row("u:поставь Harbour на слой 1", "p");
    row("u:выведи порт на экран", "p");
    row("u:останови слой 1", "s");
    row("u:убери все", "sS");
    row("u:сделай потише", "v");
    row("u:레이어 1에서 항구 재생해줘", "p");
    row("u:항구 틀어 줘", "p");
    row("u:레이어 1 멈춰", "s");
    row("u:다 꺼 줘", "sS");
    row("u:소리 좀 줄여 줘", "v");
    row("u:play the sunset|a:Which one?|u:the second one", "p");
    row("u:play the sunset|a:Which one?|u:the first|a:On which layer?|u:layer 2", "p");
    row("u:stop it|a:Which layer?|u:1", "s");
    row("u:stop it|a:Which layer?|u:layer 1", "s");
    row("u:set the volume|a:To which?|u:30 %", "v");
    row("u:what could we show?|a:Shall I play Harbour on layer 1?|u:yes", "p");
    row("u:hello|a:Shall I stop all layers?|u:yes, do it", "sS");
    row("u:你好|a:要停止所有图层吗？|u:好的", "sS");
}

void PlaybackWishTest::wordsAllow()
{
    QFETCH(QString, said);
    QFETCH(QString, kinds);
    const QString covered = coveredKinds(said);
    for (const QChar kind : qAsConst(kinds)) {
        QVERIFY2(covered.contains(kind), qPrintable(QStringLiteral("%1 is missing in \"%2\"").arg(kind).arg(covered)));
    }
}

void PlaybackWishTest::wordsForbid_data()
{
    QTest::addColumn<QString>("said");
    QTest::addColumn<QString>("kinds");
    const auto row = [](const char *said, const char *kinds) {
        QTest::newRow(said) << QString::fromUtf8(said) << kinds;
    };
    row("u:what items are there?", "psSv");
    row("u:hello", "psSv");
    row("u:write a headline about the black cat", "psSv");
    row("u:写一段关于大海的介绍", "psSv");
    row("u:크리스마스 인사말을 써줘", "psSv");
    row("u:напиши заголовок о выборах", "psSv");
    row("u:thank you", "psSv");
    row("u:tell me a joke", "psSv");
    row("u:write a headline about the election", "psSv");
    row("u:how do I stop a layer?", "psSv");
    row("u:what is playing?", "psSv");
    row("u:tell me about Harbour", "psSv");
    row("u:play the harbour", "sSv");
    row("u:play Stop Motion", "sSv");
    row("u:play \"stop all layers\"", "sSv");
    row("u:stop layer 1", "pSv");
    row("u:stop the second layer", "pSv");
    row("u:make it louder", "sS");
    row("u:do not stop layer 1", "sSv");
    row("u:有哪些素材？", "psSv");
    row("u:别停第一层", "sS");
    row("u:如何停止一个图层？", "psSv");
    row("u:播放海港夜景", "sSv");
    row("u:какие клипы есть?", "psSv");
    row("u:что есть в библиотеке?", "psSv");
    row("u:не останавливай слой 1", "sS");
    row("u:어떤 영상이 있어?", "psSv");
    row("u:play the sunset|a:Which one?|u:no", "sSv");
    row("u:play the sunset|a:Which one?|u:never mind", "psSv");
    row("u:play the sunset|a:Which one?|u:the second one", "sSv");
    row("u:stop it|a:Which layer?|u:what items are there?", "psSv");
    row("u:hello|a:Shall I stop all layers?|u:no", "psSv");
    row("u:hello|a:Shall I stop all layers?|u:who are you?", "psSv");
    row("a:stop all layers|u:hello", "psSv");
}

void PlaybackWishTest::wordsForbid()
{
    QFETCH(QString, said);
    QFETCH(QString, kinds);
    const QString covered = coveredKinds(said);
    for (const QChar kind : qAsConst(kinds)) {
        QVERIFY2(!covered.contains(kind), qPrintable(covered));
    }
}

QTEST_GUILESS_MAIN(PlaybackWishTest)
#include "tst_playbackwish.moc"
