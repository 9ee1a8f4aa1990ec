// A theme file, and a style sheet made with it.

#include "support/application.h"
#include "support/checks.h"
#include "support/input.h"
#include "support/inputfile.h"
#include "support/sheetreading.h"
#include "ztheme/ztheme.h"

#include <QSettings>

namespace {

// Whatever a theme holds, its values stay in their places: the rules of the sheet are those that it had.
void useInSheet(ZT::Theme &theme)
{
    QString sheet = QStringLiteral("QFrame{color:m.theme.color.Text}QLabel{image:url(m.theme.image.close)}");
    ZT::replaceStyleSheet(&theme, QStringLiteral("m"), sheet);
    demand(readableRules(sheet) == 2);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    needApplication();
    const InputFile file(Input(data, size).rest(), ".theme");
    QSettings settings(file.path(), QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    ZT::Theme theme(QStringLiteral("fuzzed"));
    theme.readSettings(settings);
    useInSheet(theme);
    return 0;
}
