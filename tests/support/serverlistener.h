#pragma once

#include <QByteArray>
#include <QPointer>
#include <QTcpServer>
#include <QVector>

#include <functional>
#include <mutex>

namespace tavro::testsupport {

class ScriptedConnection;
class ServerBook;

/// Accepts the scripted server's connections and finds them again. Lives in the server's thread.
class ServerListener : public QTcpServer {
    Q_OBJECT

public:
    explicit ServerListener(ServerBook &book);

    /// Runs @p action in the listener's thread and waits for it. To be called from other threads.
    void runHere(const std::function<void()> &action);

    /// Lets the first held answer go, of those to @p target where it is not null.
    bool release(const QByteArray &target);
    void closeIdle();
    void stop();

private Q_SLOTS:
    void runAction();

private:
    void onNewConnection();
    QVector<QPointer<ScriptedConnection>> held() const;

    ServerBook &m_book;
    std::mutex m_callerMutex; ///< one caller at a time
    std::mutex m_actionMutex;
    const std::function<void()> *m_action = nullptr;
    QVector<QPointer<ScriptedConnection>> m_holding; ///< in the order in which they began to hold
};

} // namespace tavro::testsupport
