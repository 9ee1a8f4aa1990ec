#include "aicontroller/replyjson.h"
#include "processusage.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QTest>

using tavro::aiassistant::readJson;

/// Texts that Qt's parser had better not see.
class ReplyJsonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void documentIsReadOrNot_data();
    void documentIsReadOrNot();
    void repeatedListsDoNotFillTheMemory();
    void manyValuesDoNotFillTheMemory();
};

namespace {

QByteArray listOf(int count, const QByteArray &value)
{
    return '[' + QByteArray(value + ',').repeated(count - 1) + value + ']';
}

} // namespace

void ReplyJsonTest::documentIsReadOrNot_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("isRead");
    QTest::newRow("object") << QByteArray(R"({"code":0,"data":{"answers":["a","b"],"agentCmds":[{"params":{}}]}})")
                            << true;
    QTest::newRow("same keys in different objects") << QByteArray(R"([{"a":[]},{"a":[]},{"b":{"a":{}}}])") << true;
    QTest::newRow("texts repeated") << QByteArray(R"({"a":"1","a":"2"})") << true;
    QTest::newRow("marks within texts") << QByteArray(R"({"a":"{\"a\":[","b\"":["\\"],"c":"]}"})") << true;
    QTest::newRow("key with an escape") << QByteArray(R"({"\u0061b":[1],"b":2})") << true;
    QTest::newRow("100,000 values") << listOf(99'999, "1") << true;

    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("no json") << QByteArray("<html>") << false;
    QTest::newRow("text without an end") << QByteArray(R"({"a":"x\)") << false;
    QTest::newRow("brackets only") << QByteArray("]]]}}}") << false;
    QTest::newRow("list repeated") << QByteArray(R"({"a":[1],"a":[2]})") << false;
    QTest::newRow("object repeated") << QByteArray(R"({"a":{},"b":0,"a":{}})") << false;
    QTest::newRow("list, then a text") << QByteArray(R"({"a":[1],"a":"x"})") << false;
    QTest::newRow("repeated within") << QByteArray(R"({"data":[0,{"x":[],"x":0}]})") << false;
    QTest::newRow("repeated behind other levels") << QByteArray(R"({"a":[],"b":{"c":[{}]},"a":1})") << false;
    QTest::newRow("repeated in another spelling") << QByteArray(R"({"ab":[1],"\u0061b":2})") << false;
    QTest::newRow("more values") << listOf(100'100, "1") << false;
    QTest::newRow("more empty lists") << listOf(60'000, "[]") << false;
}

void ReplyJsonTest::documentIsReadOrNot()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, isRead);
    QCOMPARE(!readJson(json).isNull(), isRead);
}

// What the parser loses, nobody gets back: it adds up from reply to reply.
void ReplyJsonTest::repeatedListsDoNotFillTheMemory()
{
    const QByteArray list = listOf(90'000, "1");
    const QByteArray json = "{\"a\":" + list + ",\"a\":0}";
    readJson(json);
    QVERIFY(processusage::forgetPeak());
    const qint64 before = processusage::peakBytes();
    for (int round = 0; round < 40; ++round)
        readJson(json);
    QVERIFY(processusage::peakBytes() - before < 16 * 1024 * 1024);
}

void ReplyJsonTest::manyValuesDoNotFillTheMemory()
{
    const QByteArray json = listOf(4 * 1024 * 1024, "[]");
    QVERIFY(processusage::forgetPeak());
    const qint64 before = processusage::peakBytes();
    readJson(json);
    QVERIFY(processusage::peakBytes() - before < 16 * 1024 * 1024);
}

QTEST_GUILESS_MAIN(ReplyJsonTest)

#include "tst_replyjson.moc"
