#include "assistant.h"
#include "builtin/builtinengine.h"
#include "countedmemory.h"
#include "requestbodies.h"
#include "servicelog.h"

#include <QtTest>

using namespace tavro::assistantservice;

namespace {

// One that counts, and the smallest that the rule holds for.
constexpr int sizes[] = {512 * 1024, 64 * 1024};

const QByteArray textStart =
    QByteArrayLiteral("{\"enableDS\":false,\"enableNet\":false,\"messages\":[{\"type\":false,\"content\":\"hi\"}],");

// `part` again and again between start and end, as long as it fits.
QByteArray filled(int size, const QByteArray &start, const QByteArray &part, const QByteArray &end)
{
    return start + part.repeated((size - start.size() - end.size()) / part.size()) + end;
}

QByteArray mediaList(int count, const QByteArray &entry)
{
    return textStart + "\"mediaList\":[" + (entry + ',').repeated(count - 1) + entry + "]}";
}

QByteArray messages(int count, const QByteArray &entry)
{
    return "{\"enableDS\":false,\"enableNet\":false,\"mediaList\":[],\"messages\":[" + (entry + ',').repeated(count - 1)
        + entry + "]}";
}

void row(const char *name, int size, const QByteArray &body)
{
    QTest::addRow("%s, %d kB", name, size / 1024) << body;
}

void addHostileRows(int size)
{
    const QByteArray list = textStart + "\"mediaList\":[";
    row("numbers", size, filled(size, "[", "1,", "1]"));
    row("numbers in the media list", size, filled(size, list, "1,", "1]}"));
    row("numbers in a member that nobody reads", size, filled(size, "{\"x\":[", "1,", "1]}"));
    row("lists", size, filled(size, "[", "[],", "[]]"));
    row("objects", size, filled(size, "[", "{},", "{}]"));
    row("objects in the media list", size, filled(size, list, "{},", "{}]}"));
    row("objects in objects", size, filled(size, "[", "{\"a\":{}},", "{}]"));
    row("one member many times", size, filled(size, "{", "\"a\":{},", "\"b\":0}"));
    row("a known member many times", size, filled(size, "{", "\"messages\":[],", "\"b\":0}"));
    row("empty texts", size, filled(size, "[", "\"\",", "\"\"]"));
    row("short texts", size, filled(size, list, "\"a\",", "\"a\"]}"));
    row("lists in lists", size, QByteArray(size, '['));
    row("lists in lists, closed", size, QByteArray(size / 2, '[') + QByteArray(size / 2, ']'));
    row("objects in objects without end", size, filled(size, "", "{\"a\":", ""));
    row("one long text", size, filled(size, "{\"x\":\"", "a", "\"}"));
    row("one long text of escapes", size, filled(size, "{\"x\":\"", "\\u0001", "\"}"));
    row("one long text of large letters", size, filled(size, "{\"x\":\"", "\\ud83d\\ude00", "\"}"));
    row("one long text that is wrong at its end", size, filled(size, "{\"x\":\"", "a", "\n\"}"));
    row("a message that is too long", size,
        filled(size, "{\"messages\":[{\"type\":false,\"content\":\"", "a", "\"}]}"));
    row("one long name", size, filled(size, "{\"", "a", "\":1}"));
    row("one long number", size, filled(size, "[", "1", "]"));
    row("blanks", size, QByteArray(size, ' '));
    row("bytes", size, QByteArray(size, '\xff'));
    row("many names", size, [size] {
        QByteArray body = "{";
        for (int i = 0; body.size() < size; ++i) {
            body += '"' + QByteArray::number(i, 36) + "\":0,";
        }
        return body + "\"x\":0}";
    }());
}

} // namespace

// However a body is made, reading it costs at most so much.
class ServiceBodyMemoryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void staysBelowTwentyTimesTheBody_data();
    void staysBelowTwentyTimesTheBody();
    void isGivenBack();
    void aRequestWithoutMemoryIsAnErrorAndNoMore_data();
    void aRequestWithoutMemoryIsAnErrorAndNoMore();
};

void ServiceBodyMemoryTest::staysBelowTwentyTimesTheBody_data()
{
    QTest::addColumn<QByteArray>("body");
    for (const int size : sizes) {
        addHostileRows(size);
    }
    row("the longest media list", 0, mediaList(200000, "{\"id\":\"a\",\"name\":\"b\"}"));
    row("the longest media list of empty texts", 0, mediaList(200000, "{\"id\":\"\",\"name\":\"\"}"));
    row("a media list of long names", 0, mediaList(500, "{\"id\":\"a\",\"name\":\"" + QByteArray(4096, 'b') + "\"}"));
    row("the longest conversation", 0, messages(10000, "{\"type\":false,\"content\":\"\"}"));
    row("a conversation of long messages", 0,
        messages(20, "{\"type\":false,\"content\":\"" + QByteArray(100000, 'x') + "\"}"));
}

void ServiceBodyMemoryTest::staysBelowTwentyTimesTheBody()
{
    QFETCH(QByteArray, body);
    const CountedMemory memory;
    TextRequest request;
    readTextRequest(body, {}, request);
    const double times = 1.0 + static_cast<double>(memory.peak()) / body.size();
    QVERIFY2(times <= 20.0, qPrintable(QStringLiteral("%1 times its size").arg(times)));
}

void ServiceBodyMemoryTest::isGivenBack()
{
    TextRequest first;
    readTextRequest(mediaList(2, "{}"), {}, first); // what is made once and kept
    const CountedMemory memory;
    for (int i = 0; i < 3; ++i) {
        TextRequest request;
        QVERIFY(!readTextRequest(mediaList(1000, "{\"id\":\"a\",\"name\":\"b\"}"), {}, request));
        QVERIFY(memory.held() > 0);
        readTextRequest(filled(sizes[1], "{", "\"messages\":[{}],", "\"b\":0}"), {}, request);
    }
    QVERIFY2(memory.held() < 4096, qPrintable(QString::number(memory.held())));
}

void ServiceBodyMemoryTest::aRequestWithoutMemoryIsAnErrorAndNoMore_data()
{
    QTest::addColumn<qint64>("limit");
    for (const qint64 kilobytes : {1, 4, 16, 64, 256, 1024, 4096}) {
        QTest::addRow("%lld kB", kilobytes) << kilobytes * 1024;
    }
}

// Wherever the memory ends: while the body is read, when the task is made, or in the worker.
void ServiceBodyMemoryTest::aRequestWithoutMemoryIsAnErrorAndNoMore()
{
    QFETCH(qint64, limit);
    QVERIFY(setLogLevel(QStringLiteral("off"))); // as at the program's start: makes the log
    Assistant assistant({}, std::make_unique<BuiltinEngine>());
    const QByteArray body = mediaList(5000, "{\"id\":\"a\",\"name\":\"b\"}");
    int code = 0;
    {
        CountedMemory memory;
        if (!memory.limit(limit)) {
            QSKIP("a sanitizer's allocator cannot be limited");
        }
        code = assistant.generateText({}, body).code;
    }
    QVERIFY2(code == 0 || code == 500, qPrintable(QString::number(code)));
    QVERIFY(code == 500 || limit > 256 * 1024);
    QTRY_VERIFY(assistant.health().body.contains("\"unfinished\":0"));
    QCOMPARE(assistant.generateText({}, body).code, 0);
}

QTEST_GUILESS_MAIN(ServiceBodyMemoryTest)
#include "tst_servicebodymemory.moc"
