#pragma once

class QString;
class QWidget;

namespace tavro::aiassistant {
class AiController;
}

namespace tavro::playout {

/// Makes the assistant's panel, joined to @p controller and in @p styleSheet. The caller owns it and destroys it before
/// the controller. The panel's focus is that of its input.
QWidget *makePanel(aiassistant::AiController &controller, const QString &styleSheet);

} // namespace tavro::playout
