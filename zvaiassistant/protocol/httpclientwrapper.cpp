#include "protocol/httpclientwrapper.h"

#include "common/hostlog.h"
#include "common/logtext.h"
#include "protocol/httpclientwrapper_p.h"
#include "protocol/taskqueue.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslError>
#include <QThread>
#include <QTimer>
#include <QUrl>

#include <algorithm>
#include <chrono>
#include <future>
#include <optional>

namespace tavro::aiassistant {

namespace {

constexpr std::chrono::milliseconds replyLimit{10'000};
constexpr char errorMark[] = "\"error\"";

/// A reply that is given up, or read to its end, when the call returns.
struct ReplyEnd {
    void operator()(QNetworkReply *reply) const
    {
        reply->disconnect();
        reply->abort();
        reply->deleteLater();
    }
};
using ReplyPointer = std::unique_ptr<QNetworkReply, ReplyEnd>;

// The reply's own error says only that the handshake failed.
ReplyPointer followed(QNetworkReply *reply, const std::string &url)
{
    QObject::connect(reply, &QNetworkReply::sslErrors, reply, [url](const QList<QSslError> &errors) {
        for (const QSslError &error : errors)
            ZVAI_HOST_LOG(spdlog::level::err, "reply error, url: {}, {}", loggableAddress(url),
                          loggable(error.errorString()).toStdString());
    });
    return ReplyPointer(reply);
}

// Qt writes headers as they are: a line break would begin a header of somebody else's choice.
bool isSafe(const std::string &text)
{
    return text.find_first_of(std::string("\r\n\0", 3)) == std::string::npos;
}

bool areSafe(const HttpClientWrapper::Headers &headers)
{
    return std::all_of(headers.begin(), headers.end(),
                       [](const auto &header) { return isSafe(header.first) && isSafe(header.second); });
}

QNetworkRequest makeRequest(const std::string &url, const HttpClientWrapper::Headers &headers)
{
    QNetworkRequest request(QUrl(QString::fromStdString(url)));
    for (const auto &[name, value] : headers)
        request.setRawHeader(QByteArray::fromStdString(name), QByteArray::fromStdString(value));
    return request;
}

std::string headersOf(const QNetworkRequest &request)
{
    QByteArrayList entries;
    const QList<QByteArray> names = request.rawHeaderList();
    for (const QByteArray &name : names)
        entries << name + ": " + request.rawHeader(name);
    return entries.join(", ").toStdString();
}

bool waitUntilFinished(QNetworkReply &reply)
{
    QEventLoop loop;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(replyLimit);
    const auto onTimeout = QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    const auto onFinished = QObject::connect(&reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    if (!reply.isFinished())
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    QObject::disconnect(onTimeout);
    QObject::disconnect(onFinished);
    timer.stop();
    return reply.isFinished();
}

int statusOf(const QNetworkReply &reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

// A reply can break off after its status came, and a connection can fail before.
bool isWhole(const QNetworkReply &reply, const std::string &url)
{
    if (reply.error() == QNetworkReply::NoError)
        return true;
    ZVAI_HOST_LOG(spdlog::level::err, "reply error, url: {}, {}", loggableAddress(url),
                  loggable(withoutCredentials(reply.errorString())).toStdString());
    return false;
}

HttpClientWrapper::Result resultOf(std::string body)
{
    if (body.find(errorMark) != std::string::npos)
        return {};
    return {true, std::move(body)};
}

} // namespace

// On the worker's thread nobody else can make it meanwhile.
void HttpClientWrapper::Private::makeManager(const std::shared_ptr<TaskQueue> &queue)
{
    std::packaged_task<void()> task([this] { manager = new QNetworkAccessManager; });
    std::future<void> made = task.get_future();
    if (queue->isWorkerThread())
        task();
    else
        queue->push(std::move(task));
    made.get();
}

// A manager goes on the thread that it lives on. Once that thread is gone, any may delete it.
void HttpClientWrapper::Private::dropManager()
{
    QNetworkAccessManager *const dropped = std::exchange(manager, nullptr);
    const std::shared_ptr<TaskQueue> queue = worker.lock();
    if (!dropped)
        return;
    if (!queue || queue->isWorkerThread()) {
        delete dropped;
        return;
    }
    std::packaged_task<void()> task([dropped] { delete dropped; });
    std::future<void> done = task.get_future();
    queue->push(std::move(task));
    try {
        done.get();
    } catch (const std::future_error &) {
        delete dropped;
    }
}

bool HttpClientWrapper::Private::canSend(const std::string &url, const Headers &sent) const
{
    if (!manager || manager->thread() != QThread::currentThread()) {
        ZVAI_HOST_LOG(spdlog::level::err, "request refused, url: {}, {}", loggableAddress(url),
                      manager ? "not the worker's thread" : "no worker");
        return false;
    }
    if (!areSafe(sent)) {
        ZVAI_HOST_LOG(spdlog::level::err, "request refused, url: {}, a header has a line break in it",
                      loggableAddress(url));
        return false;
    }
    return true;
}

HttpClientWrapper::HttpClientWrapper()
    : d(std::make_unique<Private>())
{ }

HttpClientWrapper::~HttpClientWrapper() = default;

void HttpClientWrapper::init(std::shared_ptr<TaskQueue> worker)
{
    const std::shared_ptr<TaskQueue> queue = std::move(worker);
    d->dropManager();
    d->worker = queue;
    if (!queue)
        throw std::future_error(std::future_errc::no_state);
    try {
        d->makeManager(queue);
    } catch (const std::future_error &) {
        // The promise was broken: the worker is gone.
        throw std::future_error(std::future_errc::no_state);
    }
}

HttpClientWrapper::Result HttpClientWrapper::get(const std::string &url, const Headers &headers, bool log)
{
    if (!d->canSend(url, headers))
        return {};
    const ReplyPointer reply = followed(d->manager->get(makeRequest(url, headers)), url);
    if (!waitUntilFinished(*reply)) {
        ZVAI_HOST_LOG(spdlog::level::err, "get reply timeout, url: {}", loggableAddress(url));
        return {};
    }
    std::string body = reply->readAll().toStdString();
    const bool whole = isWhole(*reply, url);
    if (statusOf(*reply) != 200) {
        ZVAI_HOST_LOG(spdlog::level::err, "get reply err, url: {}, status code: {}", loggableAddress(url),
                      statusOf(*reply));
        return {};
    }
    if (log)
        ZVAI_HOST_LOG(spdlog::level::info, "get reply: {}", loggable(body));
    return whole ? resultOf(std::move(body)) : Result();
}

HttpClientWrapper::Result HttpClientWrapper::post(const std::string &url, const Headers &headers,
                                                  const std::string &body, bool log)
{
    if (!d->canSend(url, headers))
        return {};
    QNetworkRequest request = makeRequest(url, headers);
    request.setRawHeader("Accept", "*/*");
    request.setRawHeader("Content-Type", "application/json");
    if (log) {
        ZVAI_HOST_LOG(spdlog::level::info, "post url: {}", loggableAddress(url));
        ZVAI_HOST_LOG(spdlog::level::info, "post headers: {}", headersOf(request));
        ZVAI_HOST_LOG(spdlog::level::info, "post data: {}", loggable(body));
    }
    const ReplyPointer reply = followed(d->manager->post(request, QByteArray::fromStdString(body)), url);
    if (!waitUntilFinished(*reply)) {
        // The text is that of a GET, which readers of the log know.
        ZVAI_HOST_LOG(spdlog::level::err, "get reply timeout, url: {}", loggableAddress(url));
        return {};
    }
    const bool whole = isWhole(*reply, url);
    const int status = statusOf(*reply);
    if (status != 200)
        ZVAI_HOST_LOG(spdlog::level::err, "post reply err, status code: {}", status);
    std::string answer = reply->readAll().toStdString();
    if (log)
        ZVAI_HOST_LOG(spdlog::level::info, "post reply: {}", loggable(answer));
    return status == 200 && whole ? resultOf(std::move(answer)) : Result();
}

} // namespace tavro::aiassistant
