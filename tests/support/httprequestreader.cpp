#include "support/httprequestreader.h"

#include <QList>

#include <algorithm>
#include <utility>

namespace tavro::testsupport {

namespace {

constexpr int maxBodyBytes = 256 * 1024 * 1024;

QByteArray endOfHead()
{
    return QByteArrayLiteral("\r\n\r\n");
}

QList<QByteArray> linesOf(const QByteArray &head)
{
    QList<QByteArray> lines;
    int from = 0;
    for (int end = head.indexOf("\r\n"); end > from; end = head.indexOf("\r\n", from)) {
        lines.append(head.mid(from, end - from));
        from = end + 2;
    }
    return lines;
}

} // namespace

std::optional<HttpRequest> HttpRequestReader::next()
{
    if (!m_error.isEmpty() || (!m_current && !readHead()) || m_buffer.size() < m_bodySize)
        return std::nullopt;
    m_current->body = m_buffer.left(m_bodySize);
    m_buffer.remove(0, m_bodySize);
    return std::exchange(m_current, std::nullopt);
}

bool HttpRequestReader::readHead()
{
    const int end = m_buffer.indexOf(endOfHead());
    if (end < 0)
        return false;
    m_current.emplace();
    m_current->head = m_buffer.left(end + endOfHead().size());
    m_buffer.remove(0, m_current->head.size());
    QList<QByteArray> lines = linesOf(m_current->head);
    if (lines.isEmpty() || !parseStartLine(lines.takeFirst()))
        return fail(QStringLiteral("no request line"));
    const bool readable =
        std::all_of(lines.cbegin(), lines.cend(), [this](const auto &line) { return parseHeader(line); });
    return (readable || fail(QStringLiteral("a header without a colon"))) && parseLength();
}

bool HttpRequestReader::parseStartLine(const QByteArray &line)
{
    const QList<QByteArray> words = line.split(' ');
    if (words.size() != 3 || !words.at(2).startsWith("HTTP/"))
        return false;
    m_current->method = words.at(0);
    m_current->target = words.at(1);
    m_current->version = words.at(2);
    return true;
}

bool HttpRequestReader::parseHeader(const QByteArray &line)
{
    const int colon = line.indexOf(':');
    if (colon <= 0)
        return false;
    m_current->headers.append({line.left(colon), line.mid(colon + 1).trimmed()});
    return true;
}

bool HttpRequestReader::parseLength()
{
    if (m_current->header("Transfer-Encoding"))
        return fail(QStringLiteral("a body without a Content-Length"));
    bool isNumber = true;
    m_bodySize = m_current->header("Content-Length").value_or("0").toInt(&isNumber);
    return (isNumber && m_bodySize >= 0 && m_bodySize <= maxBodyBytes)
        || fail(QStringLiteral("a Content-Length out of range"));
}

bool HttpRequestReader::fail(const QString &why)
{
    m_error = why;
    m_current.reset();
    return false;
}

} // namespace tavro::testsupport
