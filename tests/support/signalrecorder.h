#pragma once

#include "support/waiting.h"

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <tuple>
#include <type_traits>
#include <vector>

namespace tavro::testsupport {

/// A number that grows with every emission that any recorder sees (and every entry of a Journal): tells which came
/// first.
inline int nextEventNumber()
{
    static std::atomic_int last{0};
    return ++last;
}

/// Keeps each emission of one sigslot signal: copies of the arguments, the thread, and the place in the order of all
/// emissions. It may go before or after the signal.
///
///     SignalRecorder failed(controller.sigRequestFailed);
///     QVERIFY(failed.waitFor(1));
///     QCOMPARE(failed.argument<0>(0).question, std::string("why"));
template <typename... Args>
class SignalRecorder {
public:
    struct Emission {
        std::tuple<std::decay_t<Args>...> arguments;
        std::thread::id thread;
        int number; ///< see nextEventNumber()
    };

    template <typename Signal>
    explicit SignalRecorder(Signal &signal)
    {
        auto connection = signal.connect([state = m_state](const std::decay_t<Args> &...arguments) {
            const std::lock_guard lock(state->mutex);
            state->emissions.push_back({{arguments...}, std::this_thread::get_id(), nextEventNumber()});
            state->changed.notify_all();
        });
        m_disconnect = [connection]() mutable { connection.disconnect(); };
    }
    ~SignalRecorder() { m_disconnect(); }

    SignalRecorder(const SignalRecorder &) = delete;
    SignalRecorder &operator=(const SignalRecorder &) = delete;

    int count() const
    {
        const std::lock_guard lock(m_state->mutex);
        return static_cast<int>(m_state->emissions.size());
    }

    /// Runs the calling thread's event loop until there are @p count emissions.
    bool waitFor(int wanted, std::chrono::milliseconds limit = waitLimit) const
    {
        return eventually([=] { return count() >= wanted; }, limit);
    }

    /// The same without an event loop: blocks the calling thread.
    bool blockFor(int wanted, std::chrono::milliseconds limit = waitLimit) const
    {
        std::unique_lock lock(m_state->mutex);
        return m_state->changed.wait_for(lock, limit,
                                         [&] { return static_cast<int>(m_state->emissions.size()) >= wanted; });
    }

    Emission emission(int index) const
    {
        const std::lock_guard lock(m_state->mutex);
        return m_state->emissions.at(static_cast<std::size_t>(index));
    }

    template <std::size_t position>
    auto argument(int index) const
    {
        return std::get<position>(emission(index).arguments);
    }

private:
    struct State {
        std::mutex mutex;
        std::condition_variable changed;
        std::vector<Emission> emissions;
    };

    std::shared_ptr<State> m_state = std::make_shared<State>();
    std::function<void()> m_disconnect;
};

template <template <typename, typename...> class Signal, typename Lock, typename... Args>
SignalRecorder(Signal<Lock, Args...> &) -> SignalRecorder<Args...>;

} // namespace tavro::testsupport
