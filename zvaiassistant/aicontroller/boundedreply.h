#pragma once

#include "aicontroller/transferthread.h"

#include <QNetworkReply>

#include <any>
#include <memory>

namespace tavro::aiassistant {

class TaskReceiver;

/// A reply of a BoundedNetwork. It tells of its end once everything is there, or once it has failed; what the server
/// sent beyond the limits, a redirect and a packed body are failures, whose errorString() names the reason.
class BoundedReply : public QNetworkReply {
    Q_OBJECT

public:
    BoundedReply(QNetworkAccessManager::Operation operation, const QNetworkRequest &request, QObject *parent);
    ~BoundedReply() override;

    void begin(const std::shared_ptr<TransferThread> &thread, const QByteArray &body);
    void refuse(const QString &reason); ///< fails before anything was sent, as soon as the event loop runs

    QByteArray takeBody(); ///< the whole of it, without a copy
    const std::any &reading() const { return m_reading; } ///< what the network's reader made of the body

    void abort() override;
    void close() override; ///< ends the transfer, like abort()
    qint64 bytesAvailable() const override;

protected:
    qint64 readData(char *data, qint64 maxSize) override;

private:
    void beginBody(int status);
    void finish(const TransferOutcome &outcome);
    void end(NetworkError error, const QString &text);
    void giveTicketBack();

    TaskReceiver *const m_receiver; // a child
    const std::shared_ptr<TransferTicket> m_ticket;
    std::shared_ptr<TransferThread> m_thread; // null once nothing is under way
    QByteArray m_body;
    std::any m_reading;
};

} // namespace tavro::aiassistant
