#include "assistant/questionwatch.h"

#include "assistant/callpayload.h"

#include <utility>

namespace tavro::playout {

using runtime::MachineRuntime;

QuestionWatch::QuestionWatch(WatchedRuntime &runtime, MachineRuntime &link, std::chrono::milliseconds limit)
    : m_link(link)
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(limit);
    connect(&runtime, &WatchedRuntime::sigSent, this, &QuestionWatch::onSent);
    connect(&runtime, &WatchedRuntime::sigReceived, this, &QuestionWatch::onReceived);
    connect(&link, &MachineRuntime::sigMessageLost, this, &QuestionWatch::onLost);
    connect(&link, &MachineRuntime::sigConnectionChanged, this, &QuestionWatch::onLinkChanged);
    connect(&link, &MachineRuntime::sigServerPresentChanged, this, &QuestionWatch::onLinkChanged);
    connect(&m_limit, &QTimer::timeout, this,
            [this] { giveUp(QStringLiteral("The serving machine did not answer in time.")); });
}

void QuestionWatch::onSent(const QByteArray &name, const QByteArray &payload)
{
    if (isQuestion(name)) {
        m_question = questionIn(name, payload);
        m_limit.start();
    } else if (name == "StopGenerate") {
        end();
    }
}

void QuestionWatch::onReceived(const QByteArray &name)
{
    if (isOutcome(name))
        end();
}

void QuestionWatch::onLost(const QString &name, const QString &reason)
{
    if (isQuestion(name.toLatin1()))
        giveUp(QStringLiteral("The question was not sent: %1").arg(reason));
}

// The machine that asked is not there any more, or what it says cannot arrive: the operator's remedy is the same.
void QuestionWatch::onLinkChanged()
{
    if (m_link.connection() != MachineRuntime::Connection::Connected || !m_link.isServerPresent())
        giveUp(QStringLiteral("The connection to the serving machine was lost. Please ask again."));
}

void QuestionWatch::end()
{
    m_question.reset();
    m_limit.stop();
}

void QuestionWatch::giveUp(const QString &reason)
{
    if (!m_question)
        return;
    aiassistant::ChatItemBasic question = *std::exchange(m_question, std::nullopt);
    m_limit.stop();
    question.message = reason.toStdString();
    Q_EMIT sigGivenUp(question);
}

} // namespace tavro::playout
