#include "requeststore.h"

#include <QUuid>

#include <algorithm>

namespace tavro::assistantservice {

namespace {

constexpr std::chrono::seconds cleaningInterval{1};

QString newId()
{
    return QUuid::createUuid().toString(QUuid::Id128);
}

ServiceError unknownRequest()
{
    return {ErrorCode::NotFound,
            QStringLiteral("This request is not known here (any more). Please ask the question again.")};
}

} // namespace

RequestStore::RequestStore(const StoreLimits &limits, Clock clock)
    : m_limits(limits)
    , m_clock(std::move(clock))
    , m_nextCleaning(m_clock())
{ }

ServiceError RequestStore::add(bool picture, QString &id)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    removeExpired();
    if (countUnfinished() >= m_limits.unfinished) {
        return {ErrorCode::Busy,
                QStringLiteral("The assistant service is busy with %1 other requests. Please try again in a moment.")
                    .arg(m_limits.unfinished)};
    }
    id = newId();
    Entry entry;
    entry.picture = picture;
    entry.readyAt = m_clock() + m_limits.work;
    m_entries.insert(id, entry);
    m_unfinished.append(id);
    return {};
}

void RequestStore::finishText(const QString &id, const TextResult &result)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto entry = m_entries.find(id);
    if (entry == m_entries.end()) {
        return;
    }
    entry->result.error = result.error;
    entry->result.answer = result.answer;
    entry->result.agentCommands = result.agentCommands;
    finish(*entry);
}

void RequestStore::finishPicture(const QString &id, const PictureResult &result)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto entry = m_entries.find(id);
    if (entry == m_entries.end()) {
        return;
    }
    entry->result.error = result.error;
    entry->result.description = result.description;
    entry->result.agentCommands = result.agentCommands;
    if (!result.error) {
        keepPicture(id, *entry, result);
    }
    finish(*entry);
}

void RequestStore::keepPicture(const QString &id, Entry &entry, const PictureResult &result)
{
    const qint64 size = result.bytes.size();
    if (size > m_limits.pictureBytes) {
        entry.result.error = {ErrorCode::TooLarge,
                              QStringLiteral("The picture takes more memory than this service may keep. "
                                             "Please ask for a smaller one.")};
        return;
    }
    releasePicturesBeyond(m_limits.pictureBytes - size);
    entry.result.pictureId = newId();
    entry.stored = {result.bytes, result.mediaType};
    m_pictureBytes += size;
    m_requestOfPicture.insert(entry.result.pictureId, id);
}

void RequestStore::finish(Entry &entry)
{
    entry.finished = true;
    entry.finishNumber = ++m_finishCount;
    entry.expiresAt = std::max(entry.readyAt, m_clock()) + m_limits.keep;
    removeBeyondCount();
}

PollResult RequestStore::poll(const QString &id, bool picture)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    removeExpired();
    const auto entry = m_entries.constFind(id);
    PollResult result;
    if (entry == m_entries.constEnd() || isExpired(*entry)) {
        result.error = unknownRequest();
    } else if (entry->picture != picture) {
        result.error = {ErrorCode::WrongKind,
                        entry->picture ? QStringLiteral("This request asked for a picture; poll it with \"type\" true.")
                                       : QStringLiteral("This request asked for a text; poll it with \"type\" false.")};
    } else if (!isReady(*entry)) {
        result.working = true;
    } else {
        result = entry->result;
    }
    return result;
}

std::optional<StoredPicture> RequestStore::picture(const QString &pictureId)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    removeExpired();
    const auto entry = m_entries.constFind(m_requestOfPicture.value(pictureId));
    if (entry == m_entries.constEnd() || isExpired(*entry)) {
        return std::nullopt;
    }
    return entry->stored;
}

qint64 RequestStore::pictureBytes() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_pictureBytes;
}

int RequestStore::unfinished()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return countUnfinished();
}

bool RequestStore::isReady(const Entry &entry) const
{
    return entry.finished && m_clock() >= entry.readyAt;
}

bool RequestStore::isExpired(const Entry &entry) const
{
    return entry.finished && m_clock() >= entry.expiresAt;
}

int RequestStore::countUnfinished()
{
    const auto done = [this](const QString &id) {
        const auto entry = m_entries.constFind(id);
        return entry == m_entries.constEnd() || isReady(*entry);
    };
    m_unfinished.erase(std::remove_if(m_unfinished.begin(), m_unfinished.end(), done), m_unfinished.end());
    return m_unfinished.size();
}

void RequestStore::remove(const QString &id)
{
    releasePicture(m_entries[id]);
    m_entries.remove(id);
}

// Looking through all entries at every call would cost more than the calls themselves.
void RequestStore::removeExpired()
{
    const TimePoint now = m_clock();
    if (now < m_nextCleaning) {
        return;
    }
    m_nextCleaning = now + cleaningInterval;
    const QList<QString> ids = m_entries.keys();
    for (const QString &id : ids) {
        if (isExpired(m_entries[id])) {
            remove(id);
        }
    }
}

void RequestStore::removeBeyondCount()
{
    while (m_entries.size() - m_unfinished.size() > m_limits.finished) {
        const QString oldest = oldestFinished(false);
        if (oldest.isEmpty()) {
            return;
        }
        remove(oldest);
    }
}

void RequestStore::releasePicture(Entry &entry)
{
    m_requestOfPicture.remove(entry.result.pictureId);
    m_pictureBytes -= entry.stored.bytes.size();
    entry.stored = {};
}

void RequestStore::releasePicturesBeyond(qint64 bytes)
{
    while (m_pictureBytes > bytes) {
        Entry &entry = m_entries[oldestFinished(true)];
        releasePicture(entry);
        entry.result.error = {ErrorCode::Expired,
                              QStringLiteral("The picture had to make room for newer ones. Please ask for it again.")};
    }
}

QString RequestStore::oldestFinished(bool withPicture) const
{
    QString oldest;
    quint64 number = m_finishCount + 1;
    for (auto entry = m_entries.constBegin(); entry != m_entries.constEnd(); ++entry) {
        const bool wanted = entry->finished && (!withPicture || !entry->stored.bytes.isEmpty());
        if (wanted && entry->finishNumber < number) {
            number = entry->finishNumber;
            oldest = entry.key();
        }
    }
    return oldest;
}

} // namespace tavro::assistantservice
