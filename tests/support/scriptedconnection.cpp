#include "support/scriptedconnection.h"

#include "support/serverbook.h"

#include <QTcpSocket>

#include <limits>
#include <sys/socket.h>

namespace tavro::testsupport {

namespace {

constexpr int pieceBytes = 64 * 1024;
constexpr qint64 maxWaitingBytes = 4 * pieceBytes;

QByteArray asChunk(const QByteArray &piece)
{
    return QByteArray::number(piece.size(), 16) + "\r\n" + piece + "\r\n";
}

} // namespace

ScriptedConnection::ScriptedConnection(QTcpSocket *socket, ServerBook &book, QObject *parent)
    : QObject(parent)
    , m_socket(socket)
    , m_book(book)
    , m_number(book.openConnection())
{
    m_socket->setParent(this);
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    connect(m_socket, &QTcpSocket::readyRead, this, &ScriptedConnection::onReadyRead);
    connect(m_socket, &QTcpSocket::bytesWritten, this, &ScriptedConnection::onBytesWritten);
    connect(m_socket, &QTcpSocket::disconnected, this, &ScriptedConnection::onDisconnected);
}

ScriptedConnection::~ScriptedConnection()
{
    setHeld(false);
    m_socket->disconnect(this);
    m_book.closeConnection();
}

void ScriptedConnection::begin()
{
    onReadyRead();
}

void ScriptedConnection::release()
{
    if (!m_held)
        return;
    m_holdOffset.reset();
    setHeld(false);
    pump();
}

void ScriptedConnection::close()
{
    m_socket->disconnectFromHost();
}

void ScriptedConnection::onReadyRead()
{
    m_reader.feed(m_socket->readAll());
    if (m_answer)
        return;
    if (const auto request = m_reader.next())
        start(*request);
    if (!m_reader.error().isEmpty()) {
        m_book.complain(m_reader.error());
        m_socket->abort();
    }
}

void ScriptedConnection::onBytesWritten(qint64 bytes)
{
    m_book.noteTaken(bytes);
    pump();
}

void ScriptedConnection::onDisconnected()
{
    setHeld(false);
    deleteLater();
}

void ScriptedConnection::start(const HttpRequest &request)
{
    HttpRequest numbered = request;
    numbered.connection = m_number;
    m_target = request.target;
    m_answer = m_book.answerTo(numbered);
    m_holdOffset = m_answer->holdOffset();
    m_sent = -1;
    pump();
}

void ScriptedConnection::pump()
{
    while (m_answer && !m_held && m_socket->bytesToWrite() < maxWaitingBytes && !stopsHere())
        writePiece();
}

bool ScriptedConnection::stopsHere()
{
    if (m_holdOffset == m_sent) {
        setHeld(true);
        Q_EMIT sigHeld();
        return true;
    }
    const qint64 end = m_answer->cutOffset().value_or(m_answer->body().size());
    if (m_sent < 0 || m_sent != end)
        return false;
    // What was written must leave before the connection ends.
    if (m_socket->bytesToWrite() == 0 || m_answer->ending() != ScriptedAnswer::Ending::Reset)
        finish();
    return true;
}

qint64 ScriptedConnection::nextStop() const
{
    qint64 stop = m_answer->cutOffset().value_or(std::numeric_limits<qint64>::max());
    if (m_holdOffset)
        stop = qMin(stop, *m_holdOffset);
    return stop;
}

void ScriptedConnection::writePiece()
{
    if (m_sent < 0) {
        m_socket->write(m_answer->head());
        m_sent = 0;
        return;
    }
    const auto room = static_cast<int>(qMin<qint64>(pieceBytes, nextStop() - m_sent));
    const QByteArray piece = m_answer->body().piece(m_sent, room);
    m_socket->write(m_answer->framing() == ScriptedAnswer::Framing::Chunked ? asChunk(piece) : piece);
    m_sent += piece.size();
}

void ScriptedConnection::finish()
{
    if (m_answer->framing() == ScriptedAnswer::Framing::Chunked && !m_answer->cutOffset())
        m_socket->write("0\r\n\r\n");
    if (m_answer->ending() != ScriptedAnswer::Ending::KeepOpen) {
        endConnection();
        return;
    }
    m_answer.reset();
    onReadyRead();
}

void ScriptedConnection::endConnection()
{
    const bool abruptly = m_answer->ending() == ScriptedAnswer::Ending::Reset;
    m_answer.reset();
    if (abruptly)
        reset();
    else
        close();
}

void ScriptedConnection::reset()
{
    const linger discard{1, 0};
    ::setsockopt(static_cast<int>(m_socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &discard, sizeof discard);
    m_socket->abort();
}

void ScriptedConnection::setHeld(bool held)
{
    if (m_held == held)
        return;
    m_held = held;
    m_book.changeHeld(held ? 1 : -1);
}

} // namespace tavro::testsupport
