#include "http/bodyhead.h"

#include <strings.h>

namespace tavro::assistantservice {

namespace {

constexpr char lengthKey[] = "Content-Length";
constexpr char encodingKey[] = "Transfer-Encoding";

ServiceError unclearLength()
{
    return {ErrorCode::BadRequest,
            QStringLiteral("The request must say how long it is: by one Content-Length or in chunks.")};
}

} // namespace

ServiceError bodyTooLarge(qint64 limit)
{
    return {ErrorCode::TooLarge,
            QStringLiteral("The request is larger than %1 bytes. A shorter conversation or a smaller media library may "
                           "help.")
                .arg(limit)};
}

ServiceError checkBodyHead(const httplib::Request &request, qint64 limit)
{
    const size_t lengths = request.get_header_value_count(lengthKey);
    const size_t encodings = request.get_header_value_count(encodingKey);
    if (lengths + encodings != 1) {
        return unclearLength();
    }
    if (encodings == 1) {
        const bool chunked = ::strcasecmp(request.get_header_value(encodingKey).c_str(), "chunked") == 0;
        return chunked ? ServiceError() : unclearLength();
    }
    const std::string text = request.get_header_value(lengthKey);
    if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos) {
        return unclearLength();
    }
    bool fits = false;
    const qint64 length = QByteArray::fromStdString(text).toLongLong(&fits);
    return fits && length <= limit ? ServiceError() : bodyTooLarge(limit);
}

} // namespace tavro::assistantservice
