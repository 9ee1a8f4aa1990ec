#include "foreignprograms.h"
#include "serviceclient.h"

#include <QJsonArray>
#include <QTest>

using upstream::ForeignProgram;
using upstream::ForeignServer;

Q_DECLARE_METATYPE(ForeignProgram)

/// The service with servers that others have written.
class ForeignServersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void serverIsUnderstood_data();
    void serverIsUnderstood();
};

void ForeignServersTest::serverIsUnderstood_data()
{
    QTest::addColumn<ForeignProgram>("program");
    QTest::newRow("aimock") << upstream::aimock();
    QTest::newRow("mock-llm") << upstream::mockLlm();
}

void ForeignServersTest::serverIsUnderstood()
{
    QFETCH(ForeignProgram, program);
    ForeignServer server(program);
    const QString missing = server.install();
    if (!missing.isEmpty()) {
        QSKIP(qPrintable(QStringLiteral("Not tried: %1.").arg(missing)));
    }
    QVERIFY2(server.start(), server.output().constData());
    ServiceProcess service;
    QVERIFY(service.start({QStringLiteral("--engine"), QStringLiteral("openai"), QStringLiteral("--upstream"),
                           server.url(), QStringLiteral("--model"), QStringLiteral("gpt-4")}));
    ServiceClient client(service);
    const auto ask = [&](const QByteArray &text) {
        return client.result(false, requestIdOf(client.post(paths::text, question(text))));
    };

    QCOMPARE(firstAnswerOf(ask("What is the capital of France?")), QStringLiteral("Paris."));

    const QJsonObject called = ask("play harbour on layer 2");
    const QJsonArray commands = called[QLatin1String("data")][QLatin1String("agentCmds")].toArray();
    QCOMPARE(commands.size(), 1);
    QCOMPARE(commands[0][QLatin1String("params")][QLatin1String("mediaId")].toString(), QStringLiteral("m1"));
    QCOMPARE(commands[0][QLatin1String("params")][QLatin1String("layerId")].toInt(), 2);

    const QJsonObject refused = ask("What is forbidden?");
    QCOMPARE(codeOf(refused), 502);
    QVERIFY2(
        messageOf(refused).endsWith(QStringLiteral("does not accept the key. It says: Incorrect API key provided.")),
        qPrintable(messageOf(refused)));
}

QTEST_GUILESS_MAIN(ForeignServersTest)
#include "tst_foreignservers.moc"
