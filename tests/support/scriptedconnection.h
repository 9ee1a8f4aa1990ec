#pragma once

#include "support/httprequestreader.h"
#include "support/scriptedanswer.h"

#include <QObject>

#include <optional>

class QTcpSocket;

namespace tavro::testsupport {

class ServerBook;

/// One client's connection: reads its requests and writes the answers, one after the other. Lives in the server's
/// thread.
class ScriptedConnection : public QObject {
    Q_OBJECT

public:
    ScriptedConnection(QTcpSocket *socket, ServerBook &book, QObject *parent);
    ~ScriptedConnection() override;

    void begin(); ///< reads what came before anyone listened
    bool isHeld() const { return m_held; }
    bool isIdle() const { return !m_answer; }
    QByteArray heldTarget() const { return m_target; }
    void release();
    void close(); ///< orderly, now

Q_SIGNALS:
    void sigHeld();

private:
    void onReadyRead();
    void onBytesWritten(qint64 bytes);
    void onDisconnected();
    void start(const HttpRequest &request);
    void pump();
    bool stopsHere();
    qint64 nextStop() const;
    void writePiece();
    void finish();
    void endConnection();
    void reset();
    void setHeld(bool held);

    QTcpSocket *m_socket; // a child
    ServerBook &m_book;
    int m_number;
    HttpRequestReader m_reader;
    QByteArray m_target;
    std::optional<ScriptedAnswer> m_answer;
    std::optional<qint64> m_holdOffset;
    qint64 m_sent = -1; ///< bytes of the body written; -1 before the head
    bool m_held = false;
};

} // namespace tavro::testsupport
