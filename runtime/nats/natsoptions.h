#pragma once

#include <QString>
#include <QStringList>

#include <chrono>

namespace tavro::runtime {

/// Where the machines of a group meet, and by which rights.
struct NatsOptions {
    QStringList servers{QStringLiteral(
        "nats://127.0.0.1:4222")}; ///< addresses "nats://..." or "tls://..." of the brokers, tried in turn
    QString prefix = QStringLiteral("zvaiassistant"); ///< first part of all subjects
    QString group = QStringLiteral("default"); ///< machines of different groups do not hear each other
    QString machine; ///< name of this machine, shown to the others; empty: the host's name
    QString user; ///< empty: none
    QString password; ///< of the user
    QString token; ///< in place of user and password; empty: none
    bool tls = false; ///< insist on TLS, as an address "tls://..." does; a broker that asks for it gets it in any case
    QString caFile; ///< PEM file of the authorities that may vouch for the broker; empty: the system's

    std::chrono::milliseconds connectTimeout{1500}; ///< for one attempt; the destructor may have to wait for it
    std::chrono::milliseconds writeTimeout{2000}; ///< how long a send may hold its caller when the broker stalls
    std::chrono::milliseconds firstRetry{250}; ///< wait before the second attempt; doubled each time
    std::chrono::milliseconds longestRetry{10000}; ///< where the doubling ends
    std::chrono::milliseconds pingInterval{5000}; ///< a broker that misses two pings is given up
    std::chrono::milliseconds presenceInterval{2000}; ///< a serving machine that is not heard for three is gone
    /// A serving machine that stood still for longer (but not for less than two presence intervals) drops the calls
    /// that it finds, which are stale by then, and connects anew.
    std::chrono::milliseconds longestStandstill{6000};
};

/// Why @p options cannot be used, in a sentence; empty where they can. Subjects allow a group (and each part of the
/// prefix, which may have dots) letters, digits, '-' and '_'.
QString problemOf(const NatsOptions &options);

/// @p address without user, password or token.
QString withoutCredentials(const QString &address);

} // namespace tavro::runtime
