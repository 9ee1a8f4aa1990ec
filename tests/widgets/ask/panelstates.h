#pragma once

#include "samplepanel.h"

#include <vector>

namespace tavro::testsupport {

/// One of the looks that the panel can have.
struct PanelState {
    const char *name;
    void (*enter)(SamplePanel &panel); ///< from a new panel
    bool looksAlikeInAllLanguages = false;
};

const std::vector<PanelState> &panelStates();

} // namespace tavro::testsupport
