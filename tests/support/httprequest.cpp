#include "support/httprequest.h"

#include <QJsonDocument>

#include <algorithm>

namespace tavro::testsupport {

namespace {

auto isNamed(const QByteArray &name)
{
    return [name](const HttpRequest::Header &header) { return header.first.compare(name, Qt::CaseInsensitive) == 0; };
}

} // namespace

std::optional<QByteArray> HttpRequest::header(const QByteArray &name) const
{
    const auto found = std::find_if(headers.cbegin(), headers.cend(), isNamed(name));
    return found == headers.cend() ? std::nullopt : std::make_optional(found->second);
}

int HttpRequest::headerCount(const QByteArray &name) const
{
    return static_cast<int>(std::count_if(headers.cbegin(), headers.cend(), isNamed(name)));
}

QJsonObject HttpRequest::json() const
{
    return QJsonDocument::fromJson(body).object();
}

} // namespace tavro::testsupport
