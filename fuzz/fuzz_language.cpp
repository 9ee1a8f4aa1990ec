// A language file.

#include "support/application.h"
#include "support/checks.h"
#include "support/input.h"
#include "support/inputfile.h"
#include "zvtranslate/zvtranslate.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace tavro::trans;
    needApplication();
    const InputFile file(Input(data, size).rest(), ".xml");
    Translator translator;
    const bool isLoaded = translator.load(file.path());
    // All or nothing.
    demand(isLoaded || translator.languages().isEmpty());
    for (const QString &language : translator.languages())
        demand(translator.switchLanguage(language) && translator.hasTexts());
    translator.text("MainWidget", "Send");
    return 0;
}
