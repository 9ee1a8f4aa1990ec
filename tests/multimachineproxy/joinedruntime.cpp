#include "joinedruntime.h"

#include "support/waiting.h"

#include <QCoreApplication>

#include <future>
#include <string>

void JoinedRuntime::join(JoinedRuntime &one, JoinedRuntime &other, Delivery delivery)
{
    one.m_other = &other;
    other.m_other = &one;
    one.m_delivery = other.m_delivery = delivery;
}

void JoinedRuntime::sendToServer(const char *name, const char *data, unsigned int size)
{
    FakeRuntime::sendToServer(name, data, size);
    passOn(name, data, size);
}

void JoinedRuntime::sendToClients(const char *name, const char *data, unsigned int size)
{
    FakeRuntime::sendToClients(name, data, size);
    passOn(name, data, size);
}

// The bytes travel as a std::string: the other thread makes Qt containers of its own.
void JoinedRuntime::passOn(const char *name, const char *data, unsigned int size)
{
    const auto deliver = [other = m_other, name = std::string(name), payload = std::string(data, data + size)] {
        other->deliver(name.c_str(), QByteArray(payload.data(), static_cast<int>(payload.size())));
    };
    switch (m_delivery) {
    case Delivery::Direct:
        deliver();
        break;
    case Delivery::Queued:
        QMetaObject::invokeMethod(QCoreApplication::instance(), deliver, Qt::QueuedConnection);
        break;
    case Delivery::OtherThread:
        m_other->fakeDispatcher().post(deliver);
        break;
    }
}

bool JoinedRuntime::drain()
{
    auto done = std::make_shared<std::promise<void>>();
    std::future<void> delivered = done->get_future();
    fakeDispatcher().post([done] { done->set_value(); });
    return delivered.wait_for(tavro::testsupport::waitLimit) == std::future_status::ready;
}
