// What another machine may send: any bytes, to any handler of both proxies. The first byte says to which, the rest is
// the payload.

#include "aicontroller/aicontroller.h"
#include "support/application.h"
#include "zlspdlog/zlspdlog.h"
#include "zvruntime/izvruntime.h"

#include <QCoreApplication>
#include <QEvent>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

/// Both roles; keeps the handlers in the order in which they were registered.
class HandlerBook : public tavro::IZVRuntime, private tavro::IZVDispatcher {
public:
    void call(std::uint8_t selector, const char *data, unsigned int size) const
    {
        const auto &[name, handler] = m_handlers[selector % m_handlers.size()];
        handler(name.c_str(), size > 0 ? data : nullptr, size);
    }

    void registerCallHandler(const char *name, CallHandler handler) override
    {
        m_handlers.emplace_back(name, std::move(handler));
    }
    void unregisterCallHandler(const char *) override { }
    void sendToServer(const char *, const char *, unsigned int) override { }
    void sendToClients(const char *, const char *, unsigned int) override { }
    bool isProxyServer() const override { return true; }
    bool isProxyClient() const override { return true; }
    bool isLocalExecutor() const override { return false; }
    tavro::IZVDispatcher &dispatcher() override { return *this; }
    bool needsDispatch(const char *, int) const override { return false; }

private:
    void post(std::function<void()> task) override { task(); }

    std::vector<std::pair<std::string, CallHandler>> m_handlers;
};

/// A controller that has been cleared, so that no message makes it use the network.
class Machine {
public:
    Machine()
    {
        ZL::SpdlogApplication::instance().logger()->set_level(spdlog::level::off);
        m_controller.setZVRuntime(&m_handlers);
        m_controller.clear();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void receive(std::uint8_t selector, const char *payload, unsigned int size)
    {
        m_handlers.call(selector, payload, size);
    }

private:
    HandlerBook m_handlers;
    tavro::aiassistant::AiController m_controller;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    needApplication();
    static Machine machine;
    if (size == 0 || size > std::numeric_limits<unsigned int>::max())
        return 0;
    machine.receive(data[0], reinterpret_cast<const char *>(data + 1), static_cast<unsigned int>(size - 1));
    return 0;
}
