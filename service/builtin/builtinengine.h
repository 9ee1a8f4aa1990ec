#pragma once

#include "engine.h"

namespace tavro::assistantservice {

/// Answers by rules and draws by rules: it needs no network and no model, and says so.
class BuiltinEngine : public Engine {
public:
    TextResult answer(const TextRequest &request, const std::atomic<bool> &cancelled) const override;
    PictureResult draw(const PictureRequest &request, const std::atomic<bool> &cancelled) const override;
};

} // namespace tavro::assistantservice
