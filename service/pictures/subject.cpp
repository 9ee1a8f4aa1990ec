#include "pictures/subject.h"

#include "grammar/wordlist.h"
#include "pictures/random.h"

#include <QStringList>

namespace tavro::assistantservice {

namespace {

struct MotifWords {
    Motif motif;
    WordList words;
    const char16_t *english;
    const char16_t *chinese;
};

struct DaytimeWords {
    Daytime daytime;
    WordList words;
    const char16_t *english;
    const char16_t *chinese;
};

const QVector<MotifWords> &motifWords()
{
    static const QVector<MotifWords> table{
        {Motif::Harbour,
         WordList(u"harbour*|harbor*|port|ports|dock*|marina|boat*|ship*|sail*|海港|港口|港湾|港|码头|船|帆|порт|гаван*"
                  u"|лодк*|корабл*|항구*|배"),
         u"harbour", u"海港"},
        {Motif::Sea,
         WordList(u"sea|seas|ocean*|beach*|coast*|lake*|water*|river*|wave*|bay|island*|海|海洋|大海|湖|河|江|水|沙滩|"
                  u"海滩|岛|море|моря|озер*|рек*|берег*|바다*|호수*|강"),
         u"water", u"水面"},
        {Motif::Mountains,
         WordList(u"mountain*|hill*|alp|alps|peak*|cliff*|volcano*|valley*|山|山脉|山峰|峰|岭|峡谷|火山|гор*|холм*|산|"
                  u"산맥*"),
         u"mountains", u"群山"},
        {Motif::City,
         WordList(u"city|cities|town*|skyline*|skyscraper*|building*|street*|urban|tower*|village*|house*|城市|都市|城|"
                  u"街|楼|高楼|大厦|塔|村庄|房子|город*|улиц*|дом*|небоскреб*|도시*|거리*|빌딩*|마을*"),
         u"city", u"城市"},
        {Motif::Forest,
         WordList(u"forest*|wood|woods|tree*|jungle*|park|garden*|pine*|森林|树林|树|林|竹|公园|花园|лес*|дерев*|парк*|"
                  u"сад*|숲*|나무*"),
         u"forest", u"森林"},
        {Motif::Snow, WordList(u"snow*|winter*|ice*|icy|frost*|glacier*|雪|冬|冰|снег*|снеж*|зим*|лед*|눈|겨울*|설경"),
         u"snow", u"雪"},
        {Motif::Desert, WordList(u"desert*|dune*|sand|sahara|沙漠|沙丘|пустын*|사막*"), u"desert", u"沙漠"},
        {Motif::Meadow,
         WordList(u"meadow*|field*|flower*|grass*|spring|lavender|farm*|草地|草原|田野|田|花|春|поле|поля|луг*|цвет*|"
                  u"들판*|꽃*|봄"),
         u"meadow", u"田野"},
        {Motif::Person,
         WordList(
             u"portrait*|person|people|man|woman|girl*|boy*|face*|child*|lady|king|queen|人|人物|人像|肖像|女孩|男孩|"
             u"女人|男人|孩子|脸|портрет*|человек*|девушк*|женщин*|мужчин*|ребен*|사람*|소녀*|소년*|여자*|남자*|초상*"),
         u"person", u"人物"},
        {Motif::Rain, WordList(u"rain*|storm*|雨|暴雨|风暴|дожд*|бур*|비|폭풍*"), u"rain", u"雨"},
        {Motif::Autumn, WordList(u"autumn*|fall foliage|maple*|秋|枫|осен*|가을*|단풍*"), u"autumn", u"秋天"},
    };
    return table;
}

const QVector<DaytimeWords> &daytimeWords()
{
    static const QVector<DaytimeWords> table{
        {Daytime::Night,
         WordList(u"night*|midnight|moon*|star|stars|starry|dark|evening|夜|夜晚|夜景|星|星空|月|月亮|晚上|ноч*|лун*|"
                  u"звезд*|вечер*|밤|달|별"),
         u"night", u"夜晚"},
        {Daytime::Sunset,
         WordList(u"sunset*|dusk|twilight|golden hour|日落|黄昏|夕阳|晚霞|落日|закат*|сумер*|일몰*|노을*|석양*"),
         u"sunset", u"日落"},
        {Daytime::Dawn,
         WordList(u"dawn|sunrise*|morning*|日出|黎明|清晨|早晨|朝霞|рассвет*|утр*|восход*|일출*|새벽*|아침*"), u"dawn",
         u"清晨"},
    };
    return table;
}

Motifs chosenBySeed(quint64 seed)
{
    const Motifs choices[] = {Motif::Mountains, Motif::Sea | Motif::Mountains, Motif::Meadow,
                              Motif::Forest | Motif::Mountains, Motif::Meadow | Motif::Mountains};
    return choices[seed % 5];
}

// Daylight is the surprise-free choice; the seed gives a third of the open prompts another one.
Daytime daytimeBySeed(quint64 seed)
{
    const Daytime choices[] = {Daytime::Day, Daytime::Day, Daytime::Day, Daytime::Day, Daytime::Sunset, Daytime::Dawn};
    return choices[(seed >> 8) % 6];
}

} // namespace

Subject subjectOf(const QString &prompt)
{
    const Tokens tokens = tokenize(prompt);
    Subject subject;
    subject.seed = hashOf(prompt.simplified());
    for (const MotifWords &entry : motifWords()) {
        subject.motifs.setFlag(entry.motif, entry.words.occursIn(tokens));
    }
    const Motifs places = subject.motifs
        & (Motif::Sea | Motif::Harbour | Motif::Mountains | Motif::City | Motif::Forest | Motif::Desert
           | Motif::Meadow);
    if (!places) {
        subject.motifs |= chosenBySeed(subject.seed);
    }
    subject.daytime = daytimeBySeed(subject.seed);
    for (const DaytimeWords &entry : daytimeWords()) {
        if (entry.words.occursIn(tokens)) {
            subject.daytime = entry.daytime;
            break;
        }
    }
    return subject;
}

QString describeSubject(const Subject &subject, bool chinese)
{
    QStringList parts;
    for (const MotifWords &entry : motifWords()) {
        if (subject.motifs.testFlag(entry.motif)) {
            parts.append(QString::fromUtf16(chinese ? entry.chinese : entry.english));
        }
    }
    for (const DaytimeWords &entry : daytimeWords()) {
        if (entry.daytime == subject.daytime) {
            parts.append(QString::fromUtf16(chinese ? entry.chinese : entry.english));
        }
    }
    if (subject.daytime == Daytime::Day) {
        parts.append(chinese ? QStringLiteral("白天") : QStringLiteral("daylight"));
    }
    return parts.join(chinese ? QStringLiteral("、") : QStringLiteral(", "));
}

} // namespace tavro::assistantservice
