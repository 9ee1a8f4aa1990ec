#pragma once

#include "assistant/watchedruntime.h"
#include "inprocess/inprocessbus.h"
#include "machine/machineruntime.h"
#include "options.h"

#include <QTimer>

#include <memory>
#include <vector>

namespace tavro::playout {

/// The machines that this program stands for in its role: one that asks the service, one that shows the panel, or both.
class Machines : public QObject {
    Q_OBJECT

public:
    explicit Machines(const Options &options);

    /// The runtime of the controller that asks the service; null where another program does.
    WatchedRuntime *serving() const { return m_serving; }

    /// The runtime of the controller that shows the panel; null where there is none. The same as serving() where one
    /// controller does both.
    WatchedRuntime *showing() const { return m_showing; }

    /// What a showing machine sends its questions by; null where serving() does not serve others.
    runtime::MachineRuntime *link() const { return m_link; }

    /// Tells the connection's state by sigConnection().
    void report();

Q_SIGNALS:
    void sigConnection(const QString &text, bool isGood);

private:
    WatchedRuntime *add(std::unique_ptr<runtime::MachineRuntime> machine);
    void joinInProcess();
    void joinBroker(const Options &options);
    void onConnectionChanged();
    QString clientsView() const;
    QString serversView() const;

    runtime::InProcessBus m_bus;
    std::vector<std::unique_ptr<runtime::MachineRuntime>> m_machines;
    std::vector<std::unique_ptr<WatchedRuntime>> m_watched;
    WatchedRuntime *m_serving = nullptr;
    WatchedRuntime *m_showing = nullptr;
    runtime::MachineRuntime *m_link = nullptr;
    bool m_byBroker = false;
    QTimer m_patience; // runs while a serving machine may not have been heard yet
};

} // namespace tavro::playout
