#pragma once

#include "aicontroller/decodequeue.h"
#include "common/taskreceiver.h"

#include <memory>

namespace tavro::aiassistant {

/// Decodes pictures off the caller's thread: a large one takes far longer than a frame.
///
/// The results come back in the decoder's own thread, in the order in which the pictures were given.
class PictureDecoder : public TaskReceiver {
public:
    using Done = DecodeQueue::Done;

    explicit PictureDecoder(QObject *parent = nullptr);

    /// Gives up the picture that is being decoded and drops the others. No result comes any more.
    ~PictureDecoder() override;

    /// Decodes @p bytes, whose format is told from the data, and calls @p done with the picture, null where the bytes
    /// are none. Empty bytes are no picture and take their turn without any work; with no one ahead, @p done is called
    /// at once.
    void decode(const QByteArray &bytes, Done done);

private:
    void finish(const QImage &picture, const Done &done);

    const std::shared_ptr<DecodeQueue> m_queue;
    int m_waiting = 0; ///< pictures whose result has not come back
};

} // namespace tavro::aiassistant
