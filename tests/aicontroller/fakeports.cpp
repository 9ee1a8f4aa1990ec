#include "fakeports.h"

#include "support/signalrecorder.h"

#include <QString>

using namespace tavro::aiassistant;

namespace {

template <typename Argument>
void note(QVector<PortCall> &calls, const char *name, const Argument &argument)
{
    calls.append({name, argument, tavro::testsupport::nextEventNumber()});
}

void note(QVector<PortCall> &calls, const char *name)
{
    calls.append({name, {}, tavro::testsupport::nextEventNumber()});
}

QVector<QByteArray> namesOf(const QVector<PortCall> &calls)
{
    QVector<QByteArray> names;
    for (const PortCall &call : calls)
        names.append(call.name);
    return names;
}

} // namespace

QVector<QByteArray> FakeClientPort::names() const
{
    return namesOf(calls);
}

void FakeClientPort::generateText(const QString &question)
{
    note(calls, "GenerateText", question);
}

void FakeClientPort::generateImage(const PictureGenerateInfo &info)
{
    note(calls, "GenerateImage", info);
}

void FakeClientPort::downloadPicture(const QString &url)
{
    note(calls, "DownloadPicture", url);
}

void FakeClientPort::stopGenerate()
{
    note(calls, "StopGenerate");
}

void FakeClientPort::activeDeepseek(bool active)
{
    note(calls, "ActiveDeepseek", active);
}

void FakeClientPort::activeOnlineSearch(bool active)
{
    note(calls, "ActiveOnlineSearch", active);
}

void FakeClientPort::clearCathe()
{
    note(calls, "ClearCathe");
}

void FakeClientPort::clearHistoryRecord()
{
    note(calls, "ClearHistoryRecord");
}

void FakeClientPort::updateHeader(const std::vector<std::string> &info)
{
    note(calls, "UpdateHeader", info);
}

void FakeClientPort::clearHeader()
{
    note(calls, "ClearHeader");
}

void FakeClientPort::aiWidgetShow()
{
    note(calls, "AiWidgetShow");
}

QVector<QByteArray> FakeServerPort::names() const
{
    return namesOf(calls);
}

void FakeServerPort::generateTextFinished(const TextGeneratedPack &pack)
{
    note(calls, "GenerateTextFinished", pack);
}

void FakeServerPort::generateImageFinished(const PicturedGeneratedPack &pack)
{
    note(calls, "GenerateImageFinished", pack);
}

void FakeServerPort::downloadPictureFinished(const QString &url)
{
    note(calls, "DownloadPictureFinished", url);
}

void FakeServerPort::stopGenerateFinished()
{
    note(calls, "StopGenerateFinished");
}

void FakeServerPort::deleteGeneratingItem()
{
    note(calls, "DeleteGeneratingItem");
}

void FakeServerPort::activeDeepseekFinished(bool active)
{
    note(calls, "ActiveDeepseekFinished", active);
}

void FakeServerPort::activeOnlineSearchFinished(bool active)
{
    note(calls, "ActiveOnlineSearchFinished", active);
}

void FakeServerPort::clearCatheFinished()
{
    note(calls, "ClearCatheFinished");
}

void FakeServerPort::clearHistoryRecordFinished()
{
    note(calls, "ClearHistoryRecordFinished");
}

void FakeServerPort::clearHeaderFinished()
{
    note(calls, "ClearHeaderFinished");
}

void FakeServerPort::requestFailed(const ChatItemBasic &basic)
{
    note(calls, "RequestFailed", basic);
}

void FakeServerPort::errorOccured(const ChatItemBasic &basic)
{
    note(calls, "ErrorOccured", basic);
}

void FakeServerPort::requestTimeout(const ChatItemBasic &basic)
{
    note(calls, "RequestTimeout", basic);
}
