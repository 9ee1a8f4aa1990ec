#include "http/httphead.h"

#include <microhttpd.h>

#include <QByteArrayList>

#include <algorithm>

namespace tavro::assistantservice {

namespace {

MHD_Result takeHeader(void *head, MHD_ValueKind, const char *name, size_t nameSize, const char *value, size_t valueSize)
{
    const auto bytes = [](const char *data, size_t size) { return QByteArray(data, static_cast<int>(size)); };
    // Blanks around a value are not a part of it; the library leaves those behind it.
    static_cast<HttpHead *>(head)->headers.append({bytes(name, nameSize), bytes(value, valueSize).trimmed()});
    return MHD_YES;
}

bool isNamed(const QByteArray &header, const char *name)
{
    return qstricmp(header.constData(), name) == 0;
}

} // namespace

QByteArray HttpHead::value(const char *name) const
{
    const auto found = std::find_if(headers.begin(), headers.end(),
                                    [name](const auto &header) { return isNamed(header.first, name); });
    return found == headers.end() ? QByteArray() : found->second;
}

QByteArray HttpHead::joined(const char *name) const
{
    QByteArrayList values;
    for (const auto &[key, value] : headers) {
        if (isNamed(key, name)) {
            values.append(value);
        }
    }
    return values.join(',');
}

int HttpHead::count(const char *name) const
{
    return static_cast<int>(std::count_if(headers.begin(), headers.end(),
                                          [name](const auto &header) { return isNamed(header.first, name); }));
}

bool HttpHead::hasBody() const
{
    return count("Transfer-Encoding") > 0 || (count("Content-Length") > 0 && value("Content-Length") != "0");
}

HttpHead readHead(MHD_Connection *connection, const char *method, const char *path)
{
    HttpHead head;
    head.method = method;
    head.path = path;
    MHD_get_connection_values_n(connection, MHD_HEADER_KIND, &takeHeader, &head);
    return head;
}

} // namespace tavro::assistantservice
