#include "localruntime.h"

#include <QThread>

#include <utility>

namespace tavro::playout {

void GuiDispatcher::post(std::function<void()> task)
{
    QMetaObject::invokeMethod(this, std::move(task), Qt::QueuedConnection);
}

bool LocalRuntime::needsDispatch(const char * /*file*/, int /*line*/) const
{
    return QThread::currentThread() != m_dispatcher.thread();
}

} // namespace tavro::playout
