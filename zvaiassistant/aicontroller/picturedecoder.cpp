#include "aicontroller/picturedecoder.h"

#include <utility>

namespace tavro::aiassistant {

PictureDecoder::PictureDecoder(QObject *parent)
    : TaskReceiver(parent)
    , m_queue(std::make_shared<DecodeQueue>(*this))
{ }

PictureDecoder::~PictureDecoder()
{
    m_queue->abandon();
}

void PictureDecoder::decode(const QByteArray &bytes, Done done)
{
    if (bytes.isEmpty() && m_waiting == 0) {
        done({});
        return;
    }
    ++m_waiting;
    m_queue->add(bytes, [this, done = std::move(done)](const QImage &picture) { finish(picture, done); });
}

void PictureDecoder::finish(const QImage &picture, const Done &done)
{
    --m_waiting;
    done(picture);
}

} // namespace tavro::aiassistant
