#include "aicontroller/rasterpicture.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QIODevice>
#include <QImageReader>
#include <QSize>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>

namespace tavro::aiassistant {

namespace {

// A few bytes can announce a picture that would take all memory. The largest one that the service makes has 33 million
// pixels.
constexpr qint64 mostPixels = 134'217'728;
constexpr std::chrono::seconds longestDecode{30};

/// The bytes of a picture, which end early where nobody wants it any more. It is no QBuffer, past whose functions some
/// readers would reach.
class PictureBytes : public QIODevice {
public:
    PictureBytes(const QByteArray &bytes, const std::atomic<bool> &isAbandoned)
        : m_bytes(bytes)
        , m_isAbandoned(isAbandoned)
    {
        open(ReadOnly | Unbuffered);
    }

    qint64 size() const override { return m_bytes.size(); }

    bool seek(qint64 position) override
    {
        m_at = position;
        return position <= size() && QIODevice::seek(position);
    }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        if (m_isAbandoned || m_deadline.hasExpired())
            return -1;
        const qint64 count = std::clamp<qint64>(size() - m_at, 0, maxSize);
        std::memcpy(data, m_bytes.constData() + m_at, static_cast<std::size_t>(count));
        m_at += count;
        return count;
    }

    qint64 writeData(const char * /*data*/, qint64 /*size*/) override { return -1; }

private:
    const QByteArray &m_bytes;
    const std::atomic<bool> &m_isAbandoned;
    const QDeadlineTimer m_deadline{longestDecode};
    qint64 m_at = 0;
};

// Drawings are programs that can take any time; the rest nobody sends.
bool isRaster(const QByteArray &format)
{
    static constexpr std::array formats{"png", "jpeg", "gif", "bmp", "webp", "tiff"};
    return std::find(formats.begin(), formats.end(), format) != formats.end();
}

// Qt tells the size of a GIF's first frame, but makes a picture of the whole screen that the frame lies on.
QSize screenOf(const QByteArray &bytes, const QByteArray &format)
{
    constexpr int offset = 6;
    if (format != "gif" || bytes.size() < offset + 4)
        return {1, 1};
    const auto number = [&bytes](int at) { return qFromLittleEndian<quint16>(bytes.constData() + at); };
    // A screen without a size takes that of the frame.
    return {qMax<int>(1, number(offset)), number(offset + 2)};
}

// Of a BMP that is stored from the top the height is negative.
bool isBounded(const QSize &size)
{
    return size.width() > 0 && qAbs(qint64{size.width()} * size.height()) <= mostPixels;
}

} // namespace

QImage decodeRaster(const QByteArray &bytes, const std::atomic<bool> &isAbandoned)
{
    PictureBytes device(bytes, isAbandoned);
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    const QByteArray format = reader.format();
    if (!isRaster(format) || !isBounded(reader.size()) || !isBounded(screenOf(bytes, format)))
        return {};
    QImage picture = reader.read();
    // The formats of which a pixmap is made without a further copy on the thread that needs it.
    picture.convertTo(picture.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    return picture;
}

} // namespace tavro::aiassistant
