#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QTest>
#include <QTimer>

#include <chrono>

namespace tavro::testsupport {

/// Long enough for a sanitizer build on a busy machine. Only a failing test waits so long.
constexpr std::chrono::milliseconds waitLimit{20000};

/// Runs the event loop until @p holds gives true; false when the limit passed first.
template <typename Condition>
bool eventually(Condition holds, std::chrono::milliseconds limit = waitLimit)
{
    return QTest::qWaitFor(holds, static_cast<int>(limit.count()));
}

/// The same, but it looks after each batch of events instead of every few milliseconds: for tests with thousands of
/// waits.
template <typename Condition>
bool runUntil(Condition holds)
{
    QTimer limit;
    limit.setSingleShot(true);
    limit.start(waitLimit);
    while (!holds() && limit.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return holds();
}

/// Delivers what is posted to objects of this thread now, and carries out their pending deferred deletes.
inline void settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace tavro::testsupport
