#include "http/bodyhead.h"

#include "http/httphead.h"

#include <algorithm>

namespace tavro::assistantservice {

namespace {

constexpr char lengthKey[] = "Content-Length";
constexpr char encodingKey[] = "Transfer-Encoding";

ServiceError unclearLength()
{
    return {ErrorCode::BadRequest,
            QStringLiteral("The request must say how long it is: by one Content-Length or in chunks.")};
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// "Content-Length : 5" is a length to some readers and an unknown header to others.
bool hasUnclearName(const HttpHead &head)
{
    return std::any_of(head.headers.begin(), head.headers.end(), [](const auto &header) {
        return std::any_of(header.first.begin(), header.first.end(), [](char c) { return c <= ' ' || c > '~'; });
    });
}

} // namespace

ServiceError bodyTooLarge(qint64 limit)
{
    return {ErrorCode::TooLarge,
            QStringLiteral("The request is larger than %1 bytes. A shorter conversation or a smaller media library may "
                           "help.")
                .arg(limit)};
}

ServiceError checkBodyHead(const HttpHead &head, qint64 limit)
{
    const int encodings = head.count(encodingKey);
    if (head.count(lengthKey) + encodings != 1 || hasUnclearName(head)) {
        return unclearLength();
    }
    if (encodings == 1) {
        return head.value(encodingKey).toLower() == "chunked" ? ServiceError() : unclearLength();
    }
    const QByteArray text = head.value(lengthKey);
    if (text.isEmpty() || !std::all_of(text.begin(), text.end(), isDigit)) {
        return unclearLength();
    }
    bool fits = false;
    const qint64 length = text.toLongLong(&fits);
    return fits && length <= limit ? ServiceError() : bodyTooLarge(limit);
}

} // namespace tavro::assistantservice
