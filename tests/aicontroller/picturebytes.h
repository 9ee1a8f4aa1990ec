#pragma once

#include <QByteArray>
#include <QSize>

/// Pictures as a service sends them: the bytes of files in several formats, whole and broken.
namespace picturebytes {

/// A picture of one colour that Qt can write ("png", "jpg", "bmp").
QByteArray encoded(const char *format, QSize size = {4, 3});

/// A PNG with content that does not compress: takes its time to decode.
QByteArray noisyPng(QSize size);

/// A PNG with half transparent pixels.
QByteArray transparentPng();

/// A whole PNG of @p size with one bit for each pixel: few bytes, many pixels.
QByteArray blackAndWhitePng(QSize size);

/// The first bytes of a PNG that announces @p size, and nothing behind them.
QByteArray pngHeaderOnly(QSize size);

QByteArray gif(); ///< 1 x 1
QByteArray webp(); ///< 1 x 1
QByteArray html();

/// The first half of @p bytes.
QByteArray halfOf(const QByteArray &bytes);

} // namespace picturebytes
