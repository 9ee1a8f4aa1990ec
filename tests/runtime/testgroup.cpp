#include "testgroup.h"

#include "inprocess/inprocessruntime.h"
#include "nats/natsruntime.h"
#include "support/natsserver.h"
#include "support/waiting.h"

#include <QTest>

namespace tavro::testsupport {

namespace {

class InProcessGroup : public TestGroup {
public:
    std::unique_ptr<runtime::MachineRuntime> join(runtime::Roles roles, const QString &name) override
    {
        return std::make_unique<runtime::InProcessRuntime>(m_bus, roles, name);
    }

private:
    runtime::InProcessBus m_bus;
};

class NatsGroup : public TestGroup {
public:
    bool start() { return m_server.start(); }

    std::unique_ptr<runtime::MachineRuntime> join(runtime::Roles roles, const QString &name) override
    {
        runtime::NatsOptions options;
        options.servers = QStringList{m_server.url()};
        options.machine = name;
        return std::make_unique<runtime::NatsRuntime>(roles, options);
    }

private:
    NatsServer m_server;
};

} // namespace

std::unique_ptr<TestGroup> TestGroup::make(const QString &kind)
{
    if (kind == QLatin1String("inprocess"))
        return std::make_unique<InProcessGroup>();
    auto group = std::make_unique<NatsGroup>();
    return group->start() ? std::move(group) : nullptr;
}

void GroupTest::initTestCase_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("inprocess") << QStringLiteral("inprocess");
    QTest::newRow("nats") << QStringLiteral("nats");
}

void GroupTest::openGroup()
{
    QFETCH_GLOBAL(QString, kind);
    m_log = std::make_unique<LogCatcher>();
    m_group = TestGroup::make(kind);
    QVERIFY(m_group);
}

void GroupTest::closeGroup()
{
    m_group.reset();
    const QStringList complaints = m_log->complaints();
    m_log.reset();
    QVERIFY2(complaints.isEmpty(), qPrintable(complaints.join(QLatin1Char('\n'))));
}

bool isReady(runtime::MachineRuntime &runtime, bool serving)
{
    return eventually([&runtime, serving] {
        return runtime.connection() == runtime::MachineRuntime::Connection::Connected
            && (!serving || runtime.isServing());
    });
}

void Receiver::listen(runtime::MachineRuntime &runtime, const char *name)
{
    runtime.registerCallHandler(name, [this](const char *received, const char *data, unsigned int size) {
        m_all.push_back({received, QByteArray(data, static_cast<int>(size)), data == nullptr});
    });
}

QVector<QByteArray> Receiver::names() const
{
    QVector<QByteArray> names;
    for (const Received &each : m_all)
        names += each.name;
    return names;
}

QVector<QByteArray> Receiver::payloads() const
{
    QVector<QByteArray> payloads;
    for (const Received &each : m_all)
        payloads += each.payload;
    return payloads;
}

} // namespace tavro::testsupport
