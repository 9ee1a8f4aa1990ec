#include "log/logcapture.h"

#include "log/logbook.h"
#include "zlspdlog/zlspdlog.h"

#include <spdlog/sinks/base_sink.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>

namespace tavro::playout {

namespace {

constexpr char placeMark[] = "\n //";

std::mutex bookMutex;
LogBook *activeBook = nullptr; // under the mutex
std::atomic<QtMessageHandler> earlierHandler{nullptr};

// A thread that is about to hand a line over may cause another one: that one is left out, and never waited for.
thread_local bool isDelivering = false;

void deliver(LogRecord record)
{
    if (std::exchange(isDelivering, true))
        return;
    record.time = QDateTime::currentDateTime();
    {
        const std::lock_guard lock(bookMutex);
        if (activeBook)
            activeBook->post(std::move(record));
    }
    isDelivering = false;
}

void setBook(LogBook *book)
{
    const std::lock_guard lock(bookMutex);
    activeBook = book;
}

LogLevel levelOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return LogLevel::Debug;
    case QtInfoMsg:
        return LogLevel::Info;
    case QtWarningMsg:
        return LogLevel::Warning;
    case QtCriticalMsg:
    case QtFatalMsg:
        break;
    }
    return LogLevel::Error;
}

LogLevel levelOf(spdlog::level::level_enum level)
{
    if (level >= spdlog::level::err)
        return LogLevel::Error;
    if (level == spdlog::level::warn)
        return LogLevel::Warning;
    return level == spdlog::level::info ? LogLevel::Info : LogLevel::Debug;
}

// What Qt says of itself is for the program's makers, unless it is an error.
bool isForOperators(QtMsgType type, const QString &category)
{
    const bool isQts = category == QLatin1String("default") || category.startsWith(QLatin1String("qt."));
    return !isQts || levelOf(type) == LogLevel::Error;
}

void onQtMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const QString category = QString::fromUtf8(context.category);
    if (isForOperators(type, category))
        deliver({{}, levelOf(type), text, category});
    if (const QtMessageHandler earlier = earlierHandler)
        earlier(type, context, text);
}

class Sink : public spdlog::sinks::base_sink<std::mutex> {
protected:
    void sink_it_(const spdlog::details::log_msg &message) override
    {
        const QString text = QString::fromUtf8(message.payload.data(), static_cast<int>(message.payload.size()));
        const int mark = text.lastIndexOf(QLatin1String(placeMark));
        const QString place = mark < 0 ? QString() : text.mid(mark + static_cast<int>(sizeof placeMark) - 1).trimmed();
        deliver({{}, levelOf(message.level), text.left(mark), place.isEmpty() ? QStringLiteral("zlspdlog") : place});
    }
    void flush_() override { }
};

// It stays with the logger: another thread may be logging when a capture ends.
void addSink()
{
    static const auto sink = std::make_shared<Sink>();
    auto &sinks = ZL::SpdlogApplication::instance().logger()->sinks();
    if (std::find(sinks.begin(), sinks.end(), sink) == sinks.end())
        sinks.push_back(sink);
}

} // namespace

LogCapture::LogCapture(LogBook &book)
{
    setBook(&book);
    addSink();
    m_earlier = qInstallMessageHandler(&onQtMessage);
    earlierHandler = m_earlier;
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(m_earlier);
    setBook(nullptr);
}

} // namespace tavro::playout
