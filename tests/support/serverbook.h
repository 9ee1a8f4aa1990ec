#pragma once

#include "support/httprequest.h"
#include "support/scriptedanswer.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QStringList>
#include <QVector>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace tavro::testsupport {

/// What the scripted server is to answer and what it has seen. Shared by the test's threads and the server's own.
class ServerBook {
public:
    void expect(const QByteArray &method, const QByteArray &target, const ScriptedAnswer &answer);
    void always(const QByteArray &method, const QByteArray &target, const ScriptedAnswer &answer);

    /// Notes the request and gives the answer that its turn in the script holds.
    ScriptedAnswer answerTo(const HttpRequest &request);

    int openConnection(); ///< its number, from 1
    void closeConnection();
    void changeHeld(int difference);
    void noteTaken(qint64 bytes);
    void complain(const QString &what);

    QVector<HttpRequest> requests() const;
    int requestCount() const;
    bool waitForRequests(int count, std::chrono::milliseconds limit) const;
    int connectionsOpened() const;
    int connectionsOpen() const;
    int heldCount() const;
    qint64 bytesTaken() const;

    /// Everything that keeps the script from being "nothing left": answers not asked for, requests not announced,
    /// answers still held, bytes that were no request.
    QStringList leftovers() const;

private:
    template <typename Read>
    auto locked(Read read) const;
    void note(const HttpRequest &request);

    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    QHash<QByteArray, QList<ScriptedAnswer>> m_steps;
    QHash<QByteArray, ScriptedAnswer> m_defaults;
    // No shared Qt lists here: what a reader still holds would be written to behind its back, as ThreadSanitizer sees
    // it.
    std::vector<HttpRequest> m_requests;
    std::vector<QString> m_complaints;
    int m_opened = 0;
    int m_open = 0;
    int m_held = 0;
    qint64 m_taken = 0;
};

} // namespace tavro::testsupport
