#pragma once

#include "multimachineproxy/callenvelope.h"
#include "zvruntime/izvruntime.h"

#include <exception>
#include <optional>
#include <type_traits>

namespace tavro::aiassistant {

/// Writes to the host's log that the message @p name was dropped, and why.
void logRefusedCall(const char *name, const char *why);

/// The argument of a received message; nothing, and a line in the host's log, where the payload holds none of that
/// type: another machine may run another version, or send anything.
template <typename Value>
std::optional<Value> receivedArgument(const char *name, const char *data, unsigned int size)
{
    try {
        return envelope::unpack<Value>(data, size);
    } catch (const std::exception &error) {
        logRefusedCall(name, error.what());
        return std::nullopt;
    }
}

/// Has @p operation of @p receiver carried out for each message @p name, on the thread on which the runtime calls,
/// until the name is unsubscribed. @p name must live for ever. A message without an argument is carried out whatever
/// its payload.
template <typename Receiver>
void subscribe(IZVRuntime &runtime, const char *name, Receiver *receiver, void (Receiver::*operation)())
{
    runtime.registerCallHandler(
        name, [receiver, operation](const char *, const char *, unsigned int) { (receiver->*operation)(); });
}

/// The same for messages with an argument. One that does not unpack is not carried out.
template <typename Receiver, typename Argument>
void subscribe(IZVRuntime &runtime, const char *name, Receiver *receiver, void (Receiver::*operation)(Argument))
{
    runtime.registerCallHandler(name, [name, receiver, operation](const char *, const char *data, unsigned int size) {
        if (const auto argument = receivedArgument<std::decay_t<Argument>>(name, data, size))
            (receiver->*operation)(*argument);
    });
}

} // namespace tavro::aiassistant
