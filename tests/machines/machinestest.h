#pragma once

#include "machinechild.h"
#include "payloads.h"
#include "support/natsserver.h"
#include "support/servicescript.h"
#include "support/waiting.h"
#include "wiretap.h"

#include <QJsonValue>
#include <QObject>
#include <QTest>

#include <memory>

using namespace tavro::testsupport;

/// The base of the tests with two machines: a serving one and a client as processes of their own, a real broker, a
/// service that answers by a script, and a wiretap. Each test function has a group of its own.
///
/// The serving machine's poll timer does not tick by itself: poll() does.
class MachinesTest : public QObject {
    Q_OBJECT

protected Q_SLOTS:
    void initTestCase();
    void init();
    /// Nothing may be left: no message on the wire, no line of a log, no request; and both machines end in order.
    void cleanup();

protected:
    static constexpr auto waitMs = static_cast<int>(waitLimit.count());

    QStringList arguments(const QString &role) const;
    static QString text(const QJsonValue &value); ///< compact, for comparisons that show what differs

    /// The wire's line for a message.
    QString call(const QByteArray &name, const QByteArray &payload = {}) const;
    QString completion(const QByteArray &name, const QByteArray &payload = {}) const;

    /// Waits until the wire has heard exactly this. It must have heard no more when the test ends.
    bool hears(const QStringList &lines);

    /// Has the client ask and waits until the service has accepted the question, as @p reqId.
    bool ask(const QString &question, const QString &reqId = QStringLiteral("r1"));
    void poll(const ScriptedAnswer &answer);

    /// Wait until what was sent before has reached the serving machine, or the client. The wire hears nothing of it.
    bool serverIsThrough();
    bool clientIsThrough();

private:
    bool machinesSaidNoMore();

    QStringList m_heard;

protected:
    NatsServer broker;
    QString group;
    std::unique_ptr<ServiceScript> service;
    std::unique_ptr<Wiretap> wire;
    std::unique_ptr<MachineChild> server;
    std::unique_ptr<MachineChild> client;
};
