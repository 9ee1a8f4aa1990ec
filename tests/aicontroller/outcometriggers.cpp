#include "outcometriggers.h"

#include <QTest>

#include <memory>

namespace {

template <typename... Args>
void once(sigslot::signal<Args...> &signal, const std::function<void()> &action)
{
    signal.connect([action, done = std::make_shared<bool>(false)](const std::decay_t<Args> &...) {
        if (!std::exchange(*done, true))
            action();
    });
}

ScriptedAnswer readyWithCommands()
{
    return ScriptedAnswer::bytes(R"({"code":0,"data":{"answers":["a"],"agentCmds":[{"cmdType":5}]}})");
}

bool ask(ControllerFixture &f, AiController &controller, bool picture, const ScriptedAnswer &reply)
{
    f.server.expect("POST", picture ? ControllerFixture::picturePath() : ControllerFixture::textPath(), reply);
    const int before = f.server.requestCount();
    if (picture)
        controller.generatePicture(ControllerFixture::pictureInfo());
    else
        controller.generateText(QStringLiteral("asked"));
    return eventually([&] { return f.server.requestCount() > before; });
}

bool askAndPoll(ControllerFixture &f, AiController &controller, bool picture, const ScriptedAnswer &result)
{
    auto &d = AiControllerAccess::of(controller);
    if (!ask(f, controller, picture, ControllerFixture::accepted())
        || !eventually([&] { return !d.strReqId.isEmpty(); }))
        return false;
    f.server.expect("POST", ControllerFixture::resultPath(), result);
    const int before = f.server.requestCount();
    QMetaObject::invokeMethod(&d, "slotOnTimeout", Qt::DirectConnection);
    return eventually([&] { return f.server.requestCount() > before; });
}

bool fetchPicture(ControllerFixture &f, AiController &controller, const ScriptedAnswer &picture)
{
    f.server.expect("GET", "/picture", picture);
    const QString url = f.server.url() + QStringLiteral("/picture");
    return askAndPoll(f, controller, true, ControllerFixture::readyPicture(url));
}

} // namespace

void addEndings()
{
    QTest::addColumn<int>("ending");
    QTest::newRow("text finished") << int(Ending::TextFinished);
    QTest::newRow("picture finished") << int(Ending::PictureFinished);
    QTest::newRow("picture unreachable") << int(Ending::PictureUnreachable);
    QTest::newRow("generation failed") << int(Ending::GenerationFailed);
    QTest::newRow("generation refused") << int(Ending::GenerationRefused);
    QTest::newRow("poll failed") << int(Ending::PollFailed);
    QTest::newRow("poll refused") << int(Ending::PollRefused);
    QTest::newRow("timed out") << int(Ending::TimedOut);
    QTest::newRow("agent commands") << int(Ending::AgentCommands);
    QTest::newRow("download finished") << int(Ending::DownloadFinished);
}

void onEnding(AiController &controller, Ending ending, const std::function<void()> &action)
{
    switch (ending) {
    case Ending::TextFinished:
        return once(controller.sigGenerateTextFinished, action);
    case Ending::PictureFinished:
    case Ending::PictureUnreachable:
        return once(controller.sigGeneratePictureFinished, action);
    case Ending::GenerationFailed:
    case Ending::PollFailed:
        return once(controller.sigRequestFailed, action);
    case Ending::GenerationRefused:
    case Ending::PollRefused:
        return once(controller.sigErrorOccured, action);
    case Ending::TimedOut:
        return once(controller.sigRequestTimeout, action);
    case Ending::AgentCommands:
        return once(controller.sigAgentCmds, action);
    case Ending::DownloadFinished:
        return once(controller.sigDownloadPictureFinished, action);
    }
}

bool bringAbout(Ending ending, ControllerFixture &f, AiController &controller)
{
    switch (ending) {
    case Ending::TextFinished:
        return askAndPoll(f, controller, false, ControllerFixture::readyText());
    case Ending::PictureFinished:
        return fetchPicture(f, controller, ScriptedAnswer::bytes("no picture"));
    case Ending::PictureUnreachable:
        return fetchPicture(f, controller, ScriptedAnswer::status(404));
    case Ending::GenerationFailed:
        return ask(f, controller, false, ScriptedAnswer::status(500));
    case Ending::GenerationRefused:
        return ask(f, controller, false, ControllerFixture::failed(QStringLiteral("why")));
    case Ending::PollFailed:
        return askAndPoll(f, controller, false, ScriptedAnswer::status(500));
    case Ending::PollRefused:
        return askAndPoll(f, controller, false, ControllerFixture::failed(QStringLiteral("why")));
    case Ending::TimedOut:
        controller.setTimeout(0);
        return QMetaObject::invokeMethod(&AiControllerAccess::of(controller), "slotOnTimeout", Qt::DirectConnection);
    case Ending::AgentCommands:
        return askAndPoll(f, controller, false, readyWithCommands());
    case Ending::DownloadFinished:
        f.server.expect("GET", "/picture", ScriptedAnswer::bytes("bytes"));
        controller.downloadPicture(f.server.url() + QStringLiteral("/picture"));
        return true;
    }
    return false;
}
