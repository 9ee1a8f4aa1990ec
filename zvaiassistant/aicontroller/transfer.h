#pragma once

#include "aicontroller/transferticket.h"

#include <QObject>
#include <QPointer>

#include <functional>

namespace tavro::aiassistant {

/// What a server may send in one reply.
struct TransferLimits {
    qint64 bodyBytes;
    int headers = 200; ///< of different names
    int headerBytes = 64 * 1024; ///< of all their names and values
};

/// One request that is under way, in the thread in which its network access manager lives. It takes the bytes as they
/// come and breaks off when the reply is more than it may be.
class Transfer : public QObject {
    Q_OBJECT

public:
    using Begun = std::function<void(int status)>;
    using Done = std::function<void(TransferOutcome outcome)>;

    /// Takes @p reply over. @p begun is called where the head of the reply is accepted, @p done once, unless the
    /// transfer goes before; the transfer must not go in it.
    Transfer(QNetworkReply *reply, const TransferLimits &limits, Begun begun, Done done);
    ~Transfer() override;

private:
    void checkHead();
    void begin(int status);
    bool hasTooManyHeaders() const;
    void takeBytes();
    void onFinished();
    void refuse(QNetworkReply::NetworkError error, const QString &text);
    void end();

    const QPointer<QNetworkReply> m_reply; // its manager may go first
    const TransferLimits m_limits;
    const Begun m_begun;
    const Done m_done;
    TransferOutcome m_outcome;
};

} // namespace tavro::aiassistant
