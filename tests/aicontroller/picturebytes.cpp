#include "picturebytes.h"

#include <QBuffer>
#include <QImage>

namespace {

// A generator of its own: the same bytes in every run.
class Noise {
public:
    quint32 next()
    {
        m_state = m_state * 1664525U + 1013904223U;
        return m_state;
    }

private:
    quint32 m_state = 1;
};

QByteArray written(const QImage &image, const char *format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QBuffer::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

} // namespace

QByteArray picturebytes::encoded(const char *format, QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    return written(image, format);
}

QByteArray picturebytes::noisyPng(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    Noise noise;
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            line[x] = 0xff000000U | (noise.next() >> 8U);
    }
    return written(image, "png");
}

QByteArray picturebytes::transparentPng()
{
    QImage image(5, 5, QImage::Format_ARGB32);
    image.fill(qRgba(200, 100, 50, 128));
    return written(image, "png");
}

QByteArray picturebytes::blackAndWhitePng(QSize size)
{
    QImage image(size, QImage::Format_Mono);
    image.fill(0);
    return written(image, "png");
}

QByteArray picturebytes::pngHeaderOnly(QSize size)
{
    constexpr int headerBytes = 33;
    constexpr int widthOffset = 16;
    constexpr int checksumOffset = 29;
    QByteArray header = encoded("png").left(headerBytes);
    const auto putNumber = [&header](int offset, quint32 number) {
        for (int byte = 0; byte < 4; ++byte)
            header[offset + byte] = static_cast<char>((number >> (24 - 8 * byte)) & 0xffU);
    };
    putNumber(widthOffset, static_cast<quint32>(size.width()));
    putNumber(widthOffset + 4, static_cast<quint32>(size.height()));

    // The checksum covers the chunk's name and its data.
    quint32 checksum = 0xffffffffU;
    for (int at = widthOffset - 4; at < checksumOffset; ++at) {
        checksum ^= static_cast<quint8>(header.at(at));
        for (int bit = 0; bit < 8; ++bit)
            checksum = (checksum >> 1U) ^ ((checksum & 1U) != 0 ? 0xedb88320U : 0U);
    }
    putNumber(checksumOffset, ~checksum);
    return header;
}

QByteArray picturebytes::gif()
{
    return QByteArray::fromHex("474946383961" // GIF89a
                               "0100010080000000ff00000000" // 1 x 1, two colours
                               "2c000000000100010000" // one frame
                               "0202440100" // its one pixel
                               "3b");
}

QByteArray picturebytes::webp()
{
    return QByteArray::fromHex("524946461a00000057454250" // RIFF, WEBP
                               "5650384c0d000000" // lossless
                               "2f0000001007101111 8888fe0700");
}

QByteArray picturebytes::html()
{
    return QByteArrayLiteral("<!DOCTYPE html><html><body><h1>Sign in</h1></body></html>");
}

QByteArray picturebytes::halfOf(const QByteArray &bytes)
{
    return bytes.left(bytes.size() / 2);
}
