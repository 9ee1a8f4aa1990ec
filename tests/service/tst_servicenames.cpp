#include "grammar/editdistance.h"
#include "grammar/medianames.h"
#include "grammar/numberwords.h"

#include <QtTest>

using namespace tavro::assistantservice;

namespace {

QVector<MediaItem> numbered(int count)
{
    QVector<MediaItem> media;
    for (int i = 0; i < count; ++i) {
        media.append({QString::number(i), QStringLiteral("Clip_%1 take %2.mp4").arg(i).arg(i % 7)});
    }
    return media;
}

} // namespace

class ServiceNamesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void numbersInWords_data();
    void numbersInWords();
    void keysIgnoreSpelling_data();
    void keysIgnoreSpelling();
    void findsOneAmongHundredThousand();
    void neverTakesANumberForPartOfAnother();
    void editDistanceCountsSwapsOnce();
};

void ServiceNamesTest::numbersInWords_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("length");
    QTest::addColumn<double>("value");
    QTest::newRow("digits") << QStringLiteral("12 x") << 1 << 12.0;
    QTest::newRow("decimal") << QStringLiteral("0.5") << 1 << 0.5;
    QTest::newRow("minus") << QStringLiteral("-3") << 2 << -3.0;
    QTest::newRow("word") << QStringLiteral("two layers") << 1 << 2.0;
    QTest::newRow("ordinal") << QStringLiteral("2nd") << 2 << 2.0;
    QTest::newRow("tens") << QStringLiteral("twenty five percent") << 2 << 25.0;
    QTest::newRow("hundred") << QStringLiteral("one hundred percent") << 2 << 100.0;
    QTest::newRow("hundred and tens") << QStringLiteral("one hundred and twenty five percent") << 5 << 125.0;
    QTest::newRow("hundred, no and") << QStringLiteral("two hundred twelve") << 3 << 212.0;
    QTest::newRow("no number behind and") << QStringLiteral("one hundred and layer") << 2 << 100.0;
    QTest::newRow("without a zero") << QStringLiteral(".5") << 1 << 0.5;
    QTest::newRow("Russian") << QStringLiteral("сто двадцать процентов") << 2 << 120.0;
    QTest::newRow("Korean") << QStringLiteral("오십 퍼센트") << 1 << 50.0;
    QTest::newRow("Korean hundred") << QStringLiteral("이백삼십오") << 1 << 235.0;
    QTest::newRow("Korean word") << QStringLiteral("이 레이어") << 0 << 0.0;
    QTest::newRow("Chinese, tens left out") << QStringLiteral("一百二") << 3 << 120.0;
    QTest::newRow("Chinese with zero") << QStringLiteral("一百零二") << 4 << 102.0;
    QTest::newRow("two numbers") << QStringLiteral("one two") << 1 << 1.0;
    QTest::newRow("Chinese") << QStringLiteral("十二层") << 2 << 12.0;
    QTest::newRow("Chinese tens") << QStringLiteral("三十") << 2 << 30.0;
    QTest::newRow("Chinese hundred") << QStringLiteral("一百二十") << 4 << 120.0;
    QTest::newRow("Chinese ordinal") << QStringLiteral("第二") << 2 << 2.0;
    QTest::newRow("traditional") << QStringLiteral("兩") << 1 << 2.0;
    QTest::newRow("full width") << QStringLiteral("３") << 1 << 3.0;
    QTest::newRow("none") << QStringLiteral("harbour") << 0 << 0.0;
}

void ServiceNamesTest::numbersInWords()
{
    QFETCH(QString, text);
    const Number number = numberAt(tokenize(text), 0);
    QTEST(number.length, "length");
    QTEST(number.value, "value");
}

void ServiceNamesTest::keysIgnoreSpelling_data()
{
    QTest::addColumn<QString>("one");
    QTest::addColumn<QString>("other");
    QTest::newRow("case") << QStringLiteral("Harbour NIGHT") << QStringLiteral("harbour night");
    QTest::newRow("underscore") << QStringLiteral("harbour_night") << QStringLiteral("harbour night");
    QTest::newRow("hyphen") << QStringLiteral("harbour-night") << QStringLiteral("harbournight");
    QTest::newRow("number word") << QStringLiteral("Camera Two") << QStringLiteral("camera 2");
    QTest::newRow("leading zero") << QStringLiteral("clip 007") << QStringLiteral("Clip 7");
    QTest::newRow("and") << QStringLiteral("Salt & Pepper") << QStringLiteral("salt and pepper");
    QTest::newRow("apostrophe") << QStringLiteral("Director’s Cut") << QStringLiteral("directors cut");
    QTest::newRow("traditional") << QStringLiteral("風景") << QStringLiteral("风景");
    QTest::newRow("full width") << QStringLiteral("Ｃｌｉｐ１") << QStringLiteral("clip 1");
}

void ServiceNamesTest::keysIgnoreSpelling()
{
    QFETCH(QString, one);
    QFETCH(QString, other);
    QCOMPARE(nameKey(one).compact, nameKey(other).compact);
}

void ServiceNamesTest::findsOneAmongHundredThousand()
{
    const QVector<MediaItem> media = numbered(100000);
    const MediaNames names(media);
    QCOMPARE(names.find(QStringLiteral("clip 70000 take 0")).found, QVector<int>{70000});
    QCOMPARE(names.find(QStringLiteral("clip 99999")).found, QVector<int>{99999});
    QVERIFY(names.find(QStringLiteral("clop 99999 take 4")).found.isEmpty());
}

void ServiceNamesTest::neverTakesANumberForPartOfAnother()
{
    const QVector<MediaItem> media{{QStringLiteral("a"), QStringLiteral("Clip 10")}};
    QVERIFY(MediaNames(media).find(QStringLiteral("clip 1")).found.isEmpty());
    QVERIFY(MediaNames(media).find(QStringLiteral("clip 0")).found.isEmpty());
    QCOMPARE(MediaNames(media).find(QStringLiteral("10")).found, QVector<int>{0});
}

void ServiceNamesTest::editDistanceCountsSwapsOnce()
{
    QCOMPARE(editDistance(QStringLiteral("harbuor"), QStringLiteral("harbour"), 3), 1);
    QCOMPARE(editDistance(QStringLiteral("abc"), QStringLiteral("abd"), 3), 1);
    QCOMPARE(editDistance(QStringLiteral("abcdef"), QStringLiteral("uvwxyz"), 2), 3);
    QCOMPARE(editDistance(QString(), QStringLiteral("ab"), 5), 2);
}

QTEST_GUILESS_MAIN(ServiceNamesTest)
#include "tst_servicenames.moc"
