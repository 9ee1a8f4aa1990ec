#pragma once

#include <fmt/format.h>
#include <spdlog/common.h>

#include <cstddef>
#include <string>

namespace tavro::aiassistant {

/// "folder/name" out of the path of a source file: where a log line comes from, without the extension and without the
/// folders of the machine that built it. Made at compile time, so that a logger may keep the pointer.
template <std::size_t N>
class SourceName {
public:
    constexpr explicit SourceName(const char (&path)[N])
    {
        std::size_t begin = N - 1;
        for (int separators = 0; begin > 0; --begin) {
            if (path[begin - 1] == '/' && ++separators == 2)
                break;
        }
        std::size_t length = 0;
        for (std::size_t i = begin; i < N - 1 && path[i] != '.'; ++i)
            m_text[length++] = path[i];
    }

    constexpr const char *text() const { return m_text; }

private:
    char m_text[N] = {};
};

/// Writes @p message to the host's logger, with the place it comes from behind it.
/// @p source is "folder/name" of the source file and must live for ever, as must @p function.
void hostLog(spdlog::level::level_enum level, const char *source, int line, const char *function,
             const std::string &message);

} // namespace tavro::aiassistant

/// ZVAI_HOST_LOG(level, format, arguments...): one line in the host's log; {fmt} placeholders.
#define ZVAI_HOST_LOG(level, ...)                                                                                      \
    do {                                                                                                               \
        static constexpr ::tavro::aiassistant::SourceName zvaiSource{__FILE__};                                        \
        ::tavro::aiassistant::hostLog(level, zvaiSource.text(), __LINE__, __func__, fmt::format(__VA_ARGS__));         \
    } while (false)
