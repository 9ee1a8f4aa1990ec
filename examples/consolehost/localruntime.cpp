#include "localruntime.h"

#include <QThread>

#include <utility>

namespace tavro::consolehost {

void EventLoopDispatcher::post(std::function<void()> task)
{
    QMetaObject::invokeMethod(this, std::move(task), Qt::QueuedConnection);
}

// No machine sends to this one, and a machine without a proxy role sends nothing.
void LocalRuntime::registerCallHandler(const char * /*name*/, CallHandler /*handler*/) { }

void LocalRuntime::unregisterCallHandler(const char * /*name*/) { }

void LocalRuntime::sendToServer(const char * /*name*/, const char * /*data*/, unsigned int /*size*/) { }

void LocalRuntime::sendToClients(const char * /*name*/, const char * /*data*/, unsigned int /*size*/) { }

bool LocalRuntime::needsDispatch(const char * /*file*/, int /*line*/) const
{
    return QThread::currentThread() != m_dispatcher.thread();
}

} // namespace tavro::consolehost
