#include "support/serverlistener.h"

#include "support/scriptedconnection.h"

#include <QTcpSocket>

namespace tavro::testsupport {

ServerListener::ServerListener(ServerBook &book)
    : m_book(book)
{
    connect(this, &QTcpServer::newConnection, this, &ServerListener::onNewConnection);
}

// Qt's event queue orders the threads by itself, but out of ThreadSanitizer's sight: the mutex shows it the order.
void ServerListener::runHere(const std::function<void()> &action)
{
    const std::lock_guard caller(m_callerMutex);
    {
        const std::lock_guard lock(m_actionMutex);
        m_action = &action;
    }
    QMetaObject::invokeMethod(this, "runAction", Qt::BlockingQueuedConnection);
    const std::lock_guard lock(m_actionMutex);
    m_action = nullptr;
}

void ServerListener::runAction()
{
    const std::lock_guard lock(m_actionMutex);
    (*m_action)();
}

bool ServerListener::release(const QByteArray &target)
{
    m_holding = held();
    for (const auto &connection : qAsConst(m_holding)) {
        if (target.isNull() || connection->heldTarget() == target) {
            connection->release();
            return true;
        }
    }
    return false;
}

void ServerListener::closeIdle()
{
    const auto connections = findChildren<ScriptedConnection *>();
    for (ScriptedConnection *connection : connections) {
        if (connection->isIdle())
            connection->close();
    }
}

void ServerListener::stop()
{
    close();
    qDeleteAll(findChildren<ScriptedConnection *>());
}

void ServerListener::onNewConnection()
{
    while (QTcpSocket *socket = nextPendingConnection()) {
        auto *connection = new ScriptedConnection(socket, m_book, this);
        connect(connection, &ScriptedConnection::sigHeld, this, [this, connection] { m_holding.append(connection); });
        connection->begin();
    }
}

QVector<QPointer<ScriptedConnection>> ServerListener::held() const
{
    QVector<QPointer<ScriptedConnection>> still;
    for (const auto &connection : m_holding) {
        if (connection && connection->isHeld())
            still.append(connection);
    }
    return still;
}

} // namespace tavro::testsupport
