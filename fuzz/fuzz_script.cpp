// A script for playout.

#include "script/scriptparser.h"
#include "support/checks.h"
#include "support/input.h"

namespace {

using namespace tavro::playout;

bool isPlayable(const ScriptStep &step)
{
    switch (step.kind) {
    case ScriptStep::Kind::Resize:
        return step.size.width() > 0 && step.size.height() > 0;
    case ScriptStep::Kind::Wait:
        return step.limit <= std::chrono::hours(1) && !step.widget.isEmpty();
    case ScriptStep::Kind::Press:
        return step.key != 0;
    default:
        return true;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const Script script = parseScript(Input(data, size).text());
    for (const ScriptStep &step : script.steps)
        demand(isPlayable(step));
    return 0;
}
