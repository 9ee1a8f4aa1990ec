#include "openai/upstreampictures.h"

#include "builtin/picturewish.h"
#include "openai/picturefitting.h"
#include "openai/picturehost.h"
#include "openai/upstreamerror.h"
#include "pictures/picturepainter.h"

namespace tavro::assistantservice {

namespace {

// A picture of 7680 x 4320 in base64, were it not compressed at all.
constexpr qint64 largestReply = 192 * 1024 * 1024;

QString promptOf(const PictureRequest &request)
{
    return request.style.isEmpty() ? request.prompt
                                   : QStringLiteral("%1\nStyle: %2").arg(request.prompt, request.style);
}

ServiceError noPicture(const UpstreamAddress &address)
{
    return {ErrorCode::UpstreamFailed,
            QStringLiteral("What the model's server %1 sent is not a picture.").arg(address.text())};
}

} // namespace

UpstreamPictures::UpstreamPictures(PictureSettings settings)
    : m_settings(std::move(settings))
    , m_client(m_settings.address, m_settings.key)
{ }

PictureResult UpstreamPictures::draw(const PictureRequest &request, const std::atomic<bool> &cancelled) const
{
    const Patience patience(m_settings.limit, cancelled);
    PictureResult result;
    const UpstreamReply reply = ask(request, patience);
    std::optional<PictureReply> made = reply.isGood() ? readPictureReply(reply.body) : std::nullopt;
    if (!made) {
        result.error = reply.isGood() ? unusableAnswer(reply, m_settings.address, "data")
                                      : upstreamError(reply, m_settings.address, m_settings.model);
        return result;
    }
    result.error = fetch(*made, reply.peer, patience);
    if (result.error) {
        return result;
    }
    QImage picture = decodedPicture(made->bytes);
    if (picture.isNull()) {
        result.error = noPicture(m_settings.address);
        return result;
    }
    picture = fitted(picture, request.size);
    stampLogo(picture, request);
    result.bytes = encodePng(picture, cancelled);
    if (result.bytes.isEmpty()) {
        result.error = noPicture(m_settings.address);
        return result;
    }
    result.mediaType = QByteArrayLiteral("image/png");
    result.description = made->revisedPrompt.isEmpty() ? request.prompt : made->revisedPrompt;
    addPlayback(result, request.prompt);
    return result;
}

// The format is asked for first: an address may have gone before it is fetched. Servers that know no choice refuse the
// member, before anything is made.
UpstreamReply UpstreamPictures::ask(const PictureRequest &request, const Patience &patience) const
{
    const QSize size = nearestSize(request.size, m_settings.sizes);
    const QString format = QStringLiteral("response_format");
    QJsonObject body{{QStringLiteral("prompt"), promptOf(request)},
                     {QStringLiteral("n"), 1},
                     {QStringLiteral("size"), QStringLiteral("%1x%2").arg(size.width()).arg(size.height())},
                     {format, QStringLiteral("b64_json")}};
    if (!m_settings.model.isEmpty()) {
        body.insert(QStringLiteral("model"), m_settings.model);
    }
    const QString target = m_settings.address.target("/images/generations");
    UpstreamReply reply = m_client.post(target, body, largestReply, patience);
    if (refusesMember(reply, "response_format")) {
        body.remove(format);
        reply = m_client.post(target, body, largestReply, patience);
    }
    return reply;
}

ServiceError UpstreamPictures::fetch(PictureReply &made, AddressClass upstream, const Patience &patience)
{
    if (!made.bytes.isEmpty()) {
        return {};
    }
    const UpstreamReply fetched = fetchPicture(made.url, upstream, largestReply, patience);
    if (!fetched.isGood()) {
        return pictureHostError(fetched, made.url);
    }
    made.bytes = fetched.body;
    return {};
}

} // namespace tavro::assistantservice
