#pragma once

#include <QByteArray>

// The packed form of what the tests send and expect, written down here a second time: the module's own packing must not
// vouch for itself.
namespace payloads {

/// A text of less than 256 bytes.
inline QByteArray text(const QByteArray &text)
{
    constexpr int longestFixed = 31;
    const char size = static_cast<char>(text.size());
    if (text.size() <= longestFixed)
        return char(0xA0 | size) + text;
    return QByteArray("\xD9") + size + text;
}

/// An array of less than 16 packed elements.
inline QByteArray array(std::initializer_list<QByteArray> elements)
{
    QByteArray packed(1, static_cast<char>(0x90 | static_cast<char>(elements.size())));
    for (const QByteArray &element : elements)
        packed += element;
    return packed;
}

/// 3840 x 2160 with super-resolution, no logo, and the given two texts.
inline QByteArray picture(const QByteArray &style = {}, const QByteArray &content = {})
{
    return array({text(style), QByteArray::fromHex("cd0f00"), QByteArray::fromHex("cd0870"), QByteArray::fromHex("c3"),
                  text(content), QByteArray::fromHex("c2"), QByteArray::fromHex("00"), QByteArray::fromHex("c2"),
                  QByteArray::fromHex("ca3eb33333"), text("width")});
}

/// What a failure of a text question carries.
inline QByteArray failedQuestion(const QByteArray &question, const QByteArray &message = {})
{
    return array({QByteArray::fromHex("01"), text(question), picture(), text(message)});
}

} // namespace payloads
