#pragma once

#include <QObject>

#include <atomic>
#include <functional>

namespace tavro::aiassistant {

/// An object to whose thread work can be handed over from any thread. Work that is still queued when the object goes is
/// dropped.
class TaskReceiver : public QObject {
public:
    explicit TaskReceiver(QObject *parent = nullptr);

    /// Runs @p task in the object's thread: at once where the caller is in it, else queued, in the order of the calls.
    void run(std::function<void()> task);

    /// Queues @p task, whichever thread the caller is in.
    void post(std::function<void()> task);

    bool isInOwnThread() const;

protected:
    bool event(QEvent *event) override;

    /// Called in the old thread before the object moves to another one.
    virtual void threadAboutToChange();

private:
    std::atomic<unsigned> m_handedOver{0};
};

} // namespace tavro::aiassistant
