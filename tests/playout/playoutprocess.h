#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace tavro::testsupport {

/// The real playout, without a display and with folders of its own, playing a script. It is killed with the object, and
/// with the test's process however that ends.
class PlayoutProcess {
public:
    PlayoutProcess();
    ~PlayoutProcess();

    void setEnvironment(const QString &name, const QString &value);

    /// Starts it with @p arguments and the steps of @p script.
    void start(const QStringList &arguments, const QString &script);

    void kill(); ///< at once, without a goodbye to anybody
    void terminate(); ///< asks it to end

    bool isRunning() const { return m_process->state() != QProcess::NotRunning; }

    /// Waits for its end and gives what went wrong: empty where it ended well.
    QString failure();

    /// A file of its own folder, for screenshots.
    QString path(const QString &name) const { return m_folder.filePath(name); }

private:
    QString errors();

    QTemporaryDir m_folder;
    std::unique_ptr<QProcess> m_process;
    bool m_started = false;
};

} // namespace tavro::testsupport
