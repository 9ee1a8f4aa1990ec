#include "common/loggingcategories.h"

namespace tavro::aiassistant {

Q_LOGGING_CATEGORY(lcController, "zvaiassistant.controller")
Q_LOGGING_CATEGORY(lcPanel, "zvaiassistant.panel")
Q_LOGGING_CATEGORY(lcPictures, "zvaiassistant.pictures")
Q_LOGGING_CATEGORY(lcTheme, "zvaiassistant.theme")

} // namespace tavro::aiassistant
