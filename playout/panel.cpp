#include "panel.h"

#include "widgets/mainwidget.h"

namespace tavro::playout {

QWidget *makePanel(aiassistant::AiController &controller, const QString &styleSheet)
{
    auto *const panel = new aiassistant::MainWidget;
    panel->setAIController(&controller);
    panel->updateStyleSheet(styleSheet);
    panel->setFocusProxy(panel->findChild<QWidget *>(QStringLiteral("askEdit")));
    return panel;
}

} // namespace tavro::playout
