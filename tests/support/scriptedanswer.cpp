#include "support/scriptedanswer.h"

#include <QJsonDocument>

namespace tavro::testsupport {

namespace {

template <typename Change>
ScriptedAnswer changed(ScriptedAnswer answer, Change change)
{
    change(answer);
    return answer;
}

} // namespace

ScriptedAnswer ScriptedAnswer::json(const QJsonObject &object)
{
    return bytes(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

ScriptedAnswer ScriptedAnswer::bytes(const QByteArray &body, const QByteArray &contentType)
{
    ScriptedAnswer answer;
    answer.m_body = ScriptedBody(body);
    answer.m_headers.append({"Content-Type", contentType});
    return answer;
}

ScriptedAnswer ScriptedAnswer::large(const QByteArray &beginning, char filler, qint64 count, const QByteArray &end)
{
    ScriptedAnswer answer;
    answer.m_body = ScriptedBody(beginning, filler, count, end);
    return answer;
}

ScriptedAnswer ScriptedAnswer::endless()
{
    return large({}, 'x', ScriptedBody::endless, {}).chunked();
}

ScriptedAnswer ScriptedAnswer::status(int code)
{
    return ScriptedAnswer().withStatus(code);
}

ScriptedAnswer ScriptedAnswer::redirect(int code, const QByteArray &location)
{
    return status(code).withHeader("Location", location);
}

ScriptedAnswer ScriptedAnswer::drop()
{
    return withoutHead({}, Ending::Close);
}

ScriptedAnswer ScriptedAnswer::reset()
{
    return withoutHead({}, Ending::Reset);
}

ScriptedAnswer ScriptedAnswer::garbage(const QByteArray &bytes)
{
    return withoutHead(bytes, Ending::Close);
}

ScriptedAnswer ScriptedAnswer::withStatus(int code) const
{
    return changed(*this, [=](ScriptedAnswer &answer) { answer.m_status = code; });
}

ScriptedAnswer ScriptedAnswer::withHeader(const QByteArray &name, const QByteArray &value) const
{
    return changed(*this, [&](ScriptedAnswer &answer) { answer.m_headers.append({name, value}); });
}

ScriptedAnswer ScriptedAnswer::withHeaders(int count) const
{
    return changed(*this, [=](ScriptedAnswer &answer) {
        for (int number = 1; number <= count; ++number)
            answer.m_headers.append({"X-" + QByteArray::number(number), "value"});
    });
}

ScriptedAnswer ScriptedAnswer::chunked() const
{
    return changed(*this, [](ScriptedAnswer &answer) { answer.m_framing = Framing::Chunked; });
}

ScriptedAnswer ScriptedAnswer::untilClose() const
{
    return changed(*this, [](ScriptedAnswer &answer) {
        answer.m_framing = Framing::UntilClose;
        answer.m_ending = Ending::Close;
    });
}

ScriptedAnswer ScriptedAnswer::held() const
{
    return heldAfter(-1);
}

ScriptedAnswer ScriptedAnswer::heldAfter(qint64 bodyBytes) const
{
    return changed(*this, [=](ScriptedAnswer &answer) { answer.m_hold = bodyBytes; });
}

ScriptedAnswer ScriptedAnswer::thenClose() const
{
    return changed(*this, [](ScriptedAnswer &answer) { answer.m_ending = Ending::Close; });
}

ScriptedAnswer ScriptedAnswer::cutAfter(qint64 bodyBytes) const
{
    return changed(thenClose(), [=](ScriptedAnswer &answer) { answer.m_cut = bodyBytes; });
}

ScriptedAnswer ScriptedAnswer::resetAfter(qint64 bodyBytes) const
{
    return changed(cutAfter(bodyBytes), [](ScriptedAnswer &answer) { answer.m_ending = Ending::Reset; });
}

QByteArray ScriptedAnswer::head() const
{
    if (m_framing == Framing::Bare)
        return {};
    QByteArray head = "HTTP/1.1 " + QByteArray::number(m_status) + " Scripted\r\n";
    for (const HttpRequest::Header &header : m_headers)
        head += header.first + ": " + header.second + "\r\n";
    if (m_framing == Framing::Chunked)
        head += "Transfer-Encoding: chunked\r\n";
    else if (m_framing == Framing::UntilClose)
        head += "Connection: close\r\n";
    else if (m_framing == Framing::ContentLength && !has("Content-Length"))
        head += "Content-Length: " + QByteArray::number(m_body.size()) + "\r\n";
    return head + "\r\n";
}

ScriptedAnswer ScriptedAnswer::withoutHead(const QByteArray &bytes, Ending ending)
{
    ScriptedAnswer answer;
    answer.m_body = ScriptedBody(bytes);
    answer.m_framing = Framing::Bare;
    answer.m_ending = ending;
    return answer;
}

bool ScriptedAnswer::has(const QByteArray &name) const
{
    for (const HttpRequest::Header &header : m_headers) {
        if (header.first.compare(name, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

} // namespace tavro::testsupport
