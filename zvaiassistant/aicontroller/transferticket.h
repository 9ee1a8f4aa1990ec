#pragma once

#include <QByteArray>
#include <QNetworkReply>
#include <QString>

#include <any>
#include <functional>
#include <mutex>

namespace tavro::aiassistant {

class TaskReceiver;

/// How a transfer ended.
struct TransferOutcome {
    QNetworkReply::NetworkError error = QNetworkReply::NoError;
    QString errorText; ///< without credentials
    bool isRefused = false; ///< this side ended it, because of the address or of what the server sent
    QByteArray body; ///< empty where there is a reading of it
    std::any reading;
};

/// Between a reply and the transfer that works for it in another thread: either may go first.
class TransferTicket {
public:
    using Begun = std::function<void(int status)>;
    using Done = std::function<void(const TransferOutcome &outcome)>;

    /// @p begun and @p done are called in the thread of @p receiver, and neither after giveBack() was.
    TransferTicket(TaskReceiver &receiver, Begun begun, Done done);

    void giveBack(); ///< nobody waits any more; the receiver may go

    // From any thread.
    void begin(int status); ///< of HTTP; the body follows
    void deliver(TransferOutcome outcome);

private:
    std::mutex m_lock;
    TaskReceiver *m_receiver; ///< null: nobody waits; guarded by m_lock
    const Begun m_begun;
    const Done m_done;
};

} // namespace tavro::aiassistant
