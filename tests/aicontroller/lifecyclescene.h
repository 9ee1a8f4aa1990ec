#pragma once

#include "cachefolder.h"
#include "controllerfixture.h"

#include <QByteArray>
#include <QNetworkReply>

#include <functional>
#include <memory>
#include <vector>

/// A controller that a test may destroy or clear at any time, and the service that it talks to.
class LifecycleScene {
public:
    static QByteArray picturePath() { return QByteArrayLiteral("/pictures/1"); }

    LifecycleScene();

    ControllerPrivate &d() const { return AiControllerAccess::of(*controller); }
    QString pictureUrl() const { return server.url() + QString::fromLatin1(picturePath()); }
    PicturedGeneratedPack pack() const;

    /// A reply that is on its way; null where there is none.
    QNetworkReply *openReply() const;
    bool isReading() const; ///< a part of a body has come
    bool repliesDone() const;

    bool askText(const ScriptedAnswer &reply = ControllerFixture::accepted());
    void tick() const;
    bool poll(const ScriptedAnswer &reply);

    /// Lets every answer go and waits until all that it could have set off is over. The controller is destroyed or
    /// cleared.
    bool isOver();

    LogCatcher log;
    CacheFolder cache;
    ScriptedServer server;
    std::unique_ptr<AiController> controller;
    ControllerSignals heard;
};

/// A state of the controller outside of its slots.
struct Stage {
    const char *name;
    std::function<bool(LifecycleScene &)> reach;
};

/// A signal that something sets off: the action is carried out in its slot.
struct Moment {
    const char *name;
    std::function<void(AiController &, const std::function<void()> &)> connect;
    std::function<bool(LifecycleScene &)> setOff;
    const char *expectedLog = nullptr; ///< the part of an error line
};

const std::vector<Stage> &stages();
const std::vector<Moment> &moments();

/// Those of the list whose name is @p name.
template <typename Entry>
const Entry &named(const std::vector<Entry> &entries, const QByteArray &name)
{
    for (const Entry &entry : entries) {
        if (name == entry.name)
            return entry;
    }
    qFatal("no entry of this name");
}
