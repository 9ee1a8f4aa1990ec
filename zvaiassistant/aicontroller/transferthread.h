#pragma once

#include "aicontroller/transfer.h"

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkRequest>

#include <any>
#include <functional>
#include <memory>

class QThread;

namespace tavro::aiassistant {

/// A thread that does the network work of others. Qt hands a reply's headers over in a time that grows with the square
/// of their number, so that a server could hold any thread that uses the network itself.
class TransferThread {
public:
    /// Makes of a whole body what its receiver wants to know. Called in the thread; empty: the bytes as they are.
    using Reader = std::function<std::any(const QByteArray &body)>;

    struct Job {
        QNetworkAccessManager::Operation operation; ///< GetOperation or PostOperation
        QNetworkRequest request;
        QByteArray body;
    };

    TransferThread(const TransferLimits &limits, Reader reader);

    /// Ends all transfers. Waits for the thread, but not where a server holds it: then it ends by itself.
    ~TransferThread();

    TransferThread(const TransferThread &) = delete;
    TransferThread &operator=(const TransferThread &) = delete;

    void begin(const std::shared_ptr<TransferTicket> &ticket, const Job &job);
    void cancel(const std::shared_ptr<TransferTicket> &ticket);

private:
    class Worker;

    QThread *const m_thread; // goes by itself where it cannot be waited for
    Worker *const m_worker; // lives in the thread and goes with it
};

} // namespace tavro::aiassistant
