#include "pictureratio.h"

#include "aicontroller/chatrecords.h"

#include <algorithm>
#include <array>

namespace tavro::consolehost {

namespace {

struct Ratio {
    const char *name;
    int width;
    int height;
};

constexpr std::array<Ratio, 4> ratios{{
    {"16:9", 1920, 1080},
    {"16:10", 1920, 1200},
    {"5:4", 1920, 1536},
    {"4:3", 1920, 1440},
}};

} // namespace

QStringList pictureRatios()
{
    QStringList names;
    for (const Ratio &ratio : ratios)
        names.append(QLatin1String(ratio.name));
    return names;
}

bool setRatio(aiassistant::PictureGenerateInfo &info, const QString &ratio)
{
    const auto *const found = std::find_if(ratios.begin(), ratios.end(),
                                           [&](const Ratio &entry) { return ratio == QLatin1String(entry.name); });
    if (found == ratios.end())
        return false;
    info.width = found->width;
    info.height = found->height;
    return true;
}

} // namespace tavro::consolehost
