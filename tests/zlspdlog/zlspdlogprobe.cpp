#include "zlspdlog/zlspdlog.h"

#include <spdlog/spdlog.h>

#include <cstdlib>
#include <string>

// Logs one line of each level, then as many long lines as the argument says.
int main(int argc, char *argv[])
{
    const auto logger = ZL::SpdlogApplication::instance().logger();
    for (int level = spdlog::level::trace; level <= spdlog::level::critical; ++level)
        logger->log(static_cast<spdlog::level::level_enum>(level), "line of level {}", level);

    const int longLines = argc > 1 ? std::atoi(argv[1]) : 0;
    const std::string text(1000, 'x');
    for (int i = 0; i < longLines; ++i)
        logger->log(spdlog::level::info, "{} {}", i, text);
    return 0;
}
