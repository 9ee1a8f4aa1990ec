#pragma once

#include <QJsonObject>
#include <QTcpSocket>

/// A client that sends exactly the bytes it is given.
class RawClient {
public:
    explicit RawClient(int port);

    void send(const QByteArray &bytes);
    /// The end of what is sent goes out together with these bytes; replies are still read.
    void sendAndHangUp(const QByteArray &bytes);
    bool isOpen() const { return m_socket.state() == QAbstractSocket::ConnectedState; }
    /// One whole reply, head and body. Empty where the connection ends without one.
    QByteArray readReply();
    /// Waits for bytes and leaves them where they are.
    bool waitForBytes();
    /// All bytes until the connection ends.
    QByteArray readAll();
    /// Everything until the service closes the connection; false where it does not.
    bool waitForClose();

private:
    QTcpSocket m_socket;
};

/// A POST with a JSON body as bytes on the wire.
QByteArray postBytes(const QByteArray &path, const QByteArray &body, const QByteArray &extraHeaders = {});
QByteArray getBytes(const QByteArray &path);

int statusOf(const QByteArray &reply);
QByteArray bodyOf(const QByteArray &reply);
QJsonObject jsonOf(const QByteArray &reply);
