#include "lifecyclescene.h"

#include "picturebytes.h"

LifecycleScene::LifecycleScene()
    : controller(std::make_unique<AiController>())
    , heard(*controller)
{
    controller->createTimer();
    d().pQueryTimer->blockSignals(true);
    controller->setDomain(server.url());
}

PicturedGeneratedPack LifecycleScene::pack() const
{
    PicturedGeneratedPack pack;
    pack.content = "a mountain";
    pack.source.url = pictureUrl().toStdString();
    return pack;
}

QNetworkReply *LifecycleScene::openReply() const
{
    for (const auto *manager : {&d().requestManager, &d().downloadManager}) {
        if (auto *const reply = (*manager)->findChild<QNetworkReply *>())
            return reply;
    }
    return nullptr;
}

bool LifecycleScene::isReading() const
{
    return eventually([this] {
        const auto *const reply = openReply();
        return reply && reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
    });
}

bool LifecycleScene::repliesDone() const
{
    return eventually([this] { return !openReply(); });
}

bool LifecycleScene::askText(const ScriptedAnswer &reply)
{
    server.expect("POST", ControllerFixture::textPath(), reply);
    controller->generateText(QStringLiteral("question"));
    return repliesDone();
}

void LifecycleScene::tick() const
{
    QMetaObject::invokeMethod(&d(), "slotOnTimeout", Qt::QueuedConnection);
}

bool LifecycleScene::poll(const ScriptedAnswer &reply)
{
    server.expect("POST", ControllerFixture::resultPath(), reply);
    tick();
    return eventually([this] { return server.requestCountTo(ControllerFixture::resultPath()) == 1; });
}

bool LifecycleScene::isOver()
{
    server.releaseAll();
    bool isDecoded = true;
    if (controller) {
        // A picture without bytes takes its turn behind those that are being decoded.
        isDecoded = false;
        d().decoder.decode({}, [&](const QImage &) { isDecoded = true; });
    }
    const bool isQuiet = eventually([&] { return isDecoded && server.connectionsOpen() == 0; });
    settle();
    return isQuiet;
}
