#include "aicontroller/transfer.h"

#include "common/logtext.h"

#include <QNetworkRequest>
#include <QVariant>

#include <utility>

namespace tavro::aiassistant {

namespace {

// More than this does not wait in Qt for the next turn of the event loop.
constexpr qint64 readBufferBytes = 256 * 1024;

bool isRedirect(int status)
{
    return status >= 300 && status < 400;
}

QString redirectText(const QNetworkReply &reply, int status)
{
    const QString target = loggableAddress(QString::fromUtf8(reply.rawHeader("Location")));
    return QStringLiteral("answered with status %1, which leads to %2 and is not followed")
        .arg(status)
        .arg(target.isEmpty() ? QStringLiteral("nowhere") : target);
}

QByteArray encodingOf(const QNetworkReply &reply)
{
    const QByteArray encoding = reply.rawHeader("Content-Encoding").trimmed().toLower();
    return encoding == "identity" ? QByteArray() : encoding;
}

QString packedText(const QByteArray &encoding)
{
    return QStringLiteral("the reply is packed as %1, which was not asked for")
        .arg(loggable(QString::fromLatin1(encoding)));
}

QString tooLargeText(qint64 limit)
{
    return QStringLiteral("the reply is larger than %1 MiB").arg(limit / (1024 * 1024));
}

// 0 where the length is not announced.
qint64 announcedBytes(const QNetworkReply &reply)
{
    return qMax<qint64>(0, reply.header(QNetworkRequest::ContentLengthHeader).toLongLong());
}

} // namespace

Transfer::Transfer(QNetworkReply *reply, const TransferLimits &limits, Begun begun, Done done)
    : m_reply(reply)
    , m_limits(limits)
    , m_begun(std::move(begun))
    , m_done(std::move(done))
{
    // A post has been queued only, and hears of the size once it has begun.
    QMetaObject::invokeMethod(
        this, [this] { m_reply->setReadBufferSize(readBufferBytes); }, Qt::QueuedConnection);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &Transfer::checkHead);
    connect(m_reply, &QNetworkReply::readyRead, this, &Transfer::takeBytes);
    connect(m_reply, &QNetworkReply::finished, this, &Transfer::onFinished);
}

Transfer::~Transfer()
{
    if (!m_reply)
        return;
    m_reply->disconnect(this);
    m_reply->abort();
    m_reply->deleteLater();
}

void Transfer::checkHead()
{
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QByteArray encoding = encodingOf(*m_reply);
    if (hasTooManyHeaders())
        refuse(QNetworkReply::ProtocolFailure, QStringLiteral("the reply has too many headers"));
    else if (isRedirect(status))
        refuse(QNetworkReply::TooManyRedirectsError, redirectText(*m_reply, status));
    else if (!encoding.isEmpty())
        refuse(QNetworkReply::UnknownContentError, packedText(encoding));
    else if (announcedBytes(*m_reply) > m_limits.bodyBytes)
        refuse(QNetworkReply::UnknownContentError, tooLargeText(m_limits.bodyBytes));
    else
        begin(status);
}

void Transfer::begin(int status)
{
    m_outcome.body.reserve(static_cast<int>(announcedBytes(*m_reply)));
    m_begun(status);
}

bool Transfer::hasTooManyHeaders() const
{
    const QList<QNetworkReply::RawHeaderPair> &headers = m_reply->rawHeaderPairs();
    qint64 bytes = 0;
    for (const auto &[name, value] : headers)
        bytes += name.size() + value.size();
    return headers.size() > m_limits.headers || bytes > m_limits.headerBytes;
}

void Transfer::takeBytes()
{
    if (m_outcome.body.size() + m_reply->bytesAvailable() > m_limits.bodyBytes)
        refuse(QNetworkReply::UnknownContentError, tooLargeText(m_limits.bodyBytes));
    else
        m_outcome.body.append(m_reply->readAll());
}

void Transfer::onFinished()
{
    if (!m_outcome.isRefused)
        takeBytes();
    if (!m_outcome.isRefused) {
        m_outcome.error = m_reply->error();
        m_outcome.errorText = withoutCredentials(m_reply->errorString());
    }
    end();
}

void Transfer::refuse(QNetworkReply::NetworkError error, const QString &text)
{
    m_outcome.isRefused = true;
    m_outcome.error = error;
    m_outcome.errorText = text;
    m_outcome.body.clear();
    // Tells of its end, here and now.
    m_reply->abort();
}

void Transfer::end()
{
    m_reply->disconnect(this);
    m_done(std::move(m_outcome));
}

} // namespace tavro::aiassistant
