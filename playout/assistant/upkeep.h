#pragma once

#include "aicontroller/aicontroller.h"
#include "assistant/watchedruntime.h"

#include <QObject>

namespace tavro::playout {

/// Looks after the controller that asks the service, from question to question:
///
/// The controller counts its polls from one time-out to the next, over all questions between them, so the count is
/// begun again for each question. And after a failure a poll may still be open that the next question would wait for,
/// so it is given up.
class Upkeep : public QObject {
public:
    /// Both must outlive the object, or at least emit nothing afterwards.
    Upkeep(aiassistant::AiController &controller, WatchedRuntime &runtime);

private:
    void lookAfterOwnQuestions();
    void lookAfterClients();
    void renewTime();

    aiassistant::AiController &m_controller;
    WatchedRuntime &m_runtime;
};

} // namespace tavro::playout
