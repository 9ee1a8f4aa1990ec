#include "operations.h"

#include "machine.h"
#include "records.h"
#include "reporter.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

namespace tavro::machineprocess {

namespace {

constexpr int unknownOperation = 2;

} // namespace

Operations::Operations(Machine &machine)
    : m_machine(machine)
{
    addRouted();
    addSetters();
    addOwn();
}

void Operations::carryOut(const QString &line)
{
    const QJsonObject wanted = QJsonDocument::fromJson(line.toUtf8()).object();
    const Operation operation = m_operations.value(wanted.value(QLatin1String("do")).toString());
    if (!operation)
        return QCoreApplication::exit(unknownOperation);
    operation(wanted.value(QLatin1String("with")));
}

void Operations::addRouted()
{
    auto &c = m_machine.controller();
    auto &o = m_operations;
    o[QStringLiteral("textToGenerateText")] = [&c](const QJsonValue &v) { c.textToGenerateText(v.toString()); };
    o[QStringLiteral("textToGeneratePicture")] = [&c](const QJsonValue &v) {
        c.textToGeneratePicture(readPictureInfo(v));
    };
    o[QStringLiteral("toActiveDeepSeekModel")] = [&c](const QJsonValue &v) { c.toActiveDeepSeekModel(v.toBool()); };
    o[QStringLiteral("toActiveOnlineSearch")] = [&c](const QJsonValue &v) { c.toActiveOnlineSearch(v.toBool()); };
    o[QStringLiteral("toClearCathe")] = [&c](const QJsonValue &) { c.toClearCathe(); };
    o[QStringLiteral("toClearHeaderInfo")] = [&c](const QJsonValue &) { c.toClearHeaderInfo(); };
    o[QStringLiteral("toClearHistoryRecord")] = [&c](const QJsonValue &) { c.toClearHistoryRecord(); };
    o[QStringLiteral("toStopGenerate")] = [&c](const QJsonValue &) { c.toStopGenerate(); };
    o[QStringLiteral("toUpdateHeaderInfo")] = [&c](const QJsonValue &v) { c.toUpdateHeaderInfo(readTexts(v)); };
    o[QStringLiteral("toDownloadPicture")] = [&c](const QJsonValue &v) { c.toDownloadPicture(v.toString()); };
    o[QStringLiteral("notifyAiWidgetShow")] = [&c](const QJsonValue &) { c.notifyAiWidgetShow(); };
}

void Operations::addSetters()
{
    auto &c = m_machine.controller();
    auto &o = m_operations;
    o[QStringLiteral("setDomain")] = [&c](const QJsonValue &v) { c.setDomain(v.toString()); };
    o[QStringLiteral("setToken")] = [&c](const QJsonValue &v) { c.setToken(v.toString()); };
    o[QStringLiteral("setUserId")] = [&c](const QJsonValue &v) { c.setUserId(v.toString()); };
    o[QStringLiteral("setNode")] = [&c](const QJsonValue &v) { c.setNode(v.toString()); };
    o[QStringLiteral("setTimeout")] = [&c](const QJsonValue &v) { c.setTimeout(v.toInt()); };
    o[QStringLiteral("setSingleTickTime")] = [&c](const QJsonValue &v) { c.setSingleTickTime(v.toInt()); };
    o[QStringLiteral("updateHeaderInfo")] = [&c](const QJsonValue &v) { c.updateHeaderInfo(readTexts(v)); };
}

void Operations::addOwn()
{
    auto &o = m_operations;
    o[QStringLiteral("seed")] = [this](const QJsonValue &v) { m_machine.seed(v.toObject()); };
    o[QStringLiteral("tick")] = [this](const QJsonValue &) { m_machine.tick(); };
    o[QStringLiteral("state")] = [this](const QJsonValue &v) {
        report({{QStringLiteral("state"), m_machine.state()}, {QStringLiteral("asked"), v}});
    };
    o[QStringLiteral("quit")] = [](const QJsonValue &) { QCoreApplication::quit(); };
}

} // namespace tavro::machineprocess
