#pragma once

#include "machinechild.h"
#include "support/natsserver.h"
#include "support/servicescript.h"
#include "support/waiting.h"

#include <QObject>
#include <QTest>

#include <map>
#include <memory>

using namespace tavro::testsupport;

/// The base of the tests in which something breaks between machines. Each ends with an operator who asks again and is
/// answered.
class FaultsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup(); ///< all machines end in order, and complained of nothing unexpected

protected:
    static const QString connection; ///< what a machine's runtime tells
    static const QString serving;
    static const QString serverPresent;

    MachineChild &start(const QString &role, const QString &name, const QStringList &more = {});
    bool isReady(); ///< whether "server" serves and "client" knows
    /// Asks, with the service holding back that it accepts.
    void askAndHold(MachineChild &asker, const QString &question);
    void allowLostConnections();
    bool hears(MachineChild &machine, const QString &question);
    bool isAnswered(MachineChild &asker, const QString &question);
    bool loses(MachineChild &machine, const QString &message);
    QStringList questionsAnswered(MachineChild &machine);

    std::unique_ptr<NatsServer> broker;
    std::unique_ptr<ServiceScript> service;
    std::map<QString, std::unique_ptr<MachineChild>> machines;
};
