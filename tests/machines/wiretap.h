#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>

/// A connection of the test's own to the broker: sees what the machines of a group say to each other, and can say
/// anything itself. It knows nothing of the module.
class Wiretap {
public:
    enum class Hears { All, Completions };

    /// @p hears: a call that somebody hears never comes back to its sender as taken by nobody.
    Wiretap(const QString &broker, const QString &group, Hears hears = Hears::All);
    ~Wiretap();

    Wiretap(const Wiretap &) = delete;
    Wiretap &operator=(const Wiretap &) = delete;

    bool isConnected() const;

    /// Each message heard so far: the whole subject, and behind a blank the payload in hexadecimal where there is one.
    QStringList heard() const;

    /// Sends to the serving machine, or to the clients. What this connection sends it does not hear.
    void call(const QByteArray &name, const QByteArray &payload = {});
    void complete(const QByteArray &name, const QByteArray &payload = {});

private:
    class Private;
    std::unique_ptr<Private> d;
};
