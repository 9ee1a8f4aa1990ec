#include "machinestest.h"

#include <QJsonDocument>

namespace {

QString line(const QString &group, const char *side, const QByteArray &name, const QByteArray &payload)
{
    const QString subject =
        QStringLiteral("zvaiassistant.%1.%2.%3").arg(group, QLatin1String(side), QString::fromLatin1(name));
    return payload.isEmpty() ? subject : subject + QLatin1Char(' ') + QString::fromLatin1(payload.toHex());
}

} // namespace

void MachinesTest::initTestCase()
{
    QVERIFY2(broker.start(), qPrintable(broker.errorText()));
}

void MachinesTest::init()
{
    static int number = 0;
    group = QStringLiteral("group%1").arg(++number);
    m_heard.clear();
    service = std::make_unique<ServiceScript>();
    wire = std::make_unique<Wiretap>(broker.url(), group);
    server = std::make_unique<MachineChild>();
    client = std::make_unique<MachineChild>();
    QVERIFY(wire->isConnected());
    server->start(arguments(QStringLiteral("server")));
    client->start(arguments(QStringLiteral("client")));
    QVERIFY(server->runtimeBecomes(QStringLiteral("serving"), true));
    QVERIFY(client->runtimeBecomes(QStringLiteral("serverPresent"), true));
}

void MachinesTest::cleanup()
{
    const bool saidNoMore = machinesSaidNoMore();
    const int clientStatus = client->quit();
    const int serverStatus = server->quit();
    const QStringList left = client->complaints() + server->complaints() + service->leftovers();
    client.reset();
    server.reset();
    wire.reset();
    service.reset();
    QVERIFY(saidNoMore);
    QCOMPARE(left.join(QLatin1Char('\n')), QString());
    QCOMPARE(clientStatus, 0);
    QCOMPARE(serverStatus, 0);
}

QStringList MachinesTest::arguments(const QString &role) const
{
    return {QStringLiteral("--role"),    role,           QStringLiteral("--name"),         role,
            QStringLiteral("--broker"),  broker.url(),   QStringLiteral("--group"),        group,
            QStringLiteral("--service"), service->url(), QStringLiteral("--ticks-by-hand")};
}

QString MachinesTest::text(const QJsonValue &value)
{
    const QByteArray list = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.mid(1, list.size() - 2));
}

QString MachinesTest::call(const QByteArray &name, const QByteArray &payload) const
{
    return line(group, "server", name, payload);
}

QString MachinesTest::completion(const QByteArray &name, const QByteArray &payload) const
{
    return line(group, "clients", name, payload);
}

// Each machine has a last word, which comes behind all that it said before.
bool MachinesTest::machinesSaidNoMore()
{
    const QStringList before = m_heard + QStringList{call("AiWidgetShow")};
    client->tell(QStringLiteral("notifyAiWidgetShow"));
    if (!hears(before))
        return false;
    const QByteArray off = QByteArray::fromHex("c2");
    wire->call("ActiveDeepseek", off);
    return hears(before + QStringList{completion("ActiveDeepseekFinished", off)});
}

bool MachinesTest::hears(const QStringList &lines)
{
    m_heard = lines;
    if (eventually([&] { return wire->heard().size() >= lines.size(); }) && wire->heard() == lines)
        return true;
    qWarning("the wire heard\n  %s\nin place of\n  %s", qPrintable(wire->heard().join(QStringLiteral("\n  "))),
             qPrintable(lines.join(QStringLiteral("\n  "))));
    return false;
}

bool MachinesTest::ask(const QString &question, const QString &reqId)
{
    service->expect("POST", ServiceScript::text, ServiceScript::accepted(reqId));
    client->tell(QStringLiteral("textToGenerateText"), question);
    return server->stateBecomes(QStringLiteral("reqId"), reqId);
}

void MachinesTest::poll(const ScriptedAnswer &answer)
{
    service->expect("POST", ServiceScript::result, answer);
    server->tell(QStringLiteral("tick"));
}

bool MachinesTest::serverIsThrough()
{
    const int before = server->emissions(QStringLiteral("aiNotify")).size();
    wire->call("AiWidgetShow");
    return server->emits(QStringLiteral("aiNotify"), before + 1);
}

bool MachinesTest::clientIsThrough()
{
    const int before = client->emissions(QStringLiteral("deleteGeneratingItem")).size();
    wire->complete("DeleteGeneratingItem");
    return client->emits(QStringLiteral("deleteGeneratingItem"), before + 1);
}
