#include "aicontroller/boundedreply.h"

#include "common/loggingcategories.h"
#include "common/logtext.h"
#include "common/taskreceiver.h"

#include <QUrl>

#include <cstring>
#include <utility>

namespace tavro::aiassistant {

namespace {

QString address(const QUrl &url)
{
    return loggableAddress(url.toString(QUrl::RemoveQuery | QUrl::RemoveUserInfo));
}

} // namespace

BoundedReply::BoundedReply(QNetworkAccessManager::Operation operation, const QNetworkRequest &request, QObject *parent)
    : QNetworkReply(parent)
    , m_receiver(new TaskReceiver(this))
    , m_ticket(std::make_shared<TransferTicket>(
          *m_receiver, [this](int status) { beginBody(status); },
          [this](const TransferOutcome &outcome) { finish(outcome); }))
{
    setOperation(operation);
    setRequest(request);
    setUrl(request.url());
    open(ReadOnly | Unbuffered);
}

BoundedReply::~BoundedReply()
{
    giveTicketBack();
}

void BoundedReply::begin(const std::shared_ptr<TransferThread> &thread, const QByteArray &body)
{
    m_thread = thread;
    m_thread->begin(m_ticket, {operation(), request(), body});
}

void BoundedReply::refuse(const QString &reason)
{
    TransferOutcome outcome;
    outcome.error = ProtocolUnknownError;
    outcome.errorText = reason;
    outcome.isRefused = true;
    m_ticket->deliver(std::move(outcome));
}

QByteArray BoundedReply::takeBody()
{
    return std::exchange(m_body, {});
}

void BoundedReply::abort()
{
    if (isFinished())
        return;
    giveTicketBack();
    end(OperationCanceledError, QStringLiteral("Operation canceled"));
}

void BoundedReply::close()
{
    abort();
    QNetworkReply::close();
}

qint64 BoundedReply::bytesAvailable() const
{
    return m_body.size() + QNetworkReply::bytesAvailable();
}

qint64 BoundedReply::readData(char *data, qint64 maxSize)
{
    const auto size = static_cast<int>(qMin<qint64>(maxSize, m_body.size()));
    if (size == 0)
        return isFinished() ? -1 : 0;
    std::memcpy(data, m_body.constData(), static_cast<std::size_t>(size));
    m_body.remove(0, size);
    return size;
}

void BoundedReply::beginBody(int status)
{
    if (isFinished())
        return;
    setAttribute(QNetworkRequest::HttpStatusCodeAttribute, status);
    Q_EMIT metaDataChanged();
}

void BoundedReply::finish(const TransferOutcome &outcome)
{
    if (isFinished())
        return;
    m_thread.reset();
    m_body = outcome.body;
    m_reading = outcome.reading;
    if (outcome.isRefused)
        qCWarning(lcController).noquote() << QStringLiteral("refused: %1: %2").arg(address(url()), outcome.errorText);
    end(outcome.error, outcome.errorText);
}

// A receiver may delete the reply's manager later, but not the reply now.
void BoundedReply::end(NetworkError error, const QString &text)
{
    setFinished(true);
    if (error != NoError) {
        setError(error, text);
        Q_EMIT errorOccurred(error);
    }
    Q_EMIT finished();
}

void BoundedReply::giveTicketBack()
{
    m_ticket->giveBack();
    if (const auto thread = std::exchange(m_thread, nullptr))
        thread->cancel(m_ticket);
}

} // namespace tavro::aiassistant
