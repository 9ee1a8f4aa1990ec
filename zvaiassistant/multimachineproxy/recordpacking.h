#pragma once

#include "multimachineproxy/recordfields.h"

#include <msgpack.hpp>

#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

namespace tavro::aiassistant {

/// Packs a record as the array of its fields.
template <typename Record>
struct RecordPacker {
    template <typename Stream>
    msgpack::packer<Stream> &operator()(msgpack::packer<Stream> &out, const Record &record) const
    {
        out.pack_array(static_cast<std::uint32_t>(fieldCount<Record>));
        std::apply([&](auto... fields) { (packField(out, record.*fields), ...); }, RecordFields<Record>::list);
        return out;
    }

private:
    template <typename Stream, typename Field>
    static void packField(msgpack::packer<Stream> &out, const Field &field)
    {
        if constexpr (std::is_same_v<Field, float>)
            packFloat(out, field);
        else
            out.pack(field);
    }

    // The library writes a float without a fraction as an integer; the other machines expect a float 32 always.
    template <typename Stream>
    static void packFloat(msgpack::packer<Stream> &out, float value)
    {
        static_assert(sizeof(float) == sizeof(std::uint32_t));
        std::uint32_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        const char bytes[] = {static_cast<char>(0xCA), static_cast<char>(bits >> 24U), static_cast<char>(bits >> 16U),
                              static_cast<char>(bits >> 8U), static_cast<char>(bits)};
        out.pack_bin_body(bytes, sizeof bytes);
    }
};

/// Fills a record's fields from an array. A shorter array leaves the rest as it is; what it has more is not looked at.
template <typename Record>
struct RecordReader {
    const msgpack::object &operator()(const msgpack::object &in, Record &record) const
    {
        if (in.type != msgpack::type::ARRAY)
            throw msgpack::type_error();
        readFields(in.via.array, record, std::make_index_sequence<fieldCount<Record>>());
        return in;
    }

private:
    template <std::size_t... Index>
    static void readFields(const msgpack::object_array &array, Record &record, std::index_sequence<Index...>)
    {
        ((Index < array.size ? array.ptr[Index].convert(record.*std::get<Index>(RecordFields<Record>::list)),
          void()             : void()),
         ...);
    }
};

} // namespace tavro::aiassistant

// How the library finds the two above.
namespace msgpack {
MSGPACK_API_VERSION_NAMESPACE(MSGPACK_DEFAULT_API_NS)
{
    namespace adaptor {

    template <typename Record>
    struct pack<Record, std::void_t<decltype(tavro::aiassistant::RecordFields<Record>::list)>>
        : tavro::aiassistant::RecordPacker<Record> { };

    template <typename Record>
    struct convert<Record, std::void_t<decltype(tavro::aiassistant::RecordFields<Record>::list)>>
        : tavro::aiassistant::RecordReader<Record> { };

    } // namespace adaptor
}
} // namespace msgpack

// A question type travels as its number, also one that this version does not know.
MSGPACK_ADD_ENUM(tavro::aiassistant::QuestionType)
