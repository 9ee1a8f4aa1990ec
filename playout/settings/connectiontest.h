#pragma once

#include "settings/servicecheck.h"

#include <QObject>

#include <memory>

namespace tavro::playout {

/// Asks the service on a thread of its own whether it can be used. One test at a time. The object may go at any time; a
/// test that runs is then given up at once.
class ConnectionTest : public QObject {
    Q_OBJECT

public:
    ConnectionTest();
    ~ConnectionTest() override;

    void start(const ServiceAccess &access); ///< a test that runs is given up
    void stop(); ///< nothing more is told of a test that runs
    bool isRunning() const;

Q_SIGNALS:
    void sigFinished(const tavro::playout::ServiceReport &report);

private:
    class Run;

    void end();

    std::unique_ptr<Run> m_run; // null while no test runs
    int m_number = 0; // of the present test
};

} // namespace tavro::playout
