#include "options.h"

#include <QTest>

using namespace tavro::assistantservice;

namespace {

Environment environmentWith(const QByteArray &chatKey, const QByteArray &pictureKey = {})
{
    Environment environment;
    environment.upstreamKeys = {chatKey, pictureKey};
    return environment;
}

const Environment withKeys = environmentWith("chat-key", "picture-key");

OptionsResult read(const QString &arguments, const Environment &environment = {})
{
    return readOptions((QStringLiteral("assistantservice ") + arguments).split(QLatin1Char(' ')), environment);
}

UpstreamOptions upstreamOf(const QString &arguments, const Environment &environment = {})
{
    const OptionsResult result =
        read(QStringLiteral("--engine openai --upstream http://h:1 ") + arguments, environment);
    return result.options.upstream.value_or(UpstreamOptions());
}

} // namespace

class UpstreamOptionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void addressAloneIsEnough();
    void everyOptionIsTaken();
    void picturesMayBeDrawnByRules();
    void picturesMayHaveAServerOfTheirOwn();
    void keyGoesToItsOwnServerOnly();
    void keyIsOneWord();
    void wrongValuesAreNamed_data();
    void wrongValuesAreNamed();
};

void UpstreamOptionsTest::addressAloneIsEnough()
{
    const UpstreamOptions options = upstreamOf(QStringLiteral("--workers 2"));
    QCOMPARE(options.chat.address.text(), QStringLiteral("http://h:1/v1"));
    QVERIFY(options.chat.model.isEmpty() && options.chat.key.isEmpty() && options.chat.tools);
    QCOMPARE(options.chat.limit, std::chrono::milliseconds(60000));
    QVERIFY(options.pictures.has_value());
    QCOMPARE(options.pictures->address.text(), QStringLiteral("http://h:1/v1"));
    QCOMPARE(options.pictures->sizes, (QVector<QSize>{{1024, 1024}, {1536, 1024}, {1024, 1536}}));
}

void UpstreamOptionsTest::everyOptionIsTaken()
{
    const UpstreamOptions options = upstreamOf(
        QStringLiteral("--model a --deep-model b --search-model c --tools off --picture-model d --picture-sizes "
                       "512x512,768x512 --upstream-seconds 7"));
    QCOMPARE(options.chat.model, QStringLiteral("a"));
    QCOMPARE(options.chat.deepModel, QStringLiteral("b"));
    QCOMPARE(options.chat.searchModel, QStringLiteral("c"));
    QVERIFY(!options.chat.tools);
    QCOMPARE(options.pictures->model, QStringLiteral("d"));
    QCOMPARE(options.pictures->sizes, (QVector<QSize>{{512, 512}, {768, 512}}));
    QCOMPARE(options.chat.limit, std::chrono::milliseconds(7000));
    QCOMPARE(options.pictures->limit, std::chrono::milliseconds(7000));
}

void UpstreamOptionsTest::picturesMayBeDrawnByRules()
{
    QVERIFY(!upstreamOf(QStringLiteral("--picture-upstream builtin")).pictures.has_value());
}

void UpstreamOptionsTest::picturesMayHaveAServerOfTheirOwn()
{
    const UpstreamOptions options = upstreamOf(QStringLiteral("--picture-upstream h:2 --picture-sizes any"));
    QCOMPARE(options.pictures->address.text(), QStringLiteral("http://h:2/v1"));
    QVERIFY(options.pictures->sizes.isEmpty());
}

void UpstreamOptionsTest::keyGoesToItsOwnServerOnly()
{
    const Environment chatKeyOnly = environmentWith("chat-key");
    QCOMPARE(upstreamOf(QStringLiteral("--workers 2"), withKeys).chat.key, QByteArrayLiteral("chat-key"));
    QCOMPARE(upstreamOf(QStringLiteral("--workers 2"), withKeys).pictures->key, QByteArrayLiteral("picture-key"));
    QCOMPARE(upstreamOf(QStringLiteral("--workers 2"), chatKeyOnly).pictures->key, QByteArrayLiteral("chat-key"));
    QCOMPARE(upstreamOf(QStringLiteral("--picture-upstream h:2"), chatKeyOnly).pictures->key, QByteArray());
}

// Files of keys end in a line break. One within would end the header, and more of them could follow.
void UpstreamOptionsTest::keyIsOneWord()
{
    QCOMPARE(upstreamOf(QStringLiteral("--workers 2"), environmentWith(" chat-key\r\n")).chat.key,
             QByteArrayLiteral("chat-key"));
    for (const char *key : {"chat\nkey", "chat\rkey", "chat key", "chat\x7fkey", "schl\xc3\xbcssel"}) {
        const OptionsResult result =
            read(QStringLiteral("--engine openai --upstream http://h:1"), environmentWith(key));
        QVERIFY(!result.run);
        QVERIFY2(result.text.contains(QStringLiteral("ASSISTANTSERVICE_UPSTREAM_KEY")), qPrintable(result.text));
        QVERIFY(!result.text.contains(QString::fromUtf8(key)));
    }
}

void UpstreamOptionsTest::wrongValuesAreNamed_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("option");
    const QString good = QStringLiteral("--engine openai --upstream h:1 ");
    QTest::newRow("no address") << "--engine openai"
                                << "--upstream";
    QTest::newRow("address") << "--engine openai --upstream ftp://h"
                             << "--upstream";
    QTest::newRow("picture address") << good + QStringLiteral("--picture-upstream ftp://h") << "--picture-upstream";
    QTest::newRow("tools") << good + QStringLiteral("--tools maybe") << "--tools";
    QTest::newRow("sizes") << good + QStringLiteral("--picture-sizes 1024") << "--picture-sizes";
    QTest::newRow("no sizes") << good + QStringLiteral("--picture-sizes=") << "--picture-sizes";
    QTest::newRow("seconds") << good + QStringLiteral("--upstream-seconds 0") << "--upstream-seconds";
    QTest::newRow("engine") << "--engine other"
                            << "--engine";
    QTest::newRow("without the engine") << "--model a"
                                        << "--model";
}

void UpstreamOptionsTest::wrongValuesAreNamed()
{
    QFETCH(QString, arguments);
    QFETCH(QString, option);
    const OptionsResult result = read(arguments);
    QVERIFY(!result.run);
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.text.startsWith(option + QLatin1Char(' ')), qPrintable(result.text));
}

QTEST_GUILESS_MAIN(UpstreamOptionsTest)
#include "tst_upstreamoptions.moc"
