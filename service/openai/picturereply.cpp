#include "openai/picturereply.h"

#include "openai/plaintext.h"
#include "openai/upstreamjson.h"

#include <QBuffer>
#include <QImageReader>
#include <QJsonArray>

namespace tavro::assistantservice {

namespace {

// A few bytes can announce a picture that would take all memory.
constexpr qint64 maxPixels = 134'217'728;
constexpr int longestPrompt = 1000;

QUrl webAddress(const QString &text)
{
    const QUrl url(text, QUrl::StrictMode);
    const bool web = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    return url.isValid() && web && !url.host().isEmpty() && url.userInfo().isEmpty() ? url : QUrl();
}

// Servers break the lines, or use the alphabet that is made for addresses.
QByteArray inOneAlphabet(const QStringRef &text)
{
    QByteArray base64;
    base64.reserve(text.size());
    for (const QChar c : text) {
        if (c == QLatin1Char('-')) {
            base64 += '+';
        } else if (c == QLatin1Char('_')) {
            base64 += '/';
        } else if (!c.isSpace()) {
            base64 += c.unicode() < 0x80 ? c.toLatin1() : '!';
        }
    }
    return base64;
}

// Some servers send a data address in place of the bare bytes.
QByteArray decodedBase64(const QString &text)
{
    const int comma = text.startsWith(QLatin1String("data:")) ? text.indexOf(QLatin1Char(',')) : -1;
    const auto bytes =
        QByteArray::fromBase64Encoding(inOneAlphabet(text.midRef(comma + 1)), QByteArray::AbortOnBase64DecodingErrors);
    return bytes ? *bytes : QByteArray();
}

} // namespace

std::optional<PictureReply> readPictureReply(const QByteArray &body)
{
    const QJsonObject root = readUpstreamObject(body);
    const QJsonObject picture = root.value(QLatin1String("data")).toArray().at(0).toObject();
    const QString address = picture.value(QLatin1String("url")).toString();
    PictureReply reply;
    reply.revisedPrompt = plainLine(picture.value(QLatin1String("revised_prompt")).toString(), longestPrompt);
    reply.bytes = decodedBase64(picture.value(QLatin1String("b64_json")).toString());
    if (reply.bytes.isEmpty() && address.startsWith(QLatin1String("data:"))) {
        reply.bytes = decodedBase64(address);
    }
    if (reply.bytes.isEmpty()) {
        reply.url = webAddress(address);
    }
    return reply.bytes.isEmpty() && reply.url.isEmpty() ? std::nullopt : std::optional(reply);
}

QImage decodedPicture(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (qint64{size.width()} * size.height() > maxPixels) {
        return {};
    }
    QImage picture = reader.read();
    // Some formats cannot be painted on.
    picture.convertTo(picture.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    return picture;
}

} // namespace tavro::assistantservice
