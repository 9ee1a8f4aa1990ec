#pragma once

#include <QCoreApplication>
#include <QEventLoop>

namespace tavro::aiassistant {

template <typename Condition>
void processEventsUntil(Condition condition)
{
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace tavro::aiassistant
