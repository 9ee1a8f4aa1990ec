#pragma once

#include <memory>
#include <string>
#include <unordered_map>

namespace tavro::aiassistant {

class TaskQueue;

/// A blocking HTTP client for JSON: a call returns when the reply is there, or after 10 s.
///
/// Its network manager lives on a worker thread; get() and post() are to be called there, and refuse to work on any
/// other thread. They run a local event loop (without user input), so what is posted to objects of that thread is
/// delivered meanwhile. An application object must exist. Separate wrappers may be used on separate threads at once.
///
/// The wrapper must be destroyed while the worker runs its queue, or once that queue is closed or gone: it waits for
/// the worker to delete the manager. Not while a call of its is running.
class HttpClientWrapper {
public:
    struct Result {
        bool ok = false; ///< the status was 200, and the body does not contain "error" with its quotation marks
        std::string body; ///< the reply's body where ok, else empty
    };

    using Headers = std::unordered_map<std::string, std::string>;

    HttpClientWrapper();
    ~HttpClientWrapper();

    HttpClientWrapper(const HttpClientWrapper &) = delete;
    HttpClientWrapper &operator=(const HttpClientWrapper &) = delete;

    /// Makes the network manager on the thread that runs @p worker, and waits until it is there. The worker is not kept
    /// alive. A second call takes a new manager in place of the first.
    /// Throws std::future_error (no_state) where the worker is null, closed, or is closed meanwhile.
    void init(std::shared_ptr<TaskQueue> worker);

    /// Fetches @p url with the raw headers @p headers. With @p log, the body goes to the host's log. Time-outs, errors
    /// and refusals (a header with a line break or a NUL in it) are logged in any case. Throws nothing.
    Result get(const std::string &url, const Headers &headers, bool log);

    /// Posts the bytes of @p body, which are JSON: "Accept" and "Content-Type" are set by the wrapper, over values in
    /// @p headers. With @p log the request goes to the host's log as well, with all its headers. Else as get().
    Result post(const std::string &url, const Headers &headers, const std::string &body, bool log);

private:
    class Private;
    std::unique_ptr<Private> d;
    friend struct HttpClientWrapperAccess;
};

} // namespace tavro::aiassistant
