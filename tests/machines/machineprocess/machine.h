#pragma once

#include "aicontroller/aicontroller.h"
#include "nats/natsruntime.h"

#include <QJsonObject>
#include <QString>

namespace tavro::machineprocess {

/// How this machine is set up.
struct MachineOptions {
    runtime::Roles roles;
    runtime::NatsOptions nats;
    QString service; ///< base address of the AI service
    bool ticksByHand = false; ///< the poll timer's ticks come from the operation "tick" only
};

/// One machine of a group: a controller and its runtime. Reports every signal of both.
class Machine {
public:
    explicit Machine(const MachineOptions &options);

    aiassistant::AiController &controller() { return m_controller; }

    /// What the controller and the runtime know, for a test to compare.
    QJsonObject state();

    /// Gives the controller's state the values in @p values; the keys are those of state().
    void seed(const QJsonObject &values);

    void tick(); ///< as the poll timer

private:
    void configure(const MachineOptions &options);
    void reportSignals();
    void reportConnection();

    // The controller uses the runtime to its end.
    runtime::NatsRuntime m_runtime;
    aiassistant::AiController m_controller;
};

} // namespace tavro::machineprocess
