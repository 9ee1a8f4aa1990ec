#include "reporter.h"

#include "zlspdlog/zlspdlog.h"

#include <spdlog/sinks/base_sink.h>

#include <QJsonDocument>
#include <QLoggingCategory>
#include <QString>

#include <cstdio>
#include <memory>
#include <mutex>

namespace tavro::machineprocess {

namespace {

class Sink : public spdlog::sinks::base_sink<std::mutex> {
protected:
    void sink_it_(const spdlog::details::log_msg &message) override
    {
        const auto level = spdlog::level::to_string_view(message.level);
        report({{QStringLiteral("log"), QString::fromLatin1(level.data(), static_cast<int>(level.size()))},
                {QStringLiteral("text"),
                 QString::fromUtf8(message.payload.data(), static_cast<int>(message.payload.size()))}});
    }
    void flush_() override { }
};

void onQtMessage(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    report({{QStringLiteral("log"), QStringLiteral("warning")}, {QStringLiteral("text"), text}});
}

} // namespace

void report(const QJsonObject &event)
{
    static std::mutex mutex;
    const QByteArray line = QJsonDocument(event).toJson(QJsonDocument::Compact) + '\n';
    const std::lock_guard lock(mutex);
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fflush(stdout);
}

void reportLogs()
{
    // Polls that follow at once would have the controller write thousands of them.
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    qInstallMessageHandler(onQtMessage);
    ZL::SpdlogApplication::instance().logger()->sinks() = {std::make_shared<Sink>()};
}

} // namespace tavro::machineprocess
