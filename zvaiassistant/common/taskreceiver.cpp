#include "common/taskreceiver.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>

#include <utility>

namespace tavro::aiassistant {

namespace {

QEvent::Type taskEventType()
{
    static const int type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(type);
}

class TaskEvent : public QEvent {
public:
    explicit TaskEvent(std::function<void()> task)
        : QEvent(taskEventType())
        , m_task(std::move(task))
    { }

    void run() const { m_task(); }

private:
    std::function<void()> m_task;
};

} // namespace

TaskReceiver::TaskReceiver(QObject *parent)
    : QObject(parent)
{ }

bool TaskReceiver::isInOwnThread() const
{
    return thread() == QThread::currentThread();
}

void TaskReceiver::run(std::function<void()> task)
{
    if (isInOwnThread())
        task();
    else
        post(std::move(task));
}

void TaskReceiver::post(std::function<void()> task)
{
    auto *const event = new TaskEvent(std::move(task));
    // Qt's event queue orders the threads by itself, but out of ThreadSanitizer's sight: this pair shows it the order.
    m_handedOver.fetch_add(1, std::memory_order_release);
    QCoreApplication::postEvent(this, event);
}

bool TaskReceiver::event(QEvent *event)
{
    m_handedOver.load(std::memory_order_acquire);
    if (event->type() == taskEventType()) {
        static_cast<TaskEvent *>(event)->run();
        return true;
    }
    if (event->type() == QEvent::ThreadChange)
        threadAboutToChange();
    return QObject::event(event);
}

void TaskReceiver::threadAboutToChange() { }

} // namespace tavro::aiassistant
