#include "machinestest.h"

#include <QFile>
#include <QJsonArray>

/// Every row of the table of calls: from the client's operation over the wire to what the serving machine's controller
/// does, and back where a completion answers.
class MachineTablesTest : public MachinesTest {
    Q_OBJECT

private Q_SLOTS:
    void textQuestion();
    void pictureQuestion();
    void numbersOfAPictureQuestion_data();
    void numbersOfAPictureQuestion();
    void downloadOfThePanelStaysOnItsMachine();
    void downloadPictureSavesTheFileOnTheServer();
    void stopGenerate();
    void flags_data();
    void flags();
    void clearCathe();
    void clearHistoryRecord();
    void updateHeader();
    void clearHeader();
    void aiWidgetShow();
    void aiWidgetShowOfTheServerIsNotSent();

private:
    QStringList savedFiles(MachineChild &machine);
};

namespace {

QJsonObject pictureInfo()
{
    return {{QStringLiteral("style"), QStringLiteral("oil")}, {QStringLiteral("content"), QStringLiteral("a lake")}};
}

QJsonObject conversation()
{
    return {{QStringLiteral("history"), QJsonArray{QStringLiteral("earlier")}},
            {QStringLiteral("lastPictureUrl"), QStringLiteral("http://127.0.0.1/p")},
            {QStringLiteral("querying"), true}};
}

} // namespace

void MachineTablesTest::textQuestion()
{
    const QStringList asked{call("GenerateText", payloads::text("Who?"))};
    QVERIFY(ask(QStringLiteral("Who?")));
    QVERIFY(hears(asked));
    const QJsonArray messages = service->body(ServiceScript::text).value(QLatin1String("messages")).toArray();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.at(0).toObject().value(QLatin1String("content")).toString(), QStringLiteral("Who?"));

    poll(ServiceScript::ready(QStringLiteral("the harbour")));
    QVERIFY(client->emits(QStringLiteral("generateTextFinished")));
    const QByteArray pack = payloads::array({payloads::text("Who?"), payloads::text("the harbour")});
    QVERIFY(hears(asked + QStringList{completion("GenerateTextFinished", pack)}));
    QCOMPARE(text(client->emissions(QStringLiteral("generateTextFinished")).at(0)),
             QStringLiteral(R"([{"answer":"the harbour","question":"Who?"}])"));
    QCOMPARE(server->state().value(QLatin1String("history")).toArray().size(), 2);
    QCOMPARE(client->state().value(QLatin1String("history")).toArray().size(), 0);
    QCOMPARE(server->signalNames(), QStringList());
    QCOMPARE(client->signalNames(), QStringList{QStringLiteral("generateTextFinished")});
}

void MachineTablesTest::pictureQuestion()
{
    const QByteArray info = payloads::picture("oil", "a lake");
    const QStringList asked{call("GenerateImage", info)};
    service->expect("POST", ServiceScript::picture, ServiceScript::accepted(QStringLiteral("r1")));
    client->tell(QStringLiteral("textToGeneratePicture"), pictureInfo());
    QVERIFY(server->stateBecomes(QStringLiteral("reqId"), QStringLiteral("r1")));
    QVERIFY(hears(asked));
    QCOMPARE(service->body(ServiceScript::picture).value(QLatin1String("style")).toString(), QStringLiteral("oil"));

    const QByteArray url = service->url().toUtf8() + "/p";
    service->expect("GET", "/p", ScriptedAnswer::bytes(pngBytes(3, 2), "image/png"));
    poll(ServiceScript::ready(QString::fromUtf8(url), {}, QStringLiteral("mist")));
    QVERIFY(client->emits(QStringLiteral("generatePictureFinished")));
    const QByteArray source = payloads::array({payloads::text("mist"), payloads::text(url)});
    QVERIFY(hears(
        asked
        + QStringList{completion("GenerateImageFinished", payloads::array({payloads::text("a lake"), info, source}))}));
    const QJsonArray announced = client->emissions(QStringLiteral("generatePictureFinished")).at(0);
    QCOMPARE(announced.at(0).toString(), QStringLiteral("a lake"));
    QCOMPARE(announced.at(1).toObject().value(QLatin1String("style")).toString(), QStringLiteral("oil"));
    QCOMPARE(text(announced.at(2)),
             QStringLiteral(R"({"description":"mist","height":2,"url":"%1","width":3})").arg(QString::fromUtf8(url)));
    QCOMPARE(server->signalNames(), QStringList());
}

void MachineTablesTest::numbersOfAPictureQuestion_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<double>("value");
    QTest::addColumn<QByteArray>("payload");
    const auto add = [](const char *field, double value, const char *payload) {
        QTest::addRow("%s %g", field, value) << QString::fromLatin1(field) << value << QByteArray::fromHex(payload);
    };
    add("logoOpacity", 0, "9aa0cd0f00cd0870c3a0c200c2ca00000000a57769647468");
    add("logoOpacity", 1, "9aa0cd0f00cd0870c3a0c200c2ca3f800000a57769647468");
    add("logoOpacity", 0.5, "9aa0cd0f00cd0870c3a0c200c2ca3f000000a57769647468");
    add("logoPositon", 200, "9aa0cd0f00cd0870c3a0c2ccc8c2ca3eb33333a57769647468");
    add("width", 127, "9aa07fcd0870c3a0c200c2ca3eb33333a57769647468");
    add("width", 70000, "9aa0ce00011170cd0870c3a0c200c2ca3eb33333a57769647468");
    add("height", -33, "9aa0cd0f00d0dfc3a0c200c2ca3eb33333a57769647468");
}

void MachineTablesTest::numbersOfAPictureQuestion()
{
    QFETCH(QString, field);
    QFETCH(double, value);
    QFETCH(QByteArray, payload);
    service->expect("POST", ServiceScript::picture, ServiceScript::accepted(QStringLiteral("r1")));
    client->tell(QStringLiteral("textToGeneratePicture"), QJsonObject{{field, value}});
    QVERIFY(server->stateBecomes(QStringLiteral("reqId"), QStringLiteral("r1")));
    QVERIFY(hears({call("GenerateImage", payload)}));
    QCOMPARE(service->body(ServiceScript::picture).value(field).toDouble(), value);
}

QStringList MachineTablesTest::savedFiles(MachineChild &machine)
{
    QStringList paths;
    for (const QJsonArray &arguments : machine.emissions(QStringLiteral("downloadPictureFinished")))
        paths.append(arguments.at(0).toString());
    return paths;
}

void MachineTablesTest::downloadOfThePanelStaysOnItsMachine()
{
    service->expect("GET", "/p", ScriptedAnswer::bytes("the picture"));
    client->tell(QStringLiteral("toDownloadPicture"), service->url() + QStringLiteral("/p"));
    QVERIFY(client->emits(QStringLiteral("downloadPictureFinished")));
    QFile file(savedFiles(*client).at(0));
    QVERIFY(file.open(QFile::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("the picture"));
    QCOMPARE(server->signalNames(), QStringList());
}

// No machine of ours sends this call.
void MachineTablesTest::downloadPictureSavesTheFileOnTheServer()
{
    service->expect("GET", "/p", ScriptedAnswer::bytes("the picture"));
    wire->call("DownloadPicture", payloads::text(service->url().toUtf8() + "/p"));
    QVERIFY(server->emits(QStringLiteral("downloadPictureFinished")));
    QFile file(savedFiles(*server).at(0));
    QVERIFY(file.open(QFile::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("the picture"));
    QCOMPARE(client->signalNames(), QStringList());
}

void MachineTablesTest::stopGenerate()
{
    QVERIFY(server->does(QStringLiteral("seed"), conversation()));
    client->tell(QStringLiteral("toStopGenerate"));
    QVERIFY(server->stateBecomes(QStringLiteral("stopped"), true));
    QCOMPARE(server->state().value(QLatin1String("querying")).toBool(true), false);
    QCOMPARE(client->state().value(QLatin1String("stopped")).toBool(true), false);
    QVERIFY(hears({call("StopGenerate")}));
}

void MachineTablesTest::flags_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QString>("flag");
    QTest::addColumn<bool>("active");
    for (const bool active : {false, true}) {
        QTest::addRow("deep model %d", active) << QStringLiteral("toActiveDeepSeekModel")
                                               << QByteArray("ActiveDeepseek") << QStringLiteral("deepModel") << active;
        QTest::addRow("online search %d", active)
            << QStringLiteral("toActiveOnlineSearch") << QByteArray("ActiveOnlineSearch")
            << QStringLiteral("onlineSearch") << active;
    }
}

void MachineTablesTest::flags()
{
    QFETCH(QString, operation);
    QFETCH(QByteArray, message);
    QFETCH(QString, flag);
    QFETCH(bool, active);
    QJsonObject before = conversation();
    before.insert(flag, !active);
    for (MachineChild *machine : {server.get(), client.get()})
        QVERIFY(machine->does(QStringLiteral("seed"), before));

    const QByteArray payload = QByteArray::fromHex(active ? "c3" : "c2");
    client->tell(operation, active);
    QVERIFY(hears({call(message, payload), completion(message + "Finished", payload)}));
    for (MachineChild *machine : {server.get(), client.get()}) {
        QVERIFY(machine->stateBecomes(flag, active));
        QCOMPARE(text(machine->state().value(QLatin1String("history"))), QStringLiteral("[]"));
    }
    QCOMPARE(client->signalNames() + server->signalNames(), QStringList());
}

void MachineTablesTest::clearCathe()
{
    for (MachineChild *machine : {server.get(), client.get()})
        QVERIFY(machine->does(QStringLiteral("seed"), conversation()));
    client->tell(QStringLiteral("toClearCathe"));
    QVERIFY(hears({call("ClearCathe"), completion("ClearCatheFinished")}));
    for (MachineChild *machine : {server.get(), client.get()}) {
        QVERIFY(machine->stateBecomes(QStringLiteral("lastPictureUrl"), QString()));
        QCOMPARE(text(machine->state().value(QLatin1String("history"))), QStringLiteral("[]"));
        QCOMPARE(machine->state().value(QLatin1String("querying")).toBool(true), false);
    }
}

void MachineTablesTest::clearHistoryRecord()
{
    for (MachineChild *machine : {server.get(), client.get()})
        QVERIFY(machine->does(QStringLiteral("seed"), conversation()));
    client->tell(QStringLiteral("toClearHistoryRecord"));
    QVERIFY(hears({call("ClearHistoryRecord"), completion("ClearHistoryRecordFinished")}));
    QCOMPARE(text(server->state().value(QLatin1String("history"))), QStringLiteral("[]"));
    QVERIFY(clientIsThrough());
    QCOMPARE(text(client->state().value(QLatin1String("history"))), QStringLiteral(R"(["earlier"])"));
}

void MachineTablesTest::updateHeader()
{
    const QByteArray list = payloads::array({payloads::text("t"), payloads::text("\xc3\xbc"), payloads::text("")});
    client->tell(QStringLiteral("toUpdateHeaderInfo"),
                 QJsonArray{QStringLiteral("t"), QStringLiteral("\u00fc"), QString()});
    QVERIFY(hears({call("UpdateHeader", list)}));
    QVERIFY(serverIsThrough());
    QCOMPARE(text(server->state().value(QLatin1String("headers"))),
             QStringLiteral(R"({"node":"","token":"t","userId":")") + QStringLiteral("\u00fc\"}"));
    QCOMPARE(server->logLines(QStringLiteral("info")).size(), 1);
    QVERIFY(server->logLines(QStringLiteral("info"))
                .at(0)
                .startsWith(QStringLiteral("--AIASSISTANT-- token is t, userId is \u00fc, node is  \n")));
    QVERIFY(ask(QStringLiteral("Who?")));
    const HttpRequest request = service->requestsTo(ServiceScript::text).at(0);
    QCOMPARE(request.header("token").value_or("none"), QByteArray("t"));
    QCOMPARE(request.header("userId").value_or("none"), QByteArray("\xc3\xbc"));
    QCOMPARE(request.header("node").value_or("none"), QByteArray());
    QVERIFY(hears({call("UpdateHeader", list), call("GenerateText", payloads::text("Who?"))}));
}

void MachineTablesTest::clearHeader()
{
    const QString given = QStringLiteral("given");
    for (MachineChild *machine : {server.get(), client.get()})
        QVERIFY(machine->does(QStringLiteral("updateHeaderInfo"), QJsonArray{given, given, given}));
    client->tell(QStringLiteral("toClearHeaderInfo"));
    QVERIFY(hears({call("ClearHeader"), completion("ClearHeaderFinished")}));
    QCOMPARE(text(server->state().value(QLatin1String("headers"))),
             QStringLiteral(R"({"node":"","token":"","userId":""})"));
    QVERIFY(clientIsThrough());
    QCOMPARE(text(client->state().value(QLatin1String("headers"))),
             QStringLiteral(R"({"node":"given","token":"given","userId":"given"})"));
    QCOMPARE(client->signalNames(), QStringList{QStringLiteral("deleteGeneratingItem")});
    QCOMPARE(server->signalNames(), QStringList());
}

void MachineTablesTest::aiWidgetShow()
{
    client->tell(QStringLiteral("notifyAiWidgetShow"));
    QVERIFY(hears({call("AiWidgetShow")}));
    QVERIFY(server->emits(QStringLiteral("notify")));
    QCOMPARE(server->signalNames(), (QStringList{QStringLiteral("aiNotify"), QStringLiteral("notify")}));
    QCOMPARE(text(server->emissions(QStringLiteral("notify")).at(0)), QStringLiteral("[]"));
    QCOMPARE(client->signalNames(), QStringList());
}

void MachineTablesTest::aiWidgetShowOfTheServerIsNotSent()
{
    server->tell(QStringLiteral("notifyAiWidgetShow"));
    QVERIFY(!server->state().isEmpty());
    QCOMPARE(server->signalNames(), QStringList());
}

QTEST_GUILESS_MAIN(MachineTablesTest)
#include "tst_machinetables.moc"
