#include "requeststore.h"

#include <QJsonDocument>
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

ServiceError busy(int requests)
{
    return {ErrorCode::Busy,
            QStringLiteral("The assistant service is busy with %1 other requests. Please try again in a moment.")
                .arg(requests)};
}

qint64 bytesOf(const QString &text)
{
    return qint64(text.size()) * qint64(sizeof(QChar));
}

// Commands take several times the memory of their text.
qint64 bytesOf(const PollResult &result)
{
    constexpr qint64 inMemory = 8;
    return bytesOf(result.answer) + bytesOf(result.description)
        + inMemory * QJsonDocument(result.agentCommands).toJson(QJsonDocument::Compact).size();
}

} // namespace

RequestStore::RequestStore(const StoreLimits &limits, Clock clock)
    : m_limits(limits)
    , m_clock(std::move(clock))
    , m_nextCleaning(m_clock())
{ }

ServiceError RequestStore::add(bool picture, qint64 bodyBytes, QString &id)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    removeExpired();
    const int unfinished = countUnfinished();
    const bool isTooMuch = m_working > 0 && m_workingBytes + bodyBytes > m_limits.unfinishedBytes;
    if (unfinished >= m_limits.unfinished || isTooMuch) {
        return busy(unfinished);
    }
    id = newId();
    Entry entry;
    entry.picture = picture;
    entry.readyAt = m_clock() + m_limits.work;
    entry.bodyBytes = bodyBytes;
    m_entries.insert(id, entry);
    ++m_working;
    m_workingBytes += bodyBytes;
    return {};
}

void RequestStore::finishText(const QString &id, const TextResult &result)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto entry = m_entries.find(id);
    if (entry == m_entries.end() || entry->finished) {
        return;
    }
    entry->result.error = result.error;
    entry->result.answer = result.answer;
    entry->result.agentCommands = result.agentCommands;
    finish(id, *entry);
}

void RequestStore::finishPicture(const QString &id, const PictureResult &result)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto entry = m_entries.find(id);
    if (entry == m_entries.end() || entry->finished) {
        return;
    }
    entry->result.error = result.error;
    entry->result.description = result.description;
    entry->result.agentCommands = result.agentCommands;
    if (!result.error) {
        keepPicture(id, *entry, result);
    }
    finish(id, *entry);
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
    entry.stored = std::make_shared<StoredPicture>(StoredPicture{result.bytes, result.mediaType});
    entry.pictureNumber = m_pictures.add(id, size);
    m_requestOfPicture.insert(entry.result.pictureId, id);
}

// What may fail for want of memory comes first, so that drop() finds an unfinished request.
void RequestStore::finish(const QString &id, Entry &entry)
{
    if (bytesOf(entry.result) > m_limits.answerBytes) {
        releasePicture(entry);
        entry.result = {};
        entry.result.error = {ErrorCode::TooLarge,
                              QStringLiteral("The answer is longer than this service keeps. Please ask for less.")};
    }
    entry.finishNumber = m_finished.add(id, bytesOf(entry.result));
    if (entry.readyAt > m_clock()) {
        m_held.insert(entry.readyAt);
    }
    entry.finished = true;
    entry.expiresAt = std::max(entry.readyAt, m_clock()) + m_limits.keep;
    --m_working;
    m_workingBytes -= entry.bodyBytes;
    removeBeyondLimits();
}

void RequestStore::drop(const QString &id)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_entries.contains(id)) {
        remove(id);
    }
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

std::shared_ptr<const StoredPicture> RequestStore::picture(const QString &pictureId)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    removeExpired();
    const auto entry = m_entries.constFind(m_requestOfPicture.value(pictureId));
    if (entry == m_entries.constEnd() || isExpired(*entry)) {
        return nullptr;
    }
    return entry->stored;
}

qint64 RequestStore::pictureBytes() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_pictures.bytes();
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
    m_held.erase(m_held.begin(), m_held.upper_bound(m_clock()));
    return m_working + static_cast<int>(m_held.size());
}

void RequestStore::remove(const QString &id)
{
    const auto entry = m_entries.find(id);
    releasePicture(*entry);
    m_finished.remove(entry->finishNumber);
    if (!entry->finished) {
        --m_working;
        m_workingBytes -= entry->bodyBytes;
    } else if (const auto held = m_held.find(entry->readyAt); held != m_held.end()) {
        m_held.erase(held);
    }
    m_entries.erase(entry);
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

void RequestStore::removeBeyondLimits()
{
    const auto isBeyond = [this] {
        return m_entries.size() - countUnfinished() > m_limits.finished || m_finished.bytes() > m_limits.answersBytes;
    };
    while (isBeyond() && !m_finished.isEmpty()) {
        remove(QString(m_finished.oldest()));
    }
}

void RequestStore::releasePicture(Entry &entry)
{
    m_requestOfPicture.remove(entry.result.pictureId);
    m_pictures.remove(entry.pictureNumber);
    entry.stored.reset();
}

void RequestStore::releasePicturesBeyond(qint64 bytes)
{
    while (m_pictures.bytes() > bytes) {
        Entry &entry = m_entries[m_pictures.oldest()];
        releasePicture(entry);
        entry.result.error = {ErrorCode::Expired,
                              QStringLiteral("The picture had to make room for newer ones. Please ask for it again.")};
    }
}

} // namespace tavro::assistantservice
