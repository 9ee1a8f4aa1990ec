#include "openai/transferfailure.h"

#include <openssl/x509_vfy.h>

#include <QByteArray>

#include <algorithm>
#include <initializer_list>

namespace tavro::assistantservice {

namespace {

using Outcome = UpstreamReply::Outcome;

bool saysAny(const QByteArray &text, std::initializer_list<const char *> parts)
{
    return std::any_of(parts.begin(), parts.end(), [&](const char *part) { return text.contains(part); });
}

// libcurl compares the names by itself, once OpenSSL has found the certificate good and before it notes that.
Outcome certificateFailure(CURL *handle)
{
    long verified = X509_V_ERR_UNSPECIFIED;
    curl_easy_getinfo(handle, CURLINFO_SSL_VERIFYRESULT, &verified);
    switch (verified) {
    case X509_V_ERR_UNSPECIFIED:
        return Outcome::WrongName;
    case X509_V_ERR_CERT_HAS_EXPIRED:
    case X509_V_ERR_CERT_NOT_YET_VALID:
        return Outcome::OutOfDate;
    default:
        return Outcome::NotTrusted;
    }
}

// OpenSSL tells these apart in words only.
Outcome handshakeFailure(const QByteArray &text)
{
    if (saysAny(text, {"unsupported protocol", "alert protocol version"})) {
        return Outcome::TlsTooOld;
    }
    if (saysAny(text, {"wrong version number", "packet length too long", "http request"})) {
        return Outcome::NoTls;
    }
    return Outcome::TlsFailed;
}

Outcome receivingFailure(const QByteArray &text)
{
    if (saysAny(text, {"Too large response headers"})) {
        return Outcome::HeadTooLarge;
    }
    return saysAny(text, {"chunked-encoding"}) ? Outcome::NoHttp : Outcome::Broken;
}

} // namespace

UpstreamReply::Outcome outcomeOf(CURLcode code, CURL *handle, const char *text)
{
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return Outcome::NameUnknown;
    case CURLE_COULDNT_CONNECT:
    case CURLE_OPERATION_TIMEDOUT:
        return Outcome::NotConnected;
    case CURLE_PEER_FAILED_VERIFICATION:
        return certificateFailure(handle);
    case CURLE_SSL_CONNECT_ERROR:
        return handshakeFailure(text);
    case CURLE_RECV_ERROR:
        return receivingFailure(text);
    // A line of the head beyond libcurl's own limit ends so.
    case CURLE_OUT_OF_MEMORY:
        return Outcome::HeadTooLarge;
    case CURLE_FILESIZE_EXCEEDED:
        return Outcome::TooLarge;
    case CURLE_TOO_MANY_REDIRECTS:
        return Outcome::TooManyRedirects;
    // Sent on to what is not of the web, or with somebody's name and password.
    case CURLE_URL_MALFORMAT:
    case CURLE_LOGIN_DENIED:
        return Outcome::NotAllowed;
    case CURLE_UNSUPPORTED_PROTOCOL:
        return saysAny(text, {"Protocol"}) ? Outcome::NotAllowed : Outcome::NoHttp;
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
        return Outcome::NoHttp;
    default:
        return Outcome::Broken;
    }
}

} // namespace tavro::assistantservice
