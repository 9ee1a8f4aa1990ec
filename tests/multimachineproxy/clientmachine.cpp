#include "clientmachine.h"

ClientMachine::ClientMachine(FakeRuntime::Roles roles)
    : runtime(roles)
    , d(AiControllerAccess::of(controller))
    , signalled(controller)
{
    controller.setZVRuntime(&runtime);
}
