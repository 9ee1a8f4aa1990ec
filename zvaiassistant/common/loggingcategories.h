#pragma once

#include <QLoggingCategory>

namespace tavro::aiassistant {

// The module's diagnostic lines, one category for each area. A host switches them with QLoggingCategory or with
// QT_LOGGING_RULES, for example "zvaiassistant.controller.debug=false".

Q_DECLARE_LOGGING_CATEGORY(lcController) ///< "zvaiassistant.controller": requests, replies, pictures, commands
Q_DECLARE_LOGGING_CATEGORY(lcPanel) ///< "zvaiassistant.panel": what the panel could not carry out
Q_DECLARE_LOGGING_CATEGORY(lcPictures) ///< "zvaiassistant.pictures": pictures that could not be saved, for the operator
Q_DECLARE_LOGGING_CATEGORY(lcTheme) ///< "zvaiassistant.theme": style sheets

} // namespace tavro::aiassistant
