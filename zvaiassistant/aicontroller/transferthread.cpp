#include "aicontroller/transferthread.h"

#include "common/taskreceiver.h"

#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QThread>

#include <chrono>
#include <map>
#include <utility>

namespace tavro::aiassistant {

namespace {

constexpr std::chrono::milliseconds endLimit{1000};

// With a list of encodings of our own, even of none, Qt leaves the body packed: unpacked it could be a thousand times
// as large before anybody counted it.
QNetworkRequest unpackedRequest(QNetworkRequest request)
{
    request.setRawHeader("Accept-Encoding", "identity");
    return request;
}

/// A server in front of several may want its cookie back, but none needs many.
class FewCookies : public QNetworkCookieJar {
public:
    bool insertCookie(const QNetworkCookie &cookie) override
    {
        constexpr int mostCookies = 50;
        constexpr int mostBytes = 4096;
        return allCookies().size() < mostCookies && cookie.toRawForm().size() <= mostBytes
            && QNetworkCookieJar::insertCookie(cookie);
    }
};

} // namespace

class TransferThread::Worker : public TaskReceiver {
public:
    Worker(const TransferLimits &limits, Reader reader)
        : m_limits(limits)
        , m_reader(std::move(reader))
    { }

    void begin(const std::shared_ptr<TransferTicket> &ticket, const Job &job)
    {
        if (!m_manager)
            makeManager();
        const auto begun = [ticket](int status) { ticket->begin(status); };
        const auto done = [this, ticket](TransferOutcome outcome) { finish(ticket, std::move(outcome)); };
        m_transfers[ticket] = std::make_unique<Transfer>(send(job), m_limits, begun, done);
    }

    void cancel(const std::shared_ptr<TransferTicket> &ticket) { m_transfers.erase(ticket); }

private:
    void makeManager()
    {
        m_manager = std::make_unique<QNetworkAccessManager>();
        m_manager->setCookieJar(new FewCookies);
    }

    QNetworkReply *send(const Job &job)
    {
        const QNetworkRequest request = unpackedRequest(job.request);
        return job.operation == QNetworkAccessManager::PostOperation ? m_manager->post(request, job.body)
                                                                     : m_manager->get(request);
    }

    void finish(const std::shared_ptr<TransferTicket> &ticket, TransferOutcome outcome)
    {
        if (m_reader && outcome.error == QNetworkReply::NoError)
            outcome.reading = m_reader(std::exchange(outcome.body, {}));
        ticket->deliver(std::move(outcome));
        // It is still telling of its end.
        m_transfers.extract(ticket).mapped().release()->deleteLater();
    }

    const TransferLimits m_limits;
    const Reader m_reader;
    std::unique_ptr<QNetworkAccessManager> m_manager; // made in the thread
    std::map<std::shared_ptr<TransferTicket>, std::unique_ptr<Transfer>> m_transfers;
};

TransferThread::TransferThread(const TransferLimits &limits, Reader reader)
    : m_thread(new QThread)
    , m_worker(new Worker(limits, std::move(reader)))
{
    m_thread->setObjectName(QStringLiteral("zvaiassistant network"));
    m_worker->moveToThread(m_thread);
    QObject::connect(m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    m_thread->start();
}

TransferThread::~TransferThread()
{
    QObject::connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
    m_thread->quit();
    if (m_thread->wait(QDeadlineTimer(endLimit)))
        delete m_thread;
}

void TransferThread::begin(const std::shared_ptr<TransferTicket> &ticket, const Job &job)
{
    m_worker->post([worker = m_worker, ticket, job] { worker->begin(ticket, job); });
}

void TransferThread::cancel(const std::shared_ptr<TransferTicket> &ticket)
{
    m_worker->post([worker = m_worker, ticket] { worker->cancel(ticket); });
}

} // namespace tavro::aiassistant
