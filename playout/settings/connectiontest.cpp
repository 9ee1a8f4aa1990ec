#include "settings/connectiontest.h"

#include "protocol/taskqueue.h"

#include <QThread>

#include <utility>

namespace tavro::playout {

/// One test. Its thread ends with it, also in the middle: quit() ends every event loop that the check waits in.
class ConnectionTest::Run : public QThread {
public:
    explicit Run(ServiceAccess access)
        : m_access(std::move(access))
    { }

    ~Run() override
    {
        quit();
        wait();
    }

    const ServiceReport &report() const { return m_report; } ///< once it has finished

protected:
    void run() override
    {
        // The task that the thread takes makes it the queue's worker.
        const auto queue = std::make_shared<aiassistant::TaskQueue>();
        queue->push(std::packaged_task<void()>([&] { m_report = checkService(m_access, queue); }));
        queue->pop()();
    }

private:
    const ServiceAccess m_access;
    ServiceReport m_report;
};

ConnectionTest::ConnectionTest() = default;

ConnectionTest::~ConnectionTest() = default;

void ConnectionTest::start(const ServiceAccess &access)
{
    stop();
    m_run = std::make_unique<Run>(access);
    // The end of a test that was given up may be on its way still.
    connect(m_run.get(), &QThread::finished, this, [this, number = m_number] {
        if (number == m_number)
            end();
    });
    m_run->start();
}

void ConnectionTest::end()
{
    const ServiceReport report = m_run->report();
    stop();
    Q_EMIT sigFinished(report);
}

void ConnectionTest::stop()
{
    ++m_number;
    m_run.reset();
}

bool ConnectionTest::isRunning() const
{
    return m_run != nullptr;
}

} // namespace tavro::playout
