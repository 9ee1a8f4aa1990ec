#pragma once

#include <QByteArray>
#include <QTcpServer>
#include <QThread>

/// An AI service that answers at once, in a thread of its own: each request by its path, one request per connection.
class AnsweringServer {
public:
    /// Where there is a @p picture, its address is the answer to what is asked.
    explicit AnsweringServer(const QByteArray &picture = {});
    ~AnsweringServer();

    AnsweringServer(const AnsweringServer &) = delete;
    AnsweringServer &operator=(const AnsweringServer &) = delete;

    /// "http://127.0.0.1:PORT"
    QString address() const;

private:
    void serve();
    QByteArray reply(const QByteArray &request) const;

    const QByteArray m_picture;
    QThread m_thread;
    QTcpServer m_server;
};
