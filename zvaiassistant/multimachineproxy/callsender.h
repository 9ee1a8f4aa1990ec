#pragma once

#include "multimachineproxy/callenvelope.h"
#include "zvruntime/izvruntime.h"

#include <exception>

namespace tavro::aiassistant {

/// Sends the messages of one proxy in one direction. Usable from any thread. A message that cannot be packed, or that
/// the host's runtime throws at, is logged and not sent.
class CallSender {
public:
    using Operation = void (IZVRuntime::*)(const char *name, const char *data, unsigned int size);

    CallSender(IZVRuntime *runtime, Operation operation)
        : m_runtime(runtime)
        , m_operation(operation)
    { }

    /// Sends a message without an argument.
    void operator()(const char *name) const
    {
        guarded(name, [&] { (m_runtime->*m_operation)(name, nullptr, 0); });
    }

    /// Sends a message with one argument.
    template <typename Argument>
    void operator()(const char *name, const Argument &argument) const
    {
        guarded(name, [&] {
            const msgpack::sbuffer payload = envelope::pack(argument);
            (m_runtime->*m_operation)(name, payload.data(), static_cast<unsigned int>(payload.size()));
        });
    }

private:
    template <typename Send>
    static void guarded(const char *name, Send send)
    {
        try {
            send();
        } catch (const std::exception &error) {
            logNotSent(name, error.what());
        }
    }

    static void logNotSent(const char *name, const char *why);

    IZVRuntime *m_runtime;
    Operation m_operation;
};

} // namespace tavro::aiassistant
