#include "lifecyclescene.h"
#include "picturebytes.h"

#include <QJsonArray>

namespace {

bool isHeld(const LifecycleScene &scene)
{
    return eventually([&] { return scene.server.heldCount() > 0; });
}

void post(LifecycleScene &scene, const ScriptedAnswer &reply)
{
    scene.server.expect("POST", ControllerFixture::textPath(), reply);
    scene.controller->generateText(QStringLiteral("question"));
}

bool pollWith(LifecycleScene &scene, const ScriptedAnswer &reply)
{
    return scene.askText() && scene.poll(reply);
}

void fetch(LifecycleScene &scene, const ScriptedAnswer &reply)
{
    scene.server.expect("GET", LifecycleScene::picturePath(), reply);
    scene.controller->queryImageData(scene.pack());
}

void download(LifecycleScene &scene, const ScriptedAnswer &reply)
{
    scene.server.expect("GET", LifecycleScene::picturePath(), reply);
    scene.controller->downloadPicture(scene.pictureUrl());
}

ScriptedAnswer picture(QSize size = {4, 4})
{
    return ScriptedAnswer::bytes(picturebytes::encoded("png", size), "image/png");
}

// The bytes are there, and nothing was delivered since: the picture is still to come.
bool decode(LifecycleScene &scene)
{
    fetch(scene, ScriptedAnswer::bytes(picturebytes::blackAndWhitePng({7680, 4320}), "image/png").held());
    if (!isHeld(scene))
        return false;
    scene.server.releaseNext();
    return eventually([&] { return scene.d().pendingImagePack.source.url.empty(); });
}

// A reply that went before it was looked at, whose failure takes its turn behind another one's picture.
bool failBehindAnother(LifecycleScene &scene)
{
    scene.d().decoder.decode(QByteArrayLiteral("no picture"), [](const QImage &) {});
    scene.d().slotQueryImageDataFinished();
    return true;
}

bool everything(LifecycleScene &scene)
{
    if (!pollWith(scene, ControllerFixture::readyText().heldAfter(5)))
        return false;
    scene.server.expect("POST", ControllerFixture::picturePath(), ControllerFixture::accepted().held());
    scene.controller->generatePicture(ControllerFixture::pictureInfo());
    fetch(scene, picture().held());
    download(scene, picture().held());
    post(scene, ControllerFixture::accepted().held());
    return eventually([&] { return scene.server.heldCount() == 5; });
}

ScriptedAnswer textAndCommands()
{
    const QJsonObject command{{QStringLiteral("cmdType"), 4}};
    return ControllerFixture::ready({{QStringLiteral("answers"), QJsonArray{QStringLiteral("hello")}},
                                     {QStringLiteral("agentCmds"), QJsonArray{command}}});
}

bool timeOut(LifecycleScene &scene)
{
    scene.controller->setTimeout(0);
    scene.controller->setSingleTickTime(0);
    scene.d().pQueryTimer->blockSignals(false);
    scene.controller->startTimer();
    return true;
}

bool completeCommands(LifecycleScene &scene)
{
    scene.server.expect("GET", LifecycleScene::picturePath(), picture());
    scene.d().strLastPictureUrl = scene.pictureUrl();
    scene.d().analyseAgentCmds({QJsonObject{{QStringLiteral("cmdType"), 0}}});
    return true;
}

/// Moment::connect for the signal @p member.
template <typename Signal>
auto inSlotOf(Signal member)
{
    return [member](AiController &controller, const std::function<void()> &action) {
        (controller.*member).connect([action](const auto &...) { action(); });
    };
}

auto inSlotOfCommands()
{
    return [](AiController &controller, const std::function<void()> &action) {
        controller.sigAgentCmds.connect([action](std::vector<AgentCmd> &) { action(); });
    };
}

template <typename Deed>
auto done(Deed deed)
{
    return [deed](LifecycleScene &scene) {
        deed(scene);
        return true;
    };
}

} // namespace

const std::vector<Stage> &stages()
{
    using Scene = LifecycleScene;
    static const std::vector<Stage> all{
        {"idle", [](Scene &) { return true; }},
        {"timer running",
         [](Scene &scene) {
             scene.controller->startTimer();
             return true;
         }},
        {"post in flight",
         [](Scene &scene) {
             post(scene, ControllerFixture::accepted().held());
             return isHeld(scene);
         }},
        {"post just made",
         [](Scene &scene) {
             post(scene, ControllerFixture::accepted());
             return true;
         }},
        {"reply being received",
         [](Scene &scene) {
             post(scene, ControllerFixture::accepted().heldAfter(5));
             return scene.isReading();
         }},
        {"polling", [](Scene &scene) { return scene.askText(); }},
        {"poll in flight",
         [](Scene &scene) { return pollWith(scene, ControllerFixture::readyText().held()) && isHeld(scene); }},
        {"poll reply being received",
         [](Scene &scene) {
             return pollWith(scene, ControllerFixture::readyText().heldAfter(5)) && scene.isReading();
         }},
        {"picture fetch",
         [](Scene &scene) {
             fetch(scene, picture().held());
             return isHeld(scene);
         }},
        {"picture being received",
         [](Scene &scene) {
             fetch(scene, picture().heldAfter(20));
             return scene.isReading();
         }},
        {"picture being decoded", decode},
        {"failed picture behind another", failBehindAnother},
        {"picture without an address",
         [](Scene &scene) {
             scene.controller->queryImageData({});
             return true;
         }},
        {"download",
         [](Scene &scene) {
             download(scene, picture().held());
             return isHeld(scene);
         }},
        {"download being received",
         [](Scene &scene) {
             download(scene, picture().heldAfter(20));
             return scene.isReading();
         }},
        {"everything at once", everything},
    };
    return all;
}

const std::vector<Moment> &moments()
{
    using Scene = LifecycleScene;
    using Fixture = ControllerFixture;
    const auto failedPost = [](Scene &scene) { post(scene, ScriptedAnswer::status(500)); };
    const auto refusedPost = [](Scene &scene) { post(scene, Fixture::failed(QStringLiteral("full"))); };
    const auto failedPoll = [](Scene &scene) { return pollWith(scene, ScriptedAnswer::status(500)); };
    const auto refusedPoll = [](Scene &scene) { return pollWith(scene, Fixture::failed(QStringLiteral("full"))); };
    const auto answered = [](Scene &scene) { return pollWith(scene, textAndCommands()); };
    static const std::vector<Moment> all{
        {"text answer", inSlotOf(&AiController::sigGenerateTextFinished), answered},
        {"failed post", inSlotOf(&AiController::sigRequestFailed), done(failedPost)},
        {"failed poll", inSlotOf(&AiController::sigRequestFailed), failedPoll},
        {"refused post", inSlotOf(&AiController::sigErrorOccured), done(refusedPost)},
        {"refused poll", inSlotOf(&AiController::sigErrorOccured), refusedPoll},
        {"time-out", inSlotOf(&AiController::sigRequestTimeout), timeOut},
        {"picture", inSlotOf(&AiController::sigGeneratePictureFinished),
         done([](Scene &scene) { fetch(scene, picture()); })},
        {"picture without bytes", inSlotOf(&AiController::sigGeneratePictureFinished),
         done([](Scene &scene) { fetch(scene, ScriptedAnswer::status(200)); })},
        {"picture not found", inSlotOf(&AiController::sigGeneratePictureFinished),
         done([](Scene &scene) { fetch(scene, ScriptedAnswer::status(404)); }), "slotQueryImageDataFinished_"},
        {"download", inSlotOf(&AiController::sigDownloadPictureFinished),
         done([](Scene &scene) { download(scene, picture()); })},
        {"commands", inSlotOfCommands(), answered},
        {"commands after a download", inSlotOfCommands(), completeCommands},
        {"reset", inSlotOf(&AiController::sigResetMainWidget),
         done([](Scene &scene) { scene.controller->clearHeaderInfo(); })},
        {"placeholder", inSlotOf(&AiController::sigDeleteGeneratingItem),
         done([](Scene &scene) { scene.controller->deleteGeneratingItem(); })},
    };
    return all;
}
