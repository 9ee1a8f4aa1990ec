#include "localservice.h"

#include "serviceclient.h"
#include "servicelog.h"

#include <QUrl>

using namespace tavro::assistantservice;

TextResult CountedBytesEngine::answer(const TextRequest &request, const std::atomic<bool> &) const
{
    TextResult result;
    result.answer = QString::number(request.messages.last().content.size());
    return result;
}

PictureResult CountedBytesEngine::draw(const PictureRequest &request, const std::atomic<bool> &) const
{
    PictureResult result;
    result.bytes = bytes(request.prompt.toInt());
    result.mediaType = QByteArrayLiteral("image/png");
    return result;
}

QByteArray CountedBytesEngine::bytes(int count)
{
    // A prime, so that no two places that lie a power of two apart look the same.
    constexpr int period = 251;
    QByteArray bytes(count, Qt::Uninitialized);
    char *const data = bytes.data();
    for (int i = 0; i < count; ++i) {
        data[i] = static_cast<char>(i % period);
    }
    return bytes;
}

LocalService::LocalService(const AssistantSettings &assistant, const HttpSettings &http)
    : m_assistant(assistant, std::make_unique<CountedBytesEngine>())
    , m_server(http, m_assistant)
    , m_port(m_server.bind("127.0.0.1", 0))
{
    setLogLevel(QStringLiteral("off"));
    m_server.start(CallerRules({"127.0.0.1", {}, {}}));
}

QByteArray LocalService::makePicture(int bytes)
{
    const QJsonObject reply = ServiceClient(m_port).picture(pictureWish(QByteArray::number(bytes)));
    return QUrl(firstAnswerOf(reply)).path().toLatin1();
}
