#pragma once

#include "controllerfixture.h"

/// A machine that only shows the panel: a controller with a proxy client and nothing else.
class ClientMachine {
public:
    explicit ClientMachine(FakeRuntime::Roles roles = {false, true, false});

    FakeRuntime runtime;
    AiController controller;
    ControllerPrivate &d;
    ControllerSignals signalled;
};
