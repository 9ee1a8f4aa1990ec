#pragma once

#include "engine.h"

#include <QHash>
#include <QVector>

#include <chrono>
#include <functional>
#include <mutex>
#include <optional>

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

    /// Takes in a request and sets its id, or says why not.
    ServiceError add(bool picture, QString &id);
    /// Each gives a request its result. An unknown id is ignored.
    void finishText(const QString &id, const TextResult &result);
    void finishPicture(const QString &id, const PictureResult &result);

    /// A finished request may be polled as often as wanted while it is kept.
    PollResult poll(const QString &id, bool picture);
    std::optional<StoredPicture> picture(const QString &pictureId);

    qint64 pictureBytes() const;
    int unfinished();

private:
    struct Entry {
        bool picture = false;
        bool finished = false;
        TimePoint readyAt;
        TimePoint expiresAt;
        quint64 finishNumber = 0;
        PollResult result;
        StoredPicture stored;
    };

    bool isReady(const Entry &entry) const;
    bool isExpired(const Entry &entry) const;
    int countUnfinished();
    void finish(Entry &entry);
    void remove(const QString &id);
    void removeExpired();
    void removeBeyondCount();
    void releasePicture(Entry &entry);
    void releasePicturesBeyond(qint64 bytes);
    void keepPicture(const QString &id, Entry &entry, const PictureResult &result);
    QString oldestFinished(bool withPicture) const;

    const StoreLimits m_limits;
    const Clock m_clock;
    mutable std::mutex m_mutex;
    QHash<QString, Entry> m_entries;
    QHash<QString, QString> m_requestOfPicture;
    QVector<QString> m_unfinished;
    quint64 m_finishCount = 0;
    qint64 m_pictureBytes = 0;
    TimePoint m_nextCleaning;
};

} // namespace tavro::assistantservice
