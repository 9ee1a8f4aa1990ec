#include "machinestest.h"

#include <QJsonArray>

/// Every row of the table of completions that tells of something else than an answer: what the serving machine's
/// controller sends, byte for byte, and what the client's does with it.
class MachineOutcomesTest : public MachinesTest {
    Q_OBJECT

private Q_SLOTS:
    void stopBeforeTheServiceAccepted();
    void stopWhileAPollIsOut();
    void stopBetweenPolls();
    void requestFailed_data();
    void requestFailed();
    void requestFailedAtAPoll_data();
    void requestFailedAtAPoll();
    void requestFailedForAPicture();
    void errorOccured();
    void errorOccuredAtAPoll();
    void requestTimeout();
    void downloadPictureFinishedIsAnnounced();
    void stopGenerateFinishedStopsTheClient();
    void commandsStayOnTheServer();

private:
    bool stopsAndDeletes(const QStringList &before);
    bool announces(const QString &signal, const QByteArray &name, const QByteArray &message = {});
};

bool MachineOutcomesTest::stopsAndDeletes(const QStringList &before)
{
    return client->emits(QStringLiteral("deleteGeneratingItem"))
        && hears(before + QStringList{call("StopGenerate"), completion("DeleteGeneratingItem")})
        && server->stateBecomes(QStringLiteral("timerRuns"), false);
}

/// Whether the question "Who?" was asked and the client heard of its end in this way, and of nothing else.
bool MachineOutcomesTest::announces(const QString &signal, const QByteArray &name, const QByteArray &message)
{
    if (!client->emits(signal)
        || !hears({call("GenerateText", payloads::text("Who?")),
                   completion(name, payloads::failedQuestion("Who?", message))}))
        return false;
    const QJsonObject item = client->emissions(signal).at(0).at(0).toObject();
    return client->signalNames() == QStringList{signal} && server->signalNames().isEmpty()
        && item.value(QLatin1String("type")) == 1 && item.value(QLatin1String("question")) == QLatin1String("Who?")
        && item.value(QLatin1String("message")).toString().toUtf8() == message
        && server->stateBecomes(QStringLiteral("timerRuns"), false);
}

void MachineOutcomesTest::stopBeforeTheServiceAccepted()
{
    service->expect("POST", ServiceScript::text, ServiceScript::accepted(QStringLiteral("r1")).held());
    client->tell(QStringLiteral("textToGenerateText"), QStringLiteral("Who?"));
    QVERIFY(eventually([&] { return service->heldCount() == 1; }));
    client->tell(QStringLiteral("toStopGenerate"));
    QVERIFY(server->stateBecomes(QStringLiteral("stopped"), true));
    QVERIFY(service->releaseNext());
    QVERIFY(stopsAndDeletes({call("GenerateText", payloads::text("Who?"))}));
    QCOMPARE(server->state().value(QLatin1String("reqId")).toString(), QString());
}

void MachineOutcomesTest::stopWhileAPollIsOut()
{
    QVERIFY(ask(QStringLiteral("Who?")));
    poll(ServiceScript::ready(QStringLiteral("too late")).held());
    QVERIFY(eventually([&] { return service->heldCount() == 1; }));
    client->tell(QStringLiteral("toStopGenerate"));
    QVERIFY(server->stateBecomes(QStringLiteral("stopped"), true));
    QVERIFY(service->releaseNext());
    QVERIFY(stopsAndDeletes({call("GenerateText", payloads::text("Who?"))}));
}

void MachineOutcomesTest::stopBetweenPolls()
{
    QVERIFY(ask(QStringLiteral("Who?")));
    client->tell(QStringLiteral("toStopGenerate"));
    QVERIFY(server->stateBecomes(QStringLiteral("stopped"), true));
    server->tell(QStringLiteral("tick"));
    QVERIFY(stopsAndDeletes({call("GenerateText", payloads::text("Who?"))}));
}

void MachineOutcomesTest::requestFailed_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("status");
    QTest::newRow("status 500") << QByteArray("{}") << 500;
    QTest::newRow("no JSON") << QByteArray("harbour") << 200;
    QTest::newRow("no code") << QByteArray("{}") << 200;
}

void MachineOutcomesTest::requestFailed()
{
    QFETCH(QByteArray, body);
    QFETCH(int, status);
    service->expect("POST", ServiceScript::text, ScriptedAnswer::bytes(body).withStatus(status));
    client->tell(QStringLiteral("textToGenerateText"), QStringLiteral("Who?"));
    QVERIFY(announces(QStringLiteral("requestFailed"), "RequestFailed"));
}

void MachineOutcomesTest::requestFailedAtAPoll_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("status");
    QTest::newRow("status 503") << QByteArray() << 503;
    QTest::newRow("no answers") << QByteArray(R"({"code":0,"data":{}})") << 200;
    QTest::newRow("empty answers") << QByteArray(R"({"code":0,"data":{"answers":[]}})") << 200;
}

void MachineOutcomesTest::requestFailedAtAPoll()
{
    QFETCH(QByteArray, body);
    QFETCH(int, status);
    QVERIFY(ask(QStringLiteral("Who?")));
    poll(ScriptedAnswer::bytes(body).withStatus(status));
    QVERIFY(announces(QStringLiteral("requestFailed"), "RequestFailed"));
}

void MachineOutcomesTest::requestFailedForAPicture()
{
    service->expect("POST", ServiceScript::picture, ScriptedAnswer::status(500));
    client->tell(QStringLiteral("textToGeneratePicture"),
                 QJsonObject{{QStringLiteral("style"), QStringLiteral("oil")},
                             {QStringLiteral("content"), QStringLiteral("a lake")}});
    QVERIFY(client->emits(QStringLiteral("requestFailed")));
    const QByteArray info = payloads::picture("oil", "a lake");
    const QByteArray item =
        payloads::array({QByteArray::fromHex("02"), payloads::text("a lake"), info, payloads::text("")});
    QVERIFY(hears({call("GenerateImage", info), completion("RequestFailed", item)}));
    const QJsonObject announced = client->emissions(QStringLiteral("requestFailed")).at(0).at(0).toObject();
    QCOMPARE(announced.value(QLatin1String("type")).toInt(), 2);
    QCOMPARE(announced.value(QLatin1String("picInfo")).toObject().value(QLatin1String("style")).toString(),
             QStringLiteral("oil"));
}

void MachineOutcomesTest::errorOccured()
{
    service->expect("POST", ServiceScript::text, ServiceScript::refused(QStringLiteral("quota used up")));
    client->tell(QStringLiteral("textToGenerateText"), QStringLiteral("Who?"));
    QVERIFY(announces(QStringLiteral("errorOccured"), "ErrorOccured", "quota used up"));
}

void MachineOutcomesTest::errorOccuredAtAPoll()
{
    QVERIFY(ask(QStringLiteral("Who?")));
    poll(ServiceScript::refused(QStringLiteral("model is gone")));
    QVERIFY(announces(QStringLiteral("errorOccured"), "ErrorOccured", "model is gone"));
}

void MachineOutcomesTest::requestTimeout()
{
    QVERIFY(ask(QStringLiteral("Who?")));
    server->tell(QStringLiteral("setTimeout"), 0);
    server->tell(QStringLiteral("tick"));
    QVERIFY(announces(QStringLiteral("requestTimeout"), "RequestTimeout"));
}

// No machine of ours sends this completion, nor the next.
void MachineOutcomesTest::downloadPictureFinishedIsAnnounced()
{
    wire->complete("DownloadPictureFinished", payloads::text("/pictures/1.jpg"));
    QVERIFY(client->emits(QStringLiteral("downloadPictureFinished")));
    QCOMPARE(text(client->emissions(QStringLiteral("downloadPictureFinished")).at(0)),
             QStringLiteral(R"(["/pictures/1.jpg"])"));
    QCOMPARE(server->signalNames(), QStringList());
}

void MachineOutcomesTest::stopGenerateFinishedStopsTheClient()
{
    QVERIFY(client->does(QStringLiteral("seed"), QJsonObject{{QStringLiteral("querying"), true}}));
    wire->complete("StopGenerateFinished");
    QVERIFY(client->stateBecomes(QStringLiteral("stopped"), true));
    QCOMPARE(client->state().value(QLatin1String("querying")).toBool(true), false);
    QCOMPARE(server->state().value(QLatin1String("stopped")).toBool(true), false);
}

void MachineOutcomesTest::commandsStayOnTheServer()
{
    const QJsonObject command{{QStringLiteral("cmdType"), 7}};
    QVERIFY(ask(QStringLiteral("Who?")));
    poll(ServiceScript::ready(QStringLiteral("done"), {command}));
    QVERIFY(server->emits(QStringLiteral("agentCmds")));
    QCOMPARE(text(server->emissions(QStringLiteral("agentCmds")).at(0)), QStringLiteral("[[7]]"));
    QVERIFY(client->emits(QStringLiteral("generateTextFinished")));
    const QByteArray pack = payloads::array({payloads::text("Who?"), payloads::text("done")});
    QVERIFY(hears({call("GenerateText", payloads::text("Who?")), completion("GenerateTextFinished", pack)}));
    QCOMPARE(client->signalNames(), QStringList{QStringLiteral("generateTextFinished")});
}

QTEST_GUILESS_MAIN(MachineOutcomesTest)
#include "tst_machineoutcomes.moc"
