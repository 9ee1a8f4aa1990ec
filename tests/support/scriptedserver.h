#pragma once

#include "support/scriptedanswer.h"
#include "support/serverbook.h"

#include <QString>
#include <QThread>

#include <chrono>
#include <memory>

namespace tavro::testsupport {

class ServerListener;

/// An HTTP server on a free loopback port that answers by a script and notes every byte that it is sent.
///
/// It has a thread of its own, so that it answers also while the test's thread blocks. All operations may be called
/// from any thread but the server's. Each method and target has its own row of answers, taken in turn; when the row is
/// used up, the default is given; where there is none within five seconds, the request counts as a leftover and gets a
/// 404.
class ScriptedServer {
public:
    ScriptedServer(); ///< listens at once
    ~ScriptedServer();

    QString url() const; ///< "http://127.0.0.1:<port>"
    quint16 port() const { return m_port; }

    void expect(const QByteArray &method, const QByteArray &target, const ScriptedAnswer &answer);
    void always(const QByteArray &method, const QByteArray &target, const ScriptedAnswer &answer);

    QVector<HttpRequest> requests() const { return m_book.requests(); }
    QVector<HttpRequest> requestsTo(const QByteArray &target) const;
    int requestCount() const { return m_book.requestCount(); }
    int requestCountTo(const QByteArray &target) const { return requestsTo(target).size(); }
    int connectionsOpened() const { return m_book.connectionsOpened(); } ///< since the start
    int connectionsOpen() const { return m_book.connectionsOpen(); } ///< now

    /// Blocks the calling thread; for threads without an event loop. Elsewhere: eventually().
    bool waitForRequests(int count, std::chrono::milliseconds limit) const
    {
        return m_book.waitForRequests(count, limit);
    }

    /// Bytes of answers that left for the clients, what still waits in the system's own buffers included.
    qint64 bytesTaken() const { return m_book.bytesTaken(); }

    int heldCount() const { return m_book.heldCount(); }
    bool releaseNext(); ///< lets the answer go that was held first; false where none is held
    bool release(const QByteArray &target); ///< the same among the answers to requests for @p target
    void releaseAll();

    /// Closes the connections on which no answer is under way, as a server does after its keep-alive time.
    void closeIdleConnections();

    void stopListening(); ///< like a service that died: connections are refused, those that are open are cut
    bool startListening(); ///< on the same port again

    /// What keeps the script from being played to its end; empty when nothing is left.
    QStringList leftovers() const { return m_book.leftovers(); }

private:
    ServerBook m_book;
    QThread m_thread;
    std::unique_ptr<ServerListener> m_listener; // lives in m_thread
    quint16 m_port = 0;
};

} // namespace tavro::testsupport
