#include "controllerfixture.h"

#include <QJsonArray>

namespace {

void append(QStringList &parts, const char *name, int count)
{
    if (count > 0)
        parts.append(QStringLiteral("%1:%2").arg(QLatin1String(name)).arg(count));
}

} // namespace

ControllerSignals::ControllerSignals(AiController &controller)
    : downloadPictureFinished(controller.sigDownloadPictureFinished)
    , agentCmds(controller.sigAgentCmds)
    , aiNotify(controller.sigAiNotify)
    , themeChanged(controller.sigThemeChanged)
    , languageChanged(controller.sigLanguageChanged)
    , resetMainWidget(controller.sigResetMainWidget)
    , generateTextFinished(controller.sigGenerateTextFinished)
    , generatePictureFinished(controller.sigGeneratePictureFinished)
    , requestFailed(controller.sigRequestFailed)
    , errorOccured(controller.sigErrorOccured)
    , chatItemEvent(controller.sigChatItemEvent)
    , requestTimeout(controller.sigRequestTimeout)
    , deleteGeneratingItem(controller.sigDeleteGeneratingItem)
    , notify(controller.sigNotify)
{ }

QString ControllerSignals::summary() const
{
    QStringList parts;
    append(parts, "downloadPictureFinished", downloadPictureFinished.count());
    append(parts, "agentCmds", agentCmds.count());
    append(parts, "aiNotify", aiNotify.count());
    append(parts, "themeChanged", themeChanged.count());
    append(parts, "languageChanged", languageChanged.count());
    append(parts, "resetMainWidget", resetMainWidget.count());
    append(parts, "generateTextFinished", generateTextFinished.count());
    append(parts, "generatePictureFinished", generatePictureFinished.count());
    append(parts, "requestFailed", requestFailed.count());
    append(parts, "errorOccured", errorOccured.count());
    append(parts, "chatItemEvent", chatItemEvent.count());
    append(parts, "requestTimeout", requestTimeout.count());
    append(parts, "deleteGeneratingItem", deleteGeneratingItem.count());
    append(parts, "notify", notify.count());
    return parts.join(QLatin1Char(' '));
}

ScriptedAnswer ControllerFixture::accepted(const QString &reqId)
{
    return ready({{QStringLiteral("reqId"), reqId}});
}

ScriptedAnswer ControllerFixture::ready(const QJsonObject &data)
{
    return ScriptedAnswer::json({{QStringLiteral("code"), 0}, {QStringLiteral("data"), data}});
}

ScriptedAnswer ControllerFixture::readyText(const QString &answer)
{
    return ready({{QStringLiteral("answers"), QJsonArray{answer}}});
}

ScriptedAnswer ControllerFixture::readyPicture(const QString &url, const QString &description)
{
    return ready({{QStringLiteral("answers"), QJsonArray{url}}, {QStringLiteral("description"), description}});
}

ScriptedAnswer ControllerFixture::failed(const QString &message, int code)
{
    return ScriptedAnswer::json({{QStringLiteral("code"), code}, {QStringLiteral("message"), message}});
}

ControllerFixture::ControllerFixture()
    : d(AiControllerAccess::of(controller))
    , signalled(controller)
{
    controller.createTimer();
    d.pQueryTimer->blockSignals(true);
    controller.setDomain(server.url());
}

void ControllerFixture::useRoles(FakeRuntime::Roles roles)
{
    runtime.setRoles({});
    controller.setZVRuntime(&runtime);
    runtime.setRoles(roles);
    d.proxyClient = &clientPort;
    d.proxyServer = &serverPort;
}

void ControllerFixture::tick()
{
    QMetaObject::invokeMethod(&d, "slotOnTimeout", Qt::DirectConnection);
}

void ControllerFixture::ticks(int count)
{
    for (int done = 0; done < count; ++done)
        tick();
}

int ControllerFixture::openReplies() const
{
    int open = 0;
    for (const auto *manager : {&d.requestManager, &d.downloadManager}) {
        if (*manager)
            open += (*manager)->findChildren<QNetworkReply *>().size();
    }
    return open;
}

bool ControllerFixture::repliesDone()
{
    return eventually([this] { return openReplies() == 0; });
}

bool ControllerFixture::askText(const QString &question, const ScriptedAnswer &reply)
{
    server.expect("POST", textPath(), reply);
    controller.generateText(question);
    return repliesDone();
}

bool ControllerFixture::askPicture(const PictureGenerateInfo &info, const ScriptedAnswer &reply)
{
    server.expect("POST", picturePath(), reply);
    controller.generatePicture(info);
    return repliesDone();
}

bool ControllerFixture::poll(const ScriptedAnswer &reply)
{
    server.expect("POST", resultPath(), reply);
    tick();
    return repliesDone();
}

PictureGenerateInfo ControllerFixture::pictureInfo()
{
    PictureGenerateInfo info;
    info.content = "a mountain";
    info.style = "oil";
    info.width = 640;
    return info;
}

QStringList ControllerFixture::leftovers()
{
    settle();
    QStringList left = server.leftovers() + log.complaints();
    if (openReplies() > 0)
        left.append(QStringLiteral("replies not deleted: %1").arg(openReplies()));
    return left;
}
