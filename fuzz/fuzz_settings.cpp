// playout's INI file: read as at a start, then saved with another value, as the settings dialogue does.

#include "optionreader.h"
#include "settings/settingswriter.h"
#include "support/application.h"
#include "support/checks.h"
#include "support/input.h"
#include "support/inputfile.h"

#include <QFile>

namespace {

using namespace tavro::playout;

std::optional<Options> readOptions(const QString &path)
{
    OptionReader reader([](const QString &) { return std::nullopt; }, path);
    std::optional<Options> options = reader.read({QStringLiteral("playout")});
    demand(options.has_value() != reader.isWrong());
    return options;
}

QByteArray content(const QString &path)
{
    QFile file(path);
    demand(file.open(QFile::ReadOnly));
    return file.readAll();
}

// What was saved is read as it was meant, and a file that cannot be saved stays as it was.
void change(const Options &before, const QByteArray &ini)
{
    Options after = before;
    after.userId = before.node + QLatin1Char('"');
    if (!saveSettings(before, after).isEmpty())
        return demand(content(before.settingsFile) == ini);
    const InputFile saved(content(before.settingsFile), ".ini");
    const std::optional<Options> read = readOptions(saved.path());
    demand(read && settingValues(*read) == settingValues(after));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    needApplication();
    const QByteArray ini = Input(data, size).rest();
    const InputFile file(ini, ".ini");
    if (const std::optional<Options> options = readOptions(file.path()))
        change(*options, ini);
    return 0;
}
