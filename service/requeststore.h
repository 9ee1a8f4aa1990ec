#pragma once

#include "ageorder.h"
#include "engine.h"

#include <QHash>

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <set>

namespace tavro::assistantservice {

struct StoreLimits {
    /// Requests whose result is not ready yet; one more is refused.
    int unfinished = 64;
    /// Finished requests that are remembered; the oldest goes when one more comes.
    int finished = 10000;
    /// How long a request counts as being worked on at least.
    std::chrono::milliseconds work{0};
    /// How long a finished request and its picture are kept.
    std::chrono::seconds keep{600};
    /// Memory of all kept pictures together; the oldest go first.
    qint64 pictureBytes = qint64(512) * 1024 * 1024;
    /// The same of all kept answers, and of a single one; a longer one is an error.
    qint64 answersBytes = qint64(64) * 1024 * 1024;
    qint64 answerBytes = qint64(4) * 1024 * 1024;
    /// Of the bodies of all unfinished requests; one more is refused, unless it is the only one.
    qint64 unfinishedBytes = qint64(64) * 1024 * 1024;
};

/// What a poll finds. `pictureId` is set for a picture alone.
struct PollResult {
    ServiceError error;
    bool working = false;
    QString answer;
    QString pictureId;
    QString description;
    QJsonArray agentCommands;
};

struct StoredPicture {
    QByteArray bytes;
    QByteArray mediaType;
};

/// Remembers the requests, from being accepted until their time is over. All functions may be called on any thread.
class RequestStore {
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Clock = std::function<TimePoint()>;

    explicit RequestStore(const StoreLimits &limits, Clock clock = &std::chrono::steady_clock::now);

    /// Takes in a request whose body has so many bytes and sets its id, or says why not.
    ServiceError add(bool picture, qint64 bodyBytes, QString &id);
    /// Each gives a request its result. An unknown id is ignored, and so is a second result.
    void finishText(const QString &id, const TextResult &result);
    void finishPicture(const QString &id, const PictureResult &result);
    /// Forgets a request. For one that cannot be given a result.
    void drop(const QString &id);

    /// A finished request may be polled as often as wanted while it is kept.
    PollResult poll(const QString &id, bool picture);
    /// Null where there is none (any more). The store alone is to keep the picture: hold it no longer than a moment, or
    /// weakly.
    std::shared_ptr<const StoredPicture> picture(const QString &pictureId);

    qint64 pictureBytes() const;
    int unfinished();

private:
    struct Entry {
        bool picture = false;
        bool finished = false;
        TimePoint readyAt;
        TimePoint expiresAt;
        qint64 bodyBytes = 0;
        AgeOrder::Number finishNumber = 0;
        AgeOrder::Number pictureNumber = 0;
        PollResult result;
        std::shared_ptr<const StoredPicture> stored;
    };

    bool isReady(const Entry &entry) const;
    bool isExpired(const Entry &entry) const;
    int countUnfinished();
    void finish(const QString &id, Entry &entry);
    void remove(const QString &id);
    void removeExpired();
    void removeBeyondLimits();
    void releasePicture(Entry &entry);
    void releasePicturesBeyond(qint64 bytes);
    void keepPicture(const QString &id, Entry &entry, const PictureResult &result);

    const StoreLimits m_limits;
    const Clock m_clock;
    mutable std::mutex m_mutex;
    QHash<QString, Entry> m_entries;
    QHash<QString, QString> m_requestOfPicture;
    /// Not finished yet.
    int m_working = 0;
    qint64 m_workingBytes = 0;
    /// When those that are finished too early become ready.
    std::multiset<TimePoint> m_held;
    AgeOrder m_finished;
    AgeOrder m_pictures;
    TimePoint m_nextCleaning;
};

} // namespace tavro::assistantservice
