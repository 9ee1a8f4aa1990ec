#include "machine/qtdispatcher.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>

#include <utility>

namespace tavro::runtime {

namespace {

const auto taskEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

// So many, then the event loop has its turn.
constexpr int tasksAtOnce = 64;

} // namespace

TaskLine::TaskLine(QObject *receiver)
    : m_receiver(receiver)
{ }

void TaskLine::put(std::function<void()> task)
{
    const std::lock_guard lock(m_mutex);
    if (!m_receiver)
        return;
    m_tasks.push_back(std::move(task));
    wake();
}

void TaskLine::woken()
{
    const std::lock_guard lock(m_mutex);
    m_isWaking = false;
}

// The receiver is woken for the others before the task runs: an event loop inside the task does not see events that
// were posted before it began, and would sleep.
std::function<void()> TaskLine::take()
{
    const std::lock_guard lock(m_mutex);
    if (m_tasks.empty())
        return {};
    std::function<void()> task = std::move(m_tasks.front());
    m_tasks.pop_front();
    if (!m_tasks.empty())
        wake();
    return task;
}

// Called under the lock: close() then cannot let the receiver go meanwhile.
void TaskLine::wake()
{
    if (!std::exchange(m_isWaking, true))
        QCoreApplication::postEvent(m_receiver, new QEvent(taskEvent));
}

void TaskLine::close()
{
    std::deque<std::function<void()>> waiting; // what a task holds may post when it is destroyed
    const std::lock_guard lock(m_mutex);
    m_receiver = nullptr;
    waiting.swap(m_tasks);
}

QtDispatcher::QtDispatcher(QObject *parent)
    : QObject(parent)
    , m_line(std::make_shared<TaskLine>(this))
{ }

QtDispatcher::~QtDispatcher()
{
    m_line->close();
}

void QtDispatcher::post(std::function<void()> task)
{
    m_line->put(std::move(task));
}

bool QtDispatcher::isOwnThread() const
{
    return QThread::currentThread() == thread();
}

// A task may destroy the dispatcher.
bool QtDispatcher::event(QEvent *event)
{
    if (event->type() != taskEvent)
        return QObject::event(event);
    const std::shared_ptr<TaskLine> line = m_line;
    line->woken();
    for (int i = 0; i < tasksAtOnce; ++i) {
        const auto task = line->take();
        if (!task)
            break;
        task();
    }
    return true;
}

} // namespace tavro::runtime
