#include "common/hostlog.h"

#include "zlspdlog/zlspdlog.h"

#include <string_view>

namespace tavro::aiassistant {

namespace {

std::string_view fileName(std::string_view source)
{
    return source.substr(source.rfind('/') + 1);
}

} // namespace

void hostLog(spdlog::level::level_enum level, const char *source, int line, const char *function,
             const std::string &message)
{
    ZL::SpdlogApplication::instance().logger()->log(spdlog::source_loc{source, line, function}, level,
                                                    "{} \n //{}:{}()#{}.", message, fileName(source), function, line);
}

} // namespace tavro::aiassistant
