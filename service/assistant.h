#pragma once

#include "bodylimits.h"
#include "replies.h"
#include "workerpool.h"

#include <memory>

namespace tavro::assistantservice {

/// What the HTTP head of a request tells about its sender.
struct Caller {
    QByteArray token;
    QByteArray host;
};

struct AssistantSettings {
    /// Empty: every caller is let in.
    QByteArray token;
    /// Start of the pictures' addresses, without a slash at the end. Empty: made from the Host header.
    QString publicUrl;
    BodyLimits bodyLimits;
    StoreLimits storeLimits;
    int workers = 2;
};

/// The endpoints, free of HTTP: bytes in, a reply out. All functions may be called on any thread. A request for which
/// the memory does not suffice is answered with an error.
class Assistant {
public:
    Assistant(AssistantSettings settings, std::unique_ptr<Engine> engine);

    Reply generateText(const Caller &caller, const QByteArray &body);
    Reply generatePicture(const Caller &caller, const QByteArray &body);
    Reply pollResult(const Caller &caller, const QByteArray &body);
    /// Pictures are fetched without a token; their ids cannot be guessed.
    Reply picture(const QString &pictureId);
    Reply health();

    /// Start of the pictures' addresses where a request has no usable Host header. To be set before requests come.
    void setOwnUrl(const QString &url) { m_ownUrl = url; }

    /// Why the caller is not let in; no error where he is.
    ServiceError checkToken(const Caller &caller) const;

    /// Gives up what is being worked on; later requests are refused.
    void stop();

private:
    /// A task that gives a request its result.
    using Work = std::function<void(const std::atomic<bool> &cancelled)>;

    using Endpoint = Reply (Assistant::*)(const Caller &, const QByteArray &);

    Reply guarded(Endpoint endpoint, const Caller &caller, const QByteArray &body);
    Reply readTextQuestion(const Caller &caller, const QByteArray &body);
    Reply readPictureWish(const Caller &caller, const QByteArray &body);
    Reply readPoll(const Caller &caller, const QByteArray &body);
    ServiceError admit(bool picture, const QByteArray &body, QString &requestId);
    void start(const QString &requestId, const Work &work);
    QString pictureAddress(const Caller &caller, const QString &pictureId) const;

    const AssistantSettings m_settings;
    const std::unique_ptr<Engine> m_engine;
    const Reply m_outOfMemory;
    QString m_ownUrl;
    RequestStore m_store;
    std::atomic<bool> m_stopping{false};
    WorkerPool m_workers;
};

} // namespace tavro::assistantservice
