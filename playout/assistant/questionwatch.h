#pragma once

#include "aicontroller/chatrecords.h"
#include "assistant/watchedruntime.h"
#include "machine/machineruntime.h"

#include <QTimer>

#include <chrono>
#include <optional>

namespace tavro::playout {

/// Follows the question that a showing machine sent, and gives it up where no outcome can come any more: it was not
/// sent, the connection or the serving machine went away, or nothing came in time. A question that the operator stopped
/// is not followed.
class QuestionWatch : public QObject {
    Q_OBJECT

public:
    /// @p link is the machine that @p runtime sends by. Both must outlive the watch. @p limit: the time that an outcome
    /// may take, longer than the serving machine's own.
    QuestionWatch(WatchedRuntime &runtime, runtime::MachineRuntime &link, std::chrono::milliseconds limit);

    /// Another limit. A question that is on its way has the whole of it from now on.
    void setLimit(std::chrono::milliseconds limit) { m_limit.setInterval(limit); }

Q_SIGNALS:
    /// The question, with the reason for the operator as its message.
    void sigGivenUp(const tavro::aiassistant::ChatItemBasic &question);

private:
    void onSent(const QByteArray &name, const QByteArray &payload);
    void onReceived(const QByteArray &name);
    void onLost(const QString &name, const QString &reason);
    void onLinkChanged();
    void end();
    void giveUp(const QString &reason);

    runtime::MachineRuntime &m_link;
    QTimer m_limit;
    std::optional<aiassistant::ChatItemBasic> m_question;
};

} // namespace tavro::playout
