#include "multimachineproxy/callenvelope.h"

#include "multimachineproxy/recordpacking.h"

#include <QString>

#include <stdexcept>

namespace tavro::aiassistant::envelope {

namespace {

msgpack::unpack_limit limits()
{
    return {maxElements, maxElements, maxTextBytes, maxTextBytes, maxTextBytes, maxDepth};
}

// The bytes outlive the object that is made of them, so its texts need not be copied.
bool leaveInPlace(msgpack::type::object_type /*type*/, std::size_t /*size*/, void * /*userData*/)
{
    return true;
}

} // namespace

template <typename T>
msgpack::sbuffer pack(const T &value)
{
    msgpack::sbuffer buffer;
    msgpack::pack(buffer, value);
    return buffer;
}

template <>
msgpack::sbuffer pack(const QString &value)
{
    return pack(value.toStdString());
}

template <typename T>
T unpack(const char *data, unsigned int size)
{
    const msgpack::object_handle handle = msgpack::unpack(data, size, leaveInPlace, nullptr, limits());
    try {
        T value{};
        handle.get().convert(value);
        return value;
    } catch (const msgpack::type_error &) {
        throw std::invalid_argument("unpack failed: Args not match!");
    }
}

template <>
QString unpack(const char *data, unsigned int size)
{
    return QString::fromStdString(unpack<std::string>(data, size));
}

template msgpack::sbuffer pack(const bool &value);
template msgpack::sbuffer pack(const std::string &value);
template msgpack::sbuffer pack(const std::vector<std::string> &value);
template msgpack::sbuffer pack(const PictureGenerateInfo &value);
template msgpack::sbuffer pack(const ChatItemBasic &value);
template msgpack::sbuffer pack(const TextGeneratedPack &value);
template msgpack::sbuffer pack(const PicturedGeneratedPack &value);

template bool unpack(const char *data, unsigned int size);
template std::string unpack(const char *data, unsigned int size);
template std::vector<std::string> unpack(const char *data, unsigned int size);
template PictureGenerateInfo unpack(const char *data, unsigned int size);
template ChatItemBasic unpack(const char *data, unsigned int size);
template TextGeneratedPack unpack(const char *data, unsigned int size);
template PicturedGeneratedPack unpack(const char *data, unsigned int size);

} // namespace tavro::aiassistant::envelope
