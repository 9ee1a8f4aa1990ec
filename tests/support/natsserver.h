#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

class QProcess;

namespace tavro::testsupport {

/// A real `nats-server` on a loopback port of its own. It ends with the fixture, and with the test's process however
/// that ends. To be used from one thread.
class NatsServer {
public:
    struct Options {
        QString user; ///< empty: everybody may come
        QString password;
        QString token;
        QString certificateFile; ///< empty: no TLS
        QString keyFile;
        int maxPayload = 0; ///< 0: the server's own limit, 1 MiB
        QString more; ///< further lines of its configuration
    };

    NatsServer();
    explicit NatsServer(const Options &options);
    ~NatsServer();

    /// Starts it and waits until it is ready; the first start picks a free port, which later ones keep. False, with
    /// errorText(), where it does not start.
    bool start();
    void kill(); ///< at once, without a goodbye to anybody
    void suspend(); ///< it keeps its connections and reads nothing
    void resume();
    void setOptions(const Options &options) { m_options = options; } ///< for the next start

    QString url() const; ///< "nats://127.0.0.1:PORT"
    quint16 port() const { return m_port; }
    const QString &errorText() const { return m_errorText; }

private:
    bool writeConfiguration();
    bool waitUntilReady();

    QTemporaryDir m_folder;
    Options m_options;
    std::unique_ptr<QProcess> m_process;
    QString m_errorText;
    quint16 m_port = 0;
};

} // namespace tavro::testsupport
