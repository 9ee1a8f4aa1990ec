#include "support/logcatcher.h"

#include "zlspdlog/zlspdlog.h"

#include <spdlog/sinks/base_sink.h>

#include <QLoggingCategory>

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace tavro::testsupport {

namespace {

using Level = LogLine::Level;

Level levelOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return Level::Debug;
    case QtInfoMsg:
        return Level::Info;
    case QtWarningMsg:
        return Level::Warning;
    default:
        return Level::Error;
    }
}

Level levelOf(spdlog::level::level_enum level)
{
    if (level >= spdlog::level::err)
        return Level::Error;
    if (level == spdlog::level::warn)
        return Level::Warning;
    return level == spdlog::level::info ? Level::Info : Level::Debug;
}

struct Expectation {
    int id;
    QRegularExpression pattern;
    int atLeast;
    int seen;
};

} // namespace

class LogCatcher::Private {
public:
    class Sink;

    Private();
    ~Private();

    void take(const LogLine &line);
    int begin(const QRegularExpression &pattern, int atLeast);
    void end(int id);
    int seen(int id);

    static void onQtMessage(QtMsgType type, const QMessageLogContext &context, const QString &text);

    std::mutex mutex;
    std::vector<LogLine> lines;
    std::vector<QString> complaints;
    std::vector<Expectation> expectations;
    int lastId = 0;
    QtMessageHandler earlierHandler = nullptr;
    std::vector<spdlog::sink_ptr> earlierSinks;
    spdlog::level::level_enum earlierLevel = spdlog::level::off;

    static inline Private *active = nullptr;

private:
    std::vector<Expectation>::iterator find(int id);
    bool isExpected(const QString &text);
};

class LogCatcher::Private::Sink : public spdlog::sinks::base_sink<std::mutex> {
public:
    explicit Sink(Private &owner)
        : m_owner(owner)
    { }

protected:
    void sink_it_(const spdlog::details::log_msg &message) override
    {
        LogLine line;
        line.origin = LogLine::Origin::Host;
        line.level = levelOf(message.level);
        line.text = QString::fromUtf8(message.payload.data(), static_cast<int>(message.payload.size()));
        line.file = QString::fromUtf8(message.source.filename);
        line.line = message.source.line;
        line.function = QString::fromUtf8(message.source.funcname);
        m_owner.take(line);
    }
    void flush_() override { }

private:
    Private &m_owner;
};

LogCatcher::Private::Private()
{
    Q_ASSERT_X(!active, "LogCatcher", "there is one already");
    active = this;
    const auto logger = ZL::SpdlogApplication::instance().logger();
    earlierSinks = std::exchange(logger->sinks(), {std::make_shared<Sink>(*this)});
    earlierLevel = logger->level();
    logger->set_level(spdlog::level::trace);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=true\nqt.*.debug=false"));
    earlierHandler = qInstallMessageHandler(&Private::onQtMessage);
}

LogCatcher::Private::~Private()
{
    qInstallMessageHandler(earlierHandler);
    QLoggingCategory::setFilterRules({});
    const auto logger = ZL::SpdlogApplication::instance().logger();
    logger->set_level(earlierLevel);
    logger->sinks() = earlierSinks;
    active = nullptr;
}

void LogCatcher::Private::onQtMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    LogLine line;
    line.level = levelOf(type);
    line.category = QString::fromUtf8(context.category);
    line.text = text;
    active->take(line);
    if (type == QtFatalMsg)
        active->earlierHandler(type, context, text);
}

void LogCatcher::Private::take(const LogLine &line)
{
    const std::lock_guard lock(mutex);
    lines.push_back(line);
    if (line.level >= Level::Warning && !isExpected(line.text))
        complaints.push_back(QStringLiteral("not announced: %1").arg(line.text));
}

bool LogCatcher::Private::isExpected(const QString &text)
{
    // The innermost scope answers.
    const auto found = std::find_if(expectations.rbegin(), expectations.rend(), [&](const Expectation &expectation) {
        return expectation.pattern.match(text).hasMatch();
    });
    if (found == expectations.rend())
        return false;
    ++found->seen;
    return true;
}

int LogCatcher::Private::begin(const QRegularExpression &pattern, int atLeast)
{
    const std::lock_guard lock(mutex);
    expectations.push_back({++lastId, pattern, atLeast, 0});
    return lastId;
}

void LogCatcher::Private::end(int id)
{
    const std::lock_guard lock(mutex);
    const auto expectation = find(id);
    if (expectation->seen < expectation->atLeast) {
        complaints.push_back(QStringLiteral("announced %1 times, came %2 times: %3")
                                 .arg(expectation->atLeast)
                                 .arg(expectation->seen)
                                 .arg(expectation->pattern.pattern()));
    }
    expectations.erase(expectation);
}

int LogCatcher::Private::seen(int id)
{
    const std::lock_guard lock(mutex);
    return find(id)->seen;
}

std::vector<Expectation>::iterator LogCatcher::Private::find(int id)
{
    return std::find_if(expectations.begin(), expectations.end(), [=](const auto &each) { return each.id == id; });
}

LogCatcher::LogCatcher()
    : d(std::make_unique<Private>())
{ }

LogCatcher::~LogCatcher() = default;

QVector<LogLine> LogCatcher::lines() const
{
    const std::lock_guard lock(d->mutex);
    return {d->lines.cbegin(), d->lines.cend()};
}

QStringList LogCatcher::texts() const
{
    QStringList texts;
    const QVector<LogLine> all = lines();
    for (const LogLine &line : all)
        texts.append(line.text);
    return texts;
}

int LogCatcher::count(const QString &fragment) const
{
    return texts().filter(fragment).size();
}

QVector<LogLine> LogCatcher::hostLines() const
{
    QVector<LogLine> host = lines();
    host.erase(std::remove_if(host.begin(), host.end(),
                              [](const LogLine &line) { return line.origin != LogLine::Origin::Host; }),
               host.end());
    return host;
}

void LogCatcher::forget()
{
    const std::lock_guard lock(d->mutex);
    d->lines.clear();
}

QStringList LogCatcher::complaints() const
{
    const std::lock_guard lock(d->mutex);
    return {d->complaints.cbegin(), d->complaints.cend()};
}

ExpectedLog::ExpectedLog(LogCatcher &catcher, const QRegularExpression &pattern, int atLeast)
    : m_catcher(*catcher.d)
    , m_id(m_catcher.begin(pattern, atLeast))
{ }

ExpectedLog::ExpectedLog(LogCatcher &catcher, const QString &fragment, int atLeast)
    : ExpectedLog(catcher, QRegularExpression(QRegularExpression::escape(fragment)), atLeast)
{ }

ExpectedLog::~ExpectedLog()
{
    m_catcher.end(m_id);
}

int ExpectedLog::seen() const
{
    return m_catcher.seen(m_id);
}

} // namespace tavro::testsupport
