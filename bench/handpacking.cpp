#include "handpacking.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

using namespace tavro::aiassistant;

namespace {

constexpr std::size_t blockBytes = 8192;

[[noreturn]] void refuse()
{
    throw std::runtime_error("not what the writer writes");
}

} // namespace

HandWriter::HandWriter(std::size_t textBytes)
    : m_block(new char[std::max(blockBytes, textBytes + blockBytes / 8)])
    , m_at(m_block.get())
{ }

void HandWriter::bigEndian(std::uint32_t value, int bytes)
{
    for (int shift = (bytes - 1) * 8; shift >= 0; shift -= 8)
        byte(value >> static_cast<unsigned>(shift));
}

void HandWriter::text(const std::string &value)
{
    if (value.size() < 32) {
        byte(0xA0U | static_cast<unsigned>(value.size()));
    } else if (value.size() < 256) {
        byte(0xD9);
        byte(static_cast<unsigned>(value.size()));
    } else {
        byte(0xDA);
        bigEndian(static_cast<std::uint32_t>(value.size()), 2);
    }
    std::memcpy(m_at, value.data(), value.size());
    m_at += value.size();
}

void HandWriter::number(std::int32_t value)
{
    if (value >= 0 && value < 128) {
        byte(static_cast<unsigned>(value));
    } else {
        byte(0xCD);
        bigEndian(static_cast<std::uint32_t>(value), 2);
    }
}

void HandWriter::real(float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    byte(0xCA);
    bigEndian(bits, 4);
}

void HandWriter::write(const PictureGenerateInfo &info)
{
    array(10);
    text(info.style);
    number(info.width);
    number(info.height);
    boolean(info.useSR);
    text(info.content);
    boolean(info.enableLogo);
    number(info.logoPositon);
    boolean(info.logoLanguage);
    real(info.logoOpacity);
    text(info.logoContent);
}

void HandWriter::write(const ChatItemBasic &item)
{
    array(4);
    number(static_cast<std::int32_t>(item.type));
    text(item.question);
    write(item.picInfo);
    text(item.message);
}

void HandWriter::write(const TextGeneratedPack &pack)
{
    array(2);
    text(pack.question);
    text(pack.answer);
}

void HandWriter::write(const PicturedGeneratedPack &pack)
{
    array(3);
    text(pack.content);
    write(pack.picInfo);
    array(2);
    text(pack.source.description);
    text(pack.source.url);
}

std::string_view HandReader::take(std::size_t count)
{
    if (count > m_bytes.size())
        refuse();
    const std::string_view taken = m_bytes.substr(0, count);
    m_bytes.remove_prefix(count);
    return taken;
}

std::uint32_t HandReader::bigEndian(int bytes)
{
    std::uint32_t value = 0;
    for (const char part : take(static_cast<std::size_t>(bytes)))
        value = value << 8U | static_cast<unsigned char>(part);
    return value;
}

void HandReader::array(unsigned size)
{
    if (byte() != (0x90U | size))
        refuse();
}

void HandReader::text(std::string &value)
{
    const unsigned head = byte();
    if ((head & 0xE0U) == 0xA0U)
        value = take(head & 0x1FU);
    else if (head == 0xD9)
        value = take(byte());
    else if (head == 0xDA)
        value = take(bigEndian(2));
    else
        refuse();
}

void HandReader::number(std::int32_t &value)
{
    const unsigned head = byte();
    if (head < 128)
        value = static_cast<std::int32_t>(head);
    else if (head == 0xCD)
        value = static_cast<std::int32_t>(bigEndian(2));
    else
        refuse();
}

void HandReader::boolean(bool &value)
{
    const unsigned head = byte();
    if (head != 0xC2 && head != 0xC3)
        refuse();
    value = head == 0xC3;
}

void HandReader::real(float &value)
{
    if (byte() != 0xCA)
        refuse();
    const std::uint32_t bits = bigEndian(4);
    std::memcpy(&value, &bits, sizeof bits);
}

void HandReader::read(PictureGenerateInfo &info)
{
    std::int32_t position = 0;
    array(10);
    text(info.style);
    number(info.width);
    number(info.height);
    boolean(info.useSR);
    text(info.content);
    boolean(info.enableLogo);
    number(position);
    boolean(info.logoLanguage);
    real(info.logoOpacity);
    text(info.logoContent);
    info.logoPositon = static_cast<std::uint8_t>(position);
}

void HandReader::read(ChatItemBasic &item)
{
    std::int32_t type = 0;
    array(4);
    number(type);
    text(item.question);
    read(item.picInfo);
    text(item.message);
    item.type = static_cast<QuestionType>(type);
}

void HandReader::read(TextGeneratedPack &pack)
{
    array(2);
    text(pack.question);
    text(pack.answer);
}

void HandReader::read(PicturedGeneratedPack &pack)
{
    array(3);
    text(pack.content);
    read(pack.picInfo);
    array(2);
    text(pack.source.description);
    text(pack.source.url);
}
