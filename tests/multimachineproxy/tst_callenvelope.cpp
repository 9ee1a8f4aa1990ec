#include "multimachineproxy/callenvelope.h"
#include "samples.h"
#include "vectors.h"

#include <msgpack.hpp>

#include <QTest>
#include <QtEndian>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

using namespace tavro::aiassistant;

namespace {

unsigned int sizeOf(const QByteArray &payload)
{
    return static_cast<unsigned int>(payload.size());
}

template <typename T>
QByteArray repackedAs(const QByteArray &payload)
{
    const msgpack::sbuffer buffer = envelope::pack(envelope::unpack<T>(payload.constData(), sizeOf(payload)));
    return {buffer.data(), static_cast<int>(buffer.size())};
}

/// Unpacks @p payload and packs the value again.
QByteArray repacked(const QByteArray &type, const QByteArray &payload)
{
    if (type == "bool")
        return repackedAs<bool>(payload);
    if (type == "string")
        return repackedAs<std::string>(payload);
    if (type == "list")
        return repackedAs<std::vector<std::string>>(payload);
    if (type == "picture")
        return repackedAs<PictureGenerateInfo>(payload);
    if (type == "chatitem")
        return repackedAs<ChatItemBasic>(payload);
    if (type == "text")
        return repackedAs<TextGeneratedPack>(payload);
    return repackedAs<PicturedGeneratedPack>(payload);
}

/// The name that vectors.txt has for what unpacking throws; empty where it throws nothing.
QByteArray errorOf(const QByteArray &type, const QByteArray &payload)
{
    try {
        repacked(type, payload);
    } catch (const std::invalid_argument &error) {
        return error.what() == std::string("unpack failed: Args not match!") ? "type" : error.what();
    } catch (const msgpack::insufficient_bytes &) {
        return "insufficient_bytes";
    } catch (const msgpack::array_size_overflow &) {
        return "array_size_overflow";
    } catch (const msgpack::map_size_overflow &) {
        return "map_size_overflow";
    } catch (const msgpack::str_size_overflow &) {
        return "str_size_overflow";
    } catch (const msgpack::bin_size_overflow &) {
        return "bin_size_overflow";
    } catch (const msgpack::ext_size_overflow &) {
        return "ext_size_overflow";
    } catch (const msgpack::depth_size_overflow &) {
        return "depth_size_overflow";
    } catch (const msgpack::parse_error &) {
        return "parse_error";
    }
    return {};
}

} // namespace

/// The bytes of each argument, beside those of another MessagePack library.
class CallEnvelopeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void packsAsAnotherLibraryDoes_data();
    void packsAsAnotherLibraryDoes();
    void everyVectorHasItsValueHere();
    void unpacksWhatItPacks_data();
    void unpacksWhatItPacks();
    void takesOtherVersionsAndForms_data() { addVectors("accepted"); }
    void takesOtherVersionsAndForms();
    void refusesWhatDoesNotFit_data() { addVectors("refused"); }
    void refusesWhatDoesNotFit();
    void takesTextsUpToTheLimit_data();
    void takesTextsUpToTheLimit();
    void refusesEveryBrokenOffRecord_data();
    void refusesEveryBrokenOffRecord();
    void fieldsArriveWhereTheyBelong();
    void textsBecomeStringsOfQt();
    void smallPayloadsNeedNoSecondBuffer();

private:
    static void addVectors(const char *kind);
};

void CallEnvelopeTest::addVectors(const char *kind)
{
    QTest::addColumn<Vector>("vector");
    int rows = 0;
    for (const Vector &vector : vectors()) {
        if (vector.kind == kind) {
            QTest::addRow("%s %s", vector.type.constData(), vector.name.constData()) << vector;
            ++rows;
        }
    }
    QVERIFY(rows > 0);
}

void CallEnvelopeTest::packsAsAnotherLibraryDoes_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QByteArray>("expected");
    const QVector<samples::Packed> packed = samples::all();
    for (const samples::Packed &sample : packed) {
        QByteArray expected;
        for (const Vector &vector : vectors()) {
            if (vector.kind == "packed" && vector.type == sample.type && vector.name == sample.name)
                expected = vector.bytes;
        }
        QTest::addRow("%s %s", sample.type.constData(), sample.name.constData()) << sample.payload << expected;
    }
}

void CallEnvelopeTest::packsAsAnotherLibraryDoes()
{
    QFETCH(QByteArray, payload);
    QFETCH(QByteArray, expected);
    QCOMPARE(shownAsInVectors(payload), expected);
}

void CallEnvelopeTest::everyVectorHasItsValueHere()
{
    const auto isPacked = [](const Vector &vector) { return vector.kind == "packed"; };
    QCOMPARE(static_cast<int>(std::count_if(vectors().cbegin(), vectors().cend(), isPacked)), samples::all().size());
}

void CallEnvelopeTest::unpacksWhatItPacks_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("payload");
    const QVector<samples::Packed> packed = samples::all();
    for (const samples::Packed &sample : packed)
        QTest::addRow("%s %s", sample.type.constData(), sample.name.constData()) << sample.type << sample.payload;
}

void CallEnvelopeTest::unpacksWhatItPacks()
{
    QFETCH(QByteArray, type);
    QFETCH(QByteArray, payload);
    QCOMPARE(repacked(type, payload), payload);
}

void CallEnvelopeTest::takesOtherVersionsAndForms()
{
    QFETCH(Vector, vector);
    QCOMPARE(repacked(vector.type, vector.payload()).toHex(), vector.result);
}

void CallEnvelopeTest::refusesWhatDoesNotFit()
{
    QFETCH(Vector, vector);
    QCOMPARE(errorOf(vector.type, vector.payload()), vector.result);
}

void CallEnvelopeTest::takesTextsUpToTheLimit_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("text") << QByteArrayLiteral("\xdb") << QByteArray("str_size_overflow");
    QTest::newRow("binary") << QByteArrayLiteral("\xc6") << QByteArray("bin_size_overflow");
}

void CallEnvelopeTest::takesTextsUpToTheLimit()
{
    QFETCH(QByteArray, head);
    const int limit = 16 * 1024 * 1024;
    for (const int length : {limit, limit + 1}) {
        const auto bigEndian = qToBigEndian(static_cast<quint32>(length));
        const QByteArray size(reinterpret_cast<const char *>(&bigEndian), sizeof bigEndian);
        const QByteArray error = errorOf("string", head + size + QByteArray(length, 'x'));
        if (length == limit)
            QCOMPARE(error, QByteArray());
        else
            QTEST(error, "error");
    }
}

void CallEnvelopeTest::refusesEveryBrokenOffRecord_data()
{
    QTest::addColumn<QByteArray>("type");
    for (const char *type : {"string", "list", "picture", "chatitem", "text", "pictured"})
        QTest::newRow(type) << QByteArray(type);
}

void CallEnvelopeTest::refusesEveryBrokenOffRecord()
{
    QFETCH(QByteArray, type);
    const QByteArray whole = packedVector(type, "filled");
    for (int length = 0; length < whole.size(); ++length) {
        // A copy without a byte behind it: reading on would be seen by a sanitizer.
        const std::vector<char> part(whole.cbegin(), whole.cbegin() + length);
        QCOMPARE(errorOf(type, QByteArray::fromRawData(part.data(), length)), QByteArray("insufficient_bytes"));
    }
    QCOMPARE(errorOf(type, whole), QByteArray());
}

void CallEnvelopeTest::fieldsArriveWhereTheyBelong()
{
    const QByteArray payload = packedVector("pictured", "filled");
    const auto pack = envelope::unpack<PicturedGeneratedPack>(payload.constData(), sizeOf(payload));
    QCOMPARE(pack.content, std::string("a lake"));
    QCOMPARE(pack.source.description, std::string("a lake with mist"));
    QCOMPARE(pack.source.url, std::string("http://127.0.0.1/p/1"));
    const PictureGenerateInfo &info = pack.picInfo;
    QCOMPARE(info.style, std::string("Watercolor"));
    QCOMPARE(info.width, 1920);
    QCOMPARE(info.height, 1080);
    QCOMPARE(info.useSR, false);
    QCOMPARE(info.content, std::string("a lake at dawn"));
    QCOMPARE(info.enableLogo, true);
    QCOMPARE(int{info.logoPositon}, 3);
    QCOMPARE(info.logoLanguage, true);
    QCOMPARE(info.logoOpacity, 0.5F);
    QCOMPARE(info.logoContent, std::string("ZV"));
}

void CallEnvelopeTest::textsBecomeStringsOfQt()
{
    const QByteArray chinese = packedVector("string", "chinese");
    QCOMPARE(envelope::unpack<QString>(chinese.constData(), sizeOf(chinese)), QStringLiteral("\u4e2d\u6587"));
    const QByteArray noUtf8 = QByteArrayLiteral("\xa3"
                                                "a\xff"
                                                "b");
    QCOMPARE(envelope::unpack<QString>(noUtf8.constData(), sizeOf(noUtf8)), QStringLiteral("a\ufffdb"));
}

void CallEnvelopeTest::smallPayloadsNeedNoSecondBuffer()
{
    msgpack::sbuffer buffer = envelope::pack(samples::pictured());
    const char *const before = buffer.data();
    const std::vector<char> rest(8192 - buffer.size(), 'x');
    buffer.write(rest.data(), rest.size());
    QCOMPARE(buffer.data(), before);
}

QTEST_APPLESS_MAIN(CallEnvelopeTest)
#include "tst_callenvelope.moc"
