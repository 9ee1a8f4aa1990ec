#pragma once

#include "machine/machineruntime.h"
#include "support/logcatcher.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QVector>

#include <memory>

namespace tavro::testsupport {

/// A group of machines of one kind of runtime, all in this process.
class TestGroup {
public:
    /// @p kind: "inprocess" or "nats". Null where the kind's needs cannot be met.
    static std::unique_ptr<TestGroup> make(const QString &kind);

    virtual ~TestGroup() = default;
    virtual std::unique_ptr<runtime::MachineRuntime> join(runtime::Roles roles, const QString &name = {}) = 0;

    static constexpr unsigned int maxPayload = 1024 * 1024;
};

/// A test whose functions run for each kind of runtime.
class GroupTest : public QObject {
    Q_OBJECT

protected:
    void openGroup();
    void closeGroup();

    std::unique_ptr<LogCatcher> m_log;
    std::unique_ptr<TestGroup> m_group; ///< null where openGroup() failed

private Q_SLOTS:
    void initTestCase_data();
    void init() { openGroup(); }
    void cleanup() { closeGroup(); }
};

/// Waits until @p runtime is connected, and serves where @p serving is asked for.
bool isReady(runtime::MachineRuntime &runtime, bool serving = false);

/// Keeps what a runtime delivers.
class Receiver {
public:
    struct Received {
        QByteArray name;
        QByteArray payload;
        bool dataWasNull = false;
    };

    void listen(runtime::MachineRuntime &runtime, const char *name);

    int count() const { return m_all.size(); }
    const Received &at(int index) const { return m_all.at(index); }
    QVector<QByteArray> names() const;
    QVector<QByteArray> payloads() const;

private:
    QVector<Received> m_all;
};

} // namespace tavro::testsupport
