#include "machinestest.h"

#include <QJsonArray>

/// Messages that no machine of this version sends: of other versions, of the wrong kind, and not for the receiver. The
/// receiver does what it can read, logs what it cannot, and goes on.
class MachineMessagesTest : public MachinesTest {
    Q_OBJECT

private Q_SLOTS:
    void clientHearsNothingOfWhatItDoesNotWant_data();
    void clientHearsNothingOfWhatItDoesNotWant();
    void headersOfAnotherNumberChangeNothing_data();
    void headersOfAnotherNumberChangeNothing();
    void shorterPictureRequestGetsTheDefaults();
    void longerPictureRequestIsCutOff();
    void otherVersionOfATextAnswer_data();
    void otherVersionOfATextAnswer();
    void longerPictureAnswerIsCutOff();
    void otherVersionOfAnOutcome_data();
    void otherVersionOfAnOutcome();
    void argumentOfACallThatHasNoneIsNotLookedAt();
    void malformedCall_data();
    void malformedCall();
    void malformedCompletion_data();
    void malformedCompletion();
    void unknownNamesAreDropped();

private:
    using Send = void (Wiretap::*)(const QByteArray &, const QByteArray &);
    using IsThrough = bool (MachineMessagesTest::*)();

    bool answersAgain();
    void refusesAll(MachineChild &machine, Send send, IsThrough isThrough, const QStringList &signalsOfThat);
};

namespace {

QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

// One row for a name: nothing, no MessagePack, a text that breaks off, and something of another type.
void addMalformed(const QByteArray &name, const QByteArray &otherType)
{
    QTest::newRow(name.constData()) << name << QByteArrayList{{}, hex("c1"), hex("d9056162"), otherType};
}

QJsonObject conversation()
{
    return {{QStringLiteral("history"), QJsonArray{1}},
            {QStringLiteral("deepModel"), true},
            {QStringLiteral("onlineSearch"), true}};
}

} // namespace

/// Whether the whole road still works: asked on the client, answered on the client.
bool MachineMessagesTest::answersAgain()
{
    const QStringList before = wire->heard();
    const int answered = client->emissions(QStringLiteral("generateTextFinished")).size();
    if (!ask(QStringLiteral("again")))
        return false;
    poll(ServiceScript::ready(QStringLiteral("yes")));
    const QByteArray pack = payloads::array({payloads::text("again"), payloads::text("yes")});
    return client->emits(QStringLiteral("generateTextFinished"), answered + 1)
        && hears(
               before
               + QStringList{call("GenerateText", payloads::text("again")), completion("GenerateTextFinished", pack)});
}

void MachineMessagesTest::clientHearsNothingOfWhatItDoesNotWant_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("payload");
    for (const char *name : {"ClearHeaderFinished", "ClearHistoryRecordFinished"}) {
        QTest::addRow("%s", name) << QByteArray(name) << QByteArray();
        QTest::addRow("%s with a payload", name) << QByteArray(name) << hex("93a174a175a16e");
    }
}

void MachineMessagesTest::clientHearsNothingOfWhatItDoesNotWant()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, payload);
    QVERIFY(client->does(QStringLiteral("updateHeaderInfo"),
                         QJsonArray{QStringLiteral("t"), QStringLiteral("u"), QStringLiteral("n")}));
    QVERIFY(client->does(QStringLiteral("seed"),
                         QJsonObject{{QStringLiteral("history"), QJsonArray{1, 2}},
                                     {QStringLiteral("reqId"), QStringLiteral("r")},
                                     {QStringLiteral("lastPictureUrl"), QStringLiteral("u")},
                                     {QStringLiteral("querying"), true},
                                     {QStringLiteral("deepModel"), true},
                                     {QStringLiteral("onlineSearch"), true}}));
    const QJsonObject before = client->state();
    wire->complete(name, payload);
    QVERIFY(clientIsThrough());
    QCOMPARE(text(client->state()), text(before));
    QCOMPARE(client->signalNames(), QStringList{QStringLiteral("deleteGeneratingItem")});
}

void MachineMessagesTest::headersOfAnotherNumberChangeNothing_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::newRow("none") << hex("90");
    QTest::newRow("two") << hex("92a174a175");
    QTest::newRow("four") << hex("94a174a175a16ea16d");
}

void MachineMessagesTest::headersOfAnotherNumberChangeNothing()
{
    QFETCH(QByteArray, list);
    QJsonArray sent;
    for (const char letter : {'t', 'u', 'n', 'm'}) {
        if (sent.size() < (list.at(0) & 0x0F))
            sent.append(QString(QLatin1Char(letter)));
    }
    QVERIFY(server->does(QStringLiteral("updateHeaderInfo"),
                         QJsonArray{QStringLiteral("t0"), QStringLiteral("u0"), QStringLiteral("n0")}));
    client->tell(QStringLiteral("toUpdateHeaderInfo"), sent);
    QVERIFY(hears({call("UpdateHeader", list)}));
    QVERIFY(serverIsThrough());
    QCOMPARE(text(server->state().value(QLatin1String("headers"))),
             QStringLiteral(R"({"node":"n0","token":"t0","userId":"u0"})"));
    QCOMPARE(server->logLines(QStringLiteral("info")), QStringList());
}

void MachineMessagesTest::shorterPictureRequestGetsTheDefaults()
{
    service->expect("POST", ServiceScript::picture, ServiceScript::accepted(QStringLiteral("r1")));
    wire->call("GenerateImage", hex("95a36f696ccd0280cd0168c2a161"));
    QVERIFY(server->stateBecomes(QStringLiteral("reqId"), QStringLiteral("r1")));
    const QJsonObject body = service->body(ServiceScript::picture);
    QCOMPARE(body.value(QLatin1String("width")).toInt(), 640);
    QCOMPARE(body.value(QLatin1String("height")).toInt(), 360);
    QCOMPARE(body.value(QLatin1String("useSR")).toBool(true), false);
    QCOMPARE(body.value(QLatin1String("content")).toString(), QStringLiteral("a"));
    QCOMPARE(body.value(QLatin1String("logoOpacity")).toDouble(), double{0.35F});
    QCOMPARE(body.value(QLatin1String("logoContent")).toString(), QStringLiteral("width"));
}

void MachineMessagesTest::longerPictureRequestIsCutOff()
{
    service->expect("POST", ServiceScript::picture, ServiceScript::accepted(QStringLiteral("r1")));
    wire->call("GenerateImage", hex("9ca36f696ccd0280cd0168c2a161c303c3ca3f000000a16c80a178"));
    QVERIFY(server->stateBecomes(QStringLiteral("reqId"), QStringLiteral("r1")));
    const QJsonObject body = service->body(ServiceScript::picture);
    QCOMPARE(body.value(QLatin1String("width")).toInt(), 640);
    QCOMPARE(body.value(QLatin1String("logoPositon")).toInt(), 3);
    QCOMPARE(body.value(QLatin1String("logoOpacity")).toDouble(), 0.5);
    QCOMPARE(body.value(QLatin1String("logoContent")).toString(), QStringLiteral("l"));
}

void MachineMessagesTest::otherVersionOfATextAnswer_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("announced");
    QTest::newRow("empty") << hex("90") << QStringLiteral(R"([{"answer":"","question":""}])");
    QTest::newRow("shorter") << hex("91a171") << QStringLiteral(R"([{"answer":"","question":"q"}])");
    QTest::newRow("longer") << hex("94a171a16180c0") << QStringLiteral(R"([{"answer":"a","question":"q"}])");
}

void MachineMessagesTest::otherVersionOfATextAnswer()
{
    QFETCH(QByteArray, payload);
    QFETCH(QString, announced);
    wire->complete("GenerateTextFinished", payload);
    QVERIFY(client->emits(QStringLiteral("generateTextFinished")));
    QCOMPARE(text(client->emissions(QStringLiteral("generateTextFinished")).at(0)), announced);
}

void MachineMessagesTest::longerPictureAnswerIsCutOff()
{
    service->expect("GET", "/p", ScriptedAnswer::bytes(pngBytes(3, 2), "image/png"));
    const QByteArray source =
        payloads::array({payloads::text("mist"), payloads::text(service->url().toUtf8() + "/p"), hex("c3")});
    wire->complete("GenerateImageFinished",
                   payloads::array({payloads::text("a lake"), payloads::picture(), source, hex("07")}));
    QVERIFY(client->emits(QStringLiteral("generatePictureFinished")));
    const QJsonArray announced = client->emissions(QStringLiteral("generatePictureFinished")).at(0);
    QCOMPARE(announced.at(0).toString(), QStringLiteral("a lake"));
    QCOMPARE(announced.at(2).toObject().value(QLatin1String("description")).toString(), QStringLiteral("mist"));
    QCOMPARE(announced.at(2).toObject().value(QLatin1String("width")).toInt(), 3);
}

void MachineMessagesTest::otherVersionOfAnOutcome_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("signal");
    QTest::newRow("failure") << QByteArray("RequestFailed") << QStringLiteral("requestFailed");
    QTest::newRow("error") << QByteArray("ErrorOccured") << QStringLiteral("errorOccured");
    QTest::newRow("time-out") << QByteArray("RequestTimeout") << QStringLiteral("requestTimeout");
}

void MachineMessagesTest::otherVersionOfAnOutcome()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, signal);
    wire->complete(name, hex("9201a171"));
    wire->complete(name, hex("9502a17291a16fa16dc0"));
    QVERIFY(client->emits(signal, 2));
    const QJsonObject shorter = client->emissions(signal).at(0).at(0).toObject();
    QCOMPARE(shorter.value(QLatin1String("type")).toInt(), 1);
    QCOMPARE(shorter.value(QLatin1String("question")).toString(), QStringLiteral("q"));
    QCOMPARE(shorter.value(QLatin1String("message")).toString(), QString());
    const QJsonObject longer = client->emissions(signal).at(1).at(0).toObject();
    QCOMPARE(longer.value(QLatin1String("type")).toInt(), 2);
    QCOMPARE(longer.value(QLatin1String("message")).toString(), QStringLiteral("m"));
    const QJsonObject picture = longer.value(QLatin1String("picInfo")).toObject();
    QCOMPARE(picture.value(QLatin1String("style")).toString(), QStringLiteral("o"));
    QCOMPARE(picture.value(QLatin1String("width")).toInt(), 3840);
}

void MachineMessagesTest::argumentOfACallThatHasNoneIsNotLookedAt()
{
    wire->call("ClearHeader", hex("c1"));
    QVERIFY(hears({completion("ClearHeaderFinished")}));
    wire->call("StopGenerate", hex("d9056162"));
    QVERIFY(server->stateBecomes(QStringLiteral("stopped"), true));
    wire->call("AiWidgetShow", hex("a178"));
    QVERIFY(server->emits(QStringLiteral("notify")));
}

/// Sends the row's payloads to @p machine, which does nothing but log each, and works as before.
void MachineMessagesTest::refusesAll(MachineChild &machine, Send send, IsThrough isThrough,
                                     const QStringList &signalsOfThat)
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArrayList, payloads);
    const QString line = QStringLiteral("the message %1 is not carried out").arg(QString::fromLatin1(name));
    machine.expectLog(line);
    QVERIFY(machine.does(QStringLiteral("seed"), conversation()));
    const QJsonObject before = machine.state();
    for (const QByteArray &payload : qAsConst(payloads))
        (*wire.*send)(name, payload);
    QVERIFY((this->*isThrough)());
    QCOMPARE(text(machine.state()), text(before));
    QCOMPARE(machine.signalNames(), signalsOfThat);
    QCOMPARE(machine.logLines(QStringLiteral("error")).filter(line).size(), payloads.size());
    QVERIFY(answersAgain());
}

void MachineMessagesTest::malformedCall_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArrayList>("payloads");
    addMalformed("GenerateText", hex("91a161"));
    addMalformed("GenerateImage", hex("92a16fa161"));
    addMalformed("DownloadPicture", hex("c3"));
    addMalformed("ActiveDeepseek", hex("01"));
    addMalformed("ActiveOnlineSearch", hex("a161"));
    addMalformed("UpdateHeader", hex("930102c3"));
}

void MachineMessagesTest::malformedCall()
{
    refusesAll(*server, &Wiretap::call, &MachineMessagesTest::serverIsThrough,
               {QStringLiteral("aiNotify"), QStringLiteral("notify")});
}

void MachineMessagesTest::malformedCompletion_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArrayList>("payloads");
    addMalformed("GenerateTextFinished", hex("a161"));
    // The description and the address beside each other, as four elements.
    addMalformed("GenerateImageFinished",
                 payloads::array({payloads::text("a"), payloads::picture(), payloads::text("d"), payloads::text("u")}));
    addMalformed("DownloadPictureFinished", hex("90"));
    addMalformed("ActiveDeepseekFinished", hex("00"));
    addMalformed("ActiveOnlineSearchFinished", hex("a161"));
    addMalformed("RequestFailed", hex("80"));
    addMalformed("ErrorOccured", hex("c2"));
    addMalformed("RequestTimeout", hex("a161"));
}

void MachineMessagesTest::malformedCompletion()
{
    refusesAll(*client, &Wiretap::complete, &MachineMessagesTest::clientIsThrough,
               {QStringLiteral("deleteGeneratingItem")});
}

void MachineMessagesTest::unknownNamesAreDropped()
{
    wire->call("GenerateVideo", hex("a161"));
    wire->call("GenerateTextFinished", hex("92a171a161"));
    wire->complete("GenerateVideoFinished", hex("a161"));
    wire->complete("GenerateText", hex("a161"));
    QVERIFY(serverIsThrough());
    QVERIFY(clientIsThrough());
    QCOMPARE(client->signalNames(), QStringList{QStringLiteral("deleteGeneratingItem")});
    QCOMPARE(server->signalNames(), (QStringList{QStringLiteral("aiNotify"), QStringLiteral("notify")}));
    QVERIFY(answersAgain());
}

QTEST_GUILESS_MAIN(MachineMessagesTest)
#include "tst_machinemessages.moc"
