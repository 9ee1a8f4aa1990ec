#include "aicontroller/iaicontroller.h"

namespace tavro::aiassistant {

IAiController::IAiController(QObject *parent)
    : QObject(parent)
{ }

IAiController::~IAiController() = default;

} // namespace tavro::aiassistant
