#include "http/byterange.h"
#include "localservice.h"
#include "serviceclient.h"

#include <QtTest>

using namespace tavro::assistantservice;
using Kind = ByteRange::Kind;

Q_DECLARE_METATYPE(tavro::assistantservice::ByteRange::Kind)

namespace {

constexpr int size = 1000;

QByteArray fetchBytes(const QByteArray &path, const QByteArray &headers)
{
    return getBytes(path).replace("\r\n\r\n", "\r\n" + headers + "\r\n");
}

QByteArray headerOf(const QByteArray &reply, const QByteArray &name)
{
    const int at = reply.indexOf("\r\n" + name + ": ");
    const int begin = at + name.size() + 4;
    return at < 0 ? QByteArray() : reply.mid(begin, reply.indexOf("\r\n", begin) - begin);
}

} // namespace

// A "Range" header comes from whoever may fetch a picture, and says which memory is read.
class ServiceRangeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void readsTheHeader_data() { addRanges(); }
    void readsTheHeader();
    void sendsThatPartOfAPicture_data() { addRanges(); }
    void sendsThatPartOfAPicture();
    void ofAnEmptyFileNothingCanBeAskedFor();
    void countsForGetAlone();
    void doesNotCountWithACondition();
    void countsOnlyWhereThereIsOne();

private:
    static void addRanges();

    std::unique_ptr<LocalService> m_service;
    QByteArray m_path;
};

void ServiceRangeTest::initTestCase()
{
    m_service = std::make_unique<LocalService>();
    m_path = m_service->makePicture(size);
    QVERIFY(!m_path.isEmpty());
}

void ServiceRangeTest::addRanges()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<int>("begin");
    QTest::addColumn<int>("length");
    const auto part = [](const char *header, int begin, int length) {
        QTest::newRow(header) << QByteArray(header) << Kind::Part << begin << length;
    };
    const auto whole = [](const char *header) {
        QTest::newRow(header) << QByteArray(header) << Kind::Whole << 0 << size;
    };
    const auto none = [](const char *header) {
        QTest::newRow(header) << QByteArray(header) << Kind::Unsatisfiable << 0 << 0;
    };
    part("bytes=0-0", 0, 1);
    part("bytes=0-999", 0, size);
    part("bytes=10-19", 10, 10);
    part("bytes=999-999", 999, 1);
    part("bytes=500-", 500, 500);
    part("bytes=-1", 999, 1);
    part("bytes=-1000", 0, size);
    part("Bytes= 1 - 2 ", 1, 2);
    // Beyond the end
    part("bytes=0-1000", 0, size);
    part("bytes=0-99999999999", 0, size);
    part("bytes=990-9223372036854775807", 990, 10);
    part("bytes=990-18446744073709551616", 990, 10);
    part("bytes=990-99999999999999999999999999", 990, 10);
    part("bytes=-1001", 0, size);
    part("bytes=-18446744073709551615", 0, size);
    part("bytes=0000000000000000000000000010-19", 10, 10);
    none("bytes=1000-");
    none("bytes=1000-1000");
    none("bytes=9223372036854775807-");
    none("bytes=18446744073709551616-18446744073709551617");
    none("bytes=-0");
    // Inverted
    whole("bytes=5-4");
    whole("bytes=2000-1000");
    // Several
    whole("bytes=0-0,2-2");
    whole("bytes=0-99999999999,0-99999999999");
    whole("bytes=0-10,5-15");
    whole("bytes=0-0,");
    whole("bytes=,0-0");
    // Malformed, or of another kind
    whole("bytes=");
    whole("bytes=-");
    whole("bytes=--1");
    whole("bytes=-1-");
    whole("bytes=1-2-3");
    whole("bytes=+1-2");
    whole("bytes=0x1-2");
    whole("bytes=a-b");
    whole("bytes 0-1");
    whole("items=0-1");
    whole("0-1");
    whole("=");
}

void ServiceRangeTest::readsTheHeader()
{
    QFETCH(QByteArray, header);
    const ByteRange range = readByteRange(header, size);
    QTEST(range.kind, "kind");
    if (range.kind == Kind::Part) {
        QTEST(static_cast<int>(range.begin), "begin");
        QTEST(static_cast<int>(range.length), "length");
    }
}

void ServiceRangeTest::sendsThatPartOfAPicture()
{
    QFETCH(QByteArray, header);
    QFETCH(Kind, kind);
    QFETCH(int, begin);
    QFETCH(int, length);
    RawClient raw(m_service->port());
    raw.send(fetchBytes(m_path, "Range: " + header + "\r\n"));
    const QByteArray reply = raw.readReply();
    QCOMPARE(statusOf(reply), kind == Kind::Part ? 206 : kind == Kind::Whole ? 200 : 416);
    if (kind == Kind::Unsatisfiable) {
        QCOMPARE(headerOf(reply, "Content-Range"), QByteArray("bytes */1000"));
        QCOMPARE(codeOf(jsonOf(reply)), 416);
        return;
    }
    QCOMPARE(bodyOf(reply), CountedBytesEngine::bytes(size).mid(begin, length));
    QCOMPARE(headerOf(reply, "Content-Length").toInt(), length);
    const QString place = QStringLiteral("bytes %1-%2/1000").arg(begin).arg(begin + length - 1);
    QCOMPARE(headerOf(reply, "Content-Range"), kind == Kind::Part ? place.toLatin1() : QByteArray());
}

void ServiceRangeTest::ofAnEmptyFileNothingCanBeAskedFor()
{
    QVERIFY(readByteRange("bytes=0-", 0).kind == Kind::Unsatisfiable);
    QVERIFY(readByteRange("bytes=-5", 0).kind == Kind::Unsatisfiable);
    QVERIFY(readByteRange({}, 0).kind == Kind::Whole);
}

void ServiceRangeTest::countsForGetAlone()
{
    RawClient raw(m_service->port());
    raw.send(fetchBytes(m_path, "Range: bytes=0-0\r\nConnection: close\r\n").replace("GET", "HEAD"));
    const QByteArray reply = raw.readAll();
    QCOMPARE(statusOf(reply), 200);
    QCOMPARE(headerOf(reply, "Content-Length"), QByteArray("1000"));
    QVERIFY(bodyOf(reply).isEmpty());
}

void ServiceRangeTest::doesNotCountWithACondition()
{
    RawClient raw(m_service->port());
    raw.send(fetchBytes(m_path, "Range: bytes=0-0\r\nIf-Range: \"x\"\r\n"));
    QCOMPARE(statusOf(raw.readReply()), 200);
}

void ServiceRangeTest::countsOnlyWhereThereIsOne()
{
    RawClient raw(m_service->port());
    raw.send(fetchBytes(m_path, "Range: bytes=0-0\r\nRange: bytes=5-5\r\n"));
    QCOMPARE(statusOf(raw.readReply()), 200);
}

QTEST_GUILESS_MAIN(ServiceRangeTest)
#include "tst_servicerange.moc"
