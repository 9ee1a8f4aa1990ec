#include "openai/transfer.h"

#include "openai/transferfailure.h"
#include "openai/transfersockets.h"

#include <curl/curl.h>
#include <openssl/ssl.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>

namespace tavro::assistantservice {

namespace {

using Outcome = UpstreamReply::Outcome;
using std::chrono::milliseconds;

constexpr milliseconds longestConnecting{5000};
constexpr milliseconds step{50};
constexpr qint64 largestHead = 64 * 1024;
// A body in pieces of one byte takes six for each; TLS wraps it once more.
constexpr qint64 wireBytesPerBodyByte = 32;
constexpr qint64 wireBytesBeside = 256 * 1024;

struct CurlDeleter {
    void operator()(CURL *handle) const { curl_easy_cleanup(handle); }
    void operator()(curl_slist *list) const { curl_slist_free_all(list); }
};

struct MultiDeleter {
    void operator()(CURLM *handle) const { curl_multi_cleanup(handle); }
};

bool initialized()
{
    static const CURLcode code = curl_global_init(CURL_GLOBAL_DEFAULT);
    return code == CURLE_OK;
}

// As all programs on OpenSSL do: the system's authorities, or those that SSL_CERT_FILE and SSL_CERT_DIR name.
CURLcode trustTheSystem(CURL *, void *context, void *)
{
    return SSL_CTX_set_default_verify_paths(static_cast<SSL_CTX *>(context)) == 1 ? CURLE_OK : CURLE_SSL_CERTPROBLEM;
}

class Transfer {
public:
    Transfer(const TransferRequest &request, const Patience &patience);

    UpstreamReply run();

private:
    void setUp();
    void setUpRequest();
    void setUpCallbacks();
    template <typename Value>
    void set(CURLoption option, Value value);
    CURLcode perform();
    bool goesOn();
    bool wastesBytes() const;
    size_t stop(Outcome outcome);
    size_t takeHeader(const QByteArray &line);
    size_t takeBody(const char *data, size_t size);
    curl_socket_t open(const curl_sockaddr &address);
    void finish(CURLcode code);

    static Transfer &from(void *user) { return *static_cast<Transfer *>(user); }

    const TransferRequest &m_request;
    const Patience &m_patience;
    // Before the handles, which close them in the end.
    TransferSockets m_sockets;
    const std::unique_ptr<CURL, CurlDeleter> m_easy;
    const std::unique_ptr<CURLM, MultiDeleter> m_multi;
    std::unique_ptr<curl_slist, CurlDeleter> m_headers;
    std::array<char, CURL_ERROR_SIZE> m_error{};
    std::optional<Outcome> m_stopped;
    bool m_hasStatus = false;
    bool m_hasHead = false;
    qint64 m_headBytes = 0;
    UpstreamReply m_reply;
};

Transfer::Transfer(const TransferRequest &request, const Patience &patience)
    : m_request(request)
    , m_patience(patience)
    , m_easy(initialized() ? curl_easy_init() : nullptr)
    , m_multi(initialized() ? curl_multi_init() : nullptr)
{ }

UpstreamReply Transfer::run()
{
    if (!m_easy || !m_multi) {
        return m_reply;
    }
    setUp();
    setUpRequest();
    setUpCallbacks();
    curl_multi_add_handle(m_multi.get(), m_easy.get());
    const CURLcode code = perform();
    finish(code);
    curl_multi_remove_handle(m_multi.get(), m_easy.get());
    return m_reply;
}

template <typename Value>
void Transfer::set(CURLoption option, Value value)
{
    curl_easy_setopt(m_easy.get(), option, value);
}

void Transfer::setUp()
{
    set(CURLOPT_ERRORBUFFER, m_error.data());
    set(CURLOPT_NOSIGNAL, 1L);
    // A look-up of a name that is given up must not be waited for.
    set(CURLOPT_QUICK_EXIT, 1L);
    set(CURLOPT_PROXY, "");
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    set(CURLOPT_DISALLOW_USERNAME_IN_URL, 1L);
    set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    // Taken, so that its first bytes can be looked at; see takeBody().
    set(CURLOPT_HTTP09_ALLOWED, 1L);
    set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    set(CURLOPT_CAINFO, static_cast<const char *>(nullptr));
    set(CURLOPT_CAPATH, static_cast<const char *>(nullptr));
    set(CURLOPT_SSL_CTX_FUNCTION, &trustTheSystem);
    set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(longestConnecting.count()));
    set(CURLOPT_FRESH_CONNECT, 1L);
    set(CURLOPT_FORBID_REUSE, 1L);
    set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(m_request.largestBody));
}

void Transfer::setUpRequest()
{
    // The address is encoded already.
    set(CURLOPT_PATH_AS_IS, 1L);
    set(CURLOPT_URL, m_request.url.constData());
    set(CURLOPT_USERAGENT, "assistantservice/" ASSISTANTSERVICE_VERSION);
    set(CURLOPT_FOLLOWLOCATION, m_request.mostRedirects > 0 ? 1L : 0L);
    set(CURLOPT_MAXREDIRS, static_cast<long>(m_request.mostRedirects));
    for (const QByteArray &header : m_request.headers) {
        m_headers.reset(curl_slist_append(m_headers.release(), header.constData()));
    }
    set(CURLOPT_HTTPHEADER, m_headers.get());
    if (m_request.isPost) {
        set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(m_request.body.size()));
        set(CURLOPT_POSTFIELDS, m_request.body.constData());
    }
}

void Transfer::setUpCallbacks()
{
    using Write = size_t (*)(char *, size_t, size_t, void *);
    using Open = curl_socket_t (*)(void *, curlsocktype, curl_sockaddr *);
    const Write headed = [](char *data, size_t, size_t size, void *user) {
        return from(user).takeHeader(QByteArray::fromRawData(data, static_cast<int>(size)));
    };
    const Write written = [](char *data, size_t, size_t size, void *user) { return from(user).takeBody(data, size); };
    const Open opened = [](void *user, curlsocktype, curl_sockaddr *address) { return from(user).open(*address); };
    using Close = int (*)(void *, curl_socket_t);
    const Close closed = [](void *user, curl_socket_t socket) { return from(user).m_sockets.close(socket); };
    void *const self = this;
    set(CURLOPT_HEADERFUNCTION, headed);
    set(CURLOPT_HEADERDATA, self);
    set(CURLOPT_WRITEFUNCTION, written);
    set(CURLOPT_WRITEDATA, self);
    set(CURLOPT_OPENSOCKETFUNCTION, opened);
    set(CURLOPT_OPENSOCKETDATA, self);
    set(CURLOPT_CLOSESOCKETFUNCTION, closed);
    set(CURLOPT_CLOSESOCKETDATA, self);
}

CURLcode Transfer::perform()
{
    int running = 1;
    while (curl_multi_perform(m_multi.get(), &running) == CURLM_OK && running > 0 && goesOn()) {
        const auto wait = std::clamp(m_patience.left(), milliseconds(1), step);
        curl_multi_poll(m_multi.get(), nullptr, 0, static_cast<int>(wait.count()), nullptr);
    }
    int left = 0;
    const CURLMsg *const message = curl_multi_info_read(m_multi.get(), &left);
    return message != nullptr ? message->data.result : CURLE_ABORTED_BY_CALLBACK;
}

bool Transfer::goesOn()
{
    if (m_patience.isCancelled()) {
        stop(Outcome::Cancelled);
    } else if (m_patience.isSpent()) {
        stop(Outcome::OutOfTime);
    } else if (wastesBytes()) {
        stop(Outcome::HeadTooLarge);
    }
    return !m_stopped;
}

bool Transfer::wastesBytes() const
{
    return m_sockets.bytesRead() > wireBytesBeside + wireBytesPerBodyByte * m_reply.body.size();
}

size_t Transfer::stop(Outcome outcome)
{
    m_stopped = m_stopped.value_or(outcome);
    return 0;
}

// Interim answers and trailers come here, too.
size_t Transfer::takeHeader(const QByteArray &line)
{
    m_headBytes += line.size();
    if (m_headBytes > largestHead) {
        return stop(Outcome::HeadTooLarge);
    }
    const int colon = line.indexOf(':');
    const QByteArray name = line.left(colon).toLower();
    if (line.startsWith("HTTP/")) {
        m_hasStatus = true;
        m_hasHead = false;
        m_reply.retryAfter.clear();
        m_reply.contentType.clear();
    } else if (line.trimmed().isEmpty()) {
        m_hasHead = true;
    } else if (name == "retry-after") {
        m_reply.retryAfter = line.mid(colon + 1).trimmed();
    } else if (name == "content-type") {
        m_reply.contentType = line.mid(colon + 1).trimmed();
    }
    return static_cast<size_t>(line.size());
}

size_t Transfer::takeBody(const char *data, size_t size)
{
    if (!m_hasStatus) {
        const bool tls = size > 1 && (data[0] == '\x15' || data[0] == '\x16') && data[1] == '\x03';
        return stop(tls ? Outcome::WantsTls : Outcome::NoHttp);
    }
    if (m_reply.body.size() + static_cast<qint64>(size) > m_request.largestBody) {
        return stop(Outcome::TooLarge);
    }
    m_reply.body.append(data, static_cast<int>(size));
    return size;
}

curl_socket_t Transfer::open(const curl_sockaddr &address)
{
    if (m_request.mayConnect && !m_request.mayConnect(classOf(address.addr))) {
        stop(Outcome::NotAllowed);
        return CURL_SOCKET_BAD;
    }
    return m_sockets.open(address);
}

void Transfer::finish(CURLcode code)
{
    if (code != CURLE_OK) {
        const Outcome outcome = outcomeOf(code, m_easy.get(), m_error.data());
        m_reply.outcome = m_stopped.value_or(outcome == Outcome::Broken && !m_hasStatus ? Outcome::Silent : outcome);
        return;
    }
    long status = 0;
    const char *peer = nullptr;
    curl_easy_getinfo(m_easy.get(), CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(m_easy.get(), CURLINFO_PRIMARY_IP, &peer);
    m_reply.status = static_cast<int>(status);
    m_reply.peer = classOf(peer);
    m_reply.outcome = m_hasHead ? Outcome::Answered : Outcome::Broken;
}

} // namespace

UpstreamReply transfer(const TransferRequest &request, const Patience &patience)
{
    return Transfer(request, patience).run();
}

} // namespace tavro::assistantservice
