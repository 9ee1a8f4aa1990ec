#pragma once

#include "aicontroller/chatrecords.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/// The records' bytes written by hand, into one block like the library's: what packing costs at least.
class HandWriter {
public:
    explicit HandWriter(std::size_t textBytes);

    void write(const tavro::aiassistant::PictureGenerateInfo &info);
    void write(const tavro::aiassistant::ChatItemBasic &item);
    void write(const tavro::aiassistant::TextGeneratedPack &pack);
    void write(const tavro::aiassistant::PicturedGeneratedPack &pack);

    std::string_view bytes() const { return {m_block.get(), static_cast<std::size_t>(m_at - m_block.get())}; }

private:
    void byte(unsigned value) { *m_at++ = static_cast<char>(value); }
    void bigEndian(std::uint32_t value, int bytes);
    void array(unsigned size) { byte(0x90U | size); }
    void text(const std::string &value);
    void number(std::int32_t value);
    void boolean(bool value) { byte(value ? 0xC3U : 0xC2U); }
    void real(float value);

    std::unique_ptr<char[]> m_block;
    char *m_at;
};

/// Reads what HandWriter writes, and nothing else; throws std::runtime_error at the first other byte.
class HandReader {
public:
    explicit HandReader(std::string_view bytes)
        : m_bytes(bytes)
    { }

    void read(tavro::aiassistant::PictureGenerateInfo &info);
    void read(tavro::aiassistant::ChatItemBasic &item);
    void read(tavro::aiassistant::TextGeneratedPack &pack);
    void read(tavro::aiassistant::PicturedGeneratedPack &pack);

private:
    std::string_view take(std::size_t count);
    unsigned byte() { return static_cast<unsigned char>(take(1)[0]); }
    std::uint32_t bigEndian(int bytes);
    void array(unsigned size);
    void text(std::string &value);
    void number(std::int32_t &value);
    void boolean(bool &value);
    void real(float &value);

    std::string_view m_bytes;
};
