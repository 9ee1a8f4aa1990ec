#include "openai/picturehost.h"

#include "openai/transferlog.h"
#include "openai/upstreamerror.h"

namespace tavro::assistantservice {

namespace {

constexpr int mostRedirects = 5;

bool mayBeAt(AddressClass place, AddressClass upstream)
{
    return place == AddressClass::Public || (place == upstream && place != AddressClass::Forbidden);
}

QString statusText(int status, const QString &host)
{
    return status == 404 || status == 410
        ? QStringLiteral("The picture is not at the %1 (any more). Please ask for it again.").arg(host)
        : QStringLiteral("The %1 answered with status %2 in place of the picture.").arg(host).arg(status);
}

} // namespace

UpstreamReply fetchPicture(const QUrl &url, AddressClass upstream, qint64 largest, const Patience &patience)
{
    TransferRequest request;
    request.url = url.toEncoded(QUrl::RemoveFragment);
    request.headers = {"Accept: image/*"};
    request.largestBody = largest;
    request.mostRedirects = mostRedirects;
    request.mayConnect = [upstream](AddressClass place) { return mayBeAt(place, upstream); };
    return loggedTransfer(request, url.path(QUrl::FullyEncoded), patience);
}

ServiceError pictureHostError(const UpstreamReply &reply, const QUrl &url)
{
    const QString host = QStringLiteral("picture's host ")
        + url.adjusted(QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment).toString(QUrl::FullyEncoded);
    return reply.isAnswered() ? ServiceError{ErrorCode::UpstreamFailed, statusText(reply.status, host)}
                              : unansweredError(reply.outcome, host);
}

} // namespace tavro::assistantservice
