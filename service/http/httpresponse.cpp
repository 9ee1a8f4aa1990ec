#include "http/httpresponse.h"

#include "http/byterange.h"

#include <microhttpd.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace tavro::assistantservice {

namespace {

using Response = std::unique_ptr<MHD_Response, decltype(&MHD_destroy_response)>;

constexpr size_t blockSize = 64 * 1024;

// A part of a picture that lies in the store. Only the store keeps the bytes: else clients that read slowly would hold
// pictures in memory that have long made room for others.
struct PicturePart {
    std::weak_ptr<const StoredPicture> picture;
    qint64 begin = 0;
    qint64 length = 0;
};

ssize_t readPart(void *data, uint64_t offset, char *target, size_t most)
{
    const PicturePart &part = *static_cast<PicturePart *>(data);
    const std::shared_ptr<const StoredPicture> picture = part.picture.lock();
    if (!picture) {
        return MHD_CONTENT_READER_END_WITH_ERROR;
    }
    const qint64 left =
        part.length - static_cast<qint64>(std::min<uint64_t>(offset, static_cast<uint64_t>(part.length)));
    const qint64 count = std::min(left, static_cast<qint64>(most));
    if (count <= 0) {
        return MHD_CONTENT_READER_END_OF_STREAM;
    }
    std::memcpy(target, picture->bytes.constData() + part.begin + (part.length - left), static_cast<size_t>(count));
    return static_cast<ssize_t>(count);
}

void releasePart(void *part)
{
    delete static_cast<PicturePart *>(part);
}

Response makeResponse(const Reply &reply)
{
    return {MHD_create_response_from_buffer(static_cast<size_t>(reply.body.size()),
                                            const_cast<char *>(reply.body.constData()), MHD_RESPMEM_MUST_COPY),
            &MHD_destroy_response};
}

Response makePartResponse(const Reply &reply, qint64 begin, qint64 length)
{
    auto *const part = new PicturePart{reply.picture, begin, length};
    Response response(
        MHD_create_response_from_callback(static_cast<uint64_t>(length), blockSize, &readPart, part, &releasePart),
        &MHD_destroy_response);
    if (!response) {
        releasePart(part);
    }
    return response;
}

void addHeader(MHD_Response *response, const char *name, const QByteArray &value)
{
    MHD_add_response_header(response, name, value.constData());
}

bool queue(MHD_Connection *connection, const Reply &reply, const Response &response, bool closeAfterwards)
{
    if (!response) {
        return false;
    }
    addHeader(response.get(), MHD_HTTP_HEADER_CONTENT_TYPE, reply.contentType);
    if (closeAfterwards) {
        addHeader(response.get(), MHD_HTTP_HEADER_CONNECTION, "close");
    }
    return MHD_queue_response(connection, static_cast<unsigned int>(reply.status), response.get()) == MHD_YES;
}

qint64 queueBody(MHD_Connection *connection, const Reply &reply, bool closeAfterwards)
{
    return queue(connection, reply, makeResponse(reply), closeAfterwards) ? reply.body.size() : -1;
}

qint64 queuePart(MHD_Connection *connection, const Reply &reply, const ByteRange &part, bool closeAfterwards)
{
    const Response response = makePartResponse(reply, part.begin, part.length);
    if (response) {
        addHeader(response.get(), MHD_HTTP_HEADER_ACCEPT_RANGES, "bytes");
    }
    if (response && part.kind == ByteRange::Kind::Part) {
        addHeader(response.get(), MHD_HTTP_HEADER_CONTENT_RANGE,
                  "bytes " + QByteArray::number(part.begin) + '-' + QByteArray::number(part.begin + part.length - 1)
                      + '/' + QByteArray::number(reply.picture->bytes.size()));
    }
    return queue(connection, reply, response, closeAfterwards) ? part.length : -1;
}

qint64 queueUnsatisfiable(MHD_Connection *connection, Reply &reply, bool closeAfterwards)
{
    const qint64 size = reply.picture->bytes.size();
    reply =
        httpErrorReply({ErrorCode::WrongRange,
                        QStringLiteral("The picture has %1 bytes; none of those asked for is among them.").arg(size)});
    const Response response = makeResponse(reply);
    if (response) {
        addHeader(response.get(), MHD_HTTP_HEADER_CONTENT_RANGE, "bytes */" + QByteArray::number(size));
    }
    return queue(connection, reply, response, closeAfterwards) ? reply.body.size() : -1;
}

// A range counts for GET alone. With a condition ("If-Range") it would count only where the condition holds, and the
// service gives out nothing that one could be made of.
ByteRange wantedRange(const HttpHead &head, qint64 size)
{
    const bool counts = head.method == "GET" && head.count("If-Range") == 0;
    return readByteRange(counts ? head.joined("Range") : QByteArray(), size);
}

} // namespace

qint64 queueReply(MHD_Connection *connection, const HttpHead &head, Reply &reply, bool closeAfterwards)
{
    if (!reply.picture) {
        return queueBody(connection, reply, closeAfterwards);
    }
    ByteRange range = wantedRange(head, reply.picture->bytes.size());
    switch (range.kind) {
    case ByteRange::Kind::Unsatisfiable:
        return queueUnsatisfiable(connection, reply, closeAfterwards);
    case ByteRange::Kind::Part:
        reply.status = MHD_HTTP_PARTIAL_CONTENT;
        break;
    case ByteRange::Kind::Whole:
        range.length = reply.picture->bytes.size();
        break;
    }
    return queuePart(connection, reply, range, closeAfterwards);
}

} // namespace tavro::assistantservice
