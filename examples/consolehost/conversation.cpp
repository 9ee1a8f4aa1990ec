#include "conversation.h"

#include "agentcommandtext.h"
#include "assistant.h"
#include "console.h"

#include <QPixmap>

#include <utility>

namespace tavro::consolehost {

using namespace std::chrono_literals;
using aiassistant::AgentCmd;
using aiassistant::AIImage;

namespace {

// How long the end of the program waits for commands that act on a picture. Whether there are any is not known before
// the picture has been saved.
constexpr std::chrono::milliseconds commandsLimit = 3s;

} // namespace

Conversation::Conversation(Assistant &assistant, const Options &options, const MediaLibrary &library)
    : m_assistant(assistant)
    , m_options(options)
    , m_library(library)
{
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, &Conversation::onLimit);
    connect(&assistant, &Assistant::sigAnswered, this, &Conversation::onAnswered);
    connect(&assistant, &Assistant::sigPictureReceived, this, &Conversation::onPictureReceived);
    connect(&assistant, &Assistant::sigPictureSaved, this, &Conversation::onPictureSaved);
    connect(&assistant, &Assistant::sigCommands, this, &Conversation::onCommands);
    connect(&assistant, &Assistant::sigFailed, this, &Conversation::onFailed);
    connect(&assistant, &Assistant::sigTimedOut, this, &Conversation::onTimedOut);
    carryOnSoon();
}

void Conversation::add(const Step &step)
{
    if (m_inputEnded)
        return;
    if (step.kind == Step::Kind::Stop) {
        stop();
    } else {
        m_steps.push_back(step);
        carryOn();
    }
}

void Conversation::endInput()
{
    m_inputEnded = true;
    carryOnSoon();
}

void Conversation::carryOn()
{
    while (m_state == State::Idle && !m_steps.empty()) {
        const Step step = std::move(m_steps.front());
        m_steps.pop_front();
        carryOut(step);
    }
    const bool canEnd = m_state == State::Idle || m_state == State::Stopped;
    if (canEnd && m_inputEnded && m_steps.empty())
        finish();
    else if (m_state == State::Idle)
        console::prompt();
}

// Not from within the controller's signals: what belongs to one answer is announced whole before the next step begins.
void Conversation::carryOnSoon()
{
    QMetaObject::invokeMethod(this, &Conversation::carryOn, Qt::QueuedConnection);
}

void Conversation::carryOut(const Step &step)
{
    switch (step.kind) {
    case Step::Kind::Nothing:
    case Step::Kind::Stop:
        return;
    case Step::Kind::Ask:
    case Step::Kind::Picture:
        return ask(step);
    case Step::Kind::Download:
        return save();
    case Step::Kind::Clear:
        return m_assistant.beginConversation();
    case Step::Kind::DeepModel:
        return m_assistant.setDeepModel(step.on);
    case Step::Kind::OnlineSearch:
        return m_assistant.setOnlineSearch(step.on);
    case Step::Kind::Media:
        return printMedia();
    case Step::Kind::Help:
        return console::text(stepHelp());
    case Step::Kind::Quit:
        return quit();
    case Step::Kind::Wrong:
        return reject(step.text);
    }
}

// The controller gives up by itself. The limit here is for a picture whose address is known but which does not come.
void Conversation::ask(const Step &step)
{
    const bool isPicture = step.kind == Step::Kind::Picture;
    m_commandsMayFollow = isPicture || !m_pictureAddress.isEmpty();
    wait(State::AwaitingAnswer, m_options.timeout + 3 * m_options.tick);
    if (isPicture)
        m_assistant.askForPicture(step.picture);
    else
        m_assistant.ask(step.text);
}

void Conversation::stop()
{
    const State state = m_state;
    const bool waiting = state == State::AwaitingAnswer || state == State::AwaitingFile;
    console::message(waiting ? QStringLiteral("stopped") : QStringLiteral("there is nothing to stop"));
    if (state == State::AwaitingAnswer)
        giveUp(m_status);
    else if (state == State::AwaitingFile)
        end(m_status);
    else
        carryOn();
}

void Conversation::save()
{
    if (m_pictureAddress.isEmpty())
        return reject(QStringLiteral("there is no picture to save yet"));
    wait(State::AwaitingFile, m_options.timeout);
    m_assistant.download(m_pictureAddress);
}

void Conversation::printMedia() const
{
    for (const auto &item : m_library)
        console::result(QStringLiteral("media"), QString::fromStdString(item.first));
    if (m_library.empty())
        console::message(QStringLiteral("the media library is empty"));
}

void Conversation::quit()
{
    m_steps.clear();
    m_inputEnded = true;
}

void Conversation::reject(const QString &why)
{
    console::message(why);
    m_status = Failed;
}

void Conversation::finish()
{
    if (std::exchange(m_commandsMayFollow, false))
        wait(State::AwaitingCommands, commandsLimit);
    else
        Q_EMIT sigFinished(m_status);
}

void Conversation::wait(State state, std::chrono::milliseconds limit)
{
    m_state = state;
    m_limit.start(limit);
}

void Conversation::end(ExitStatus status)
{
    m_limit.stop();
    m_state = State::Idle;
    m_status = status;
    if (status != Answered && !m_options.isInteractive())
        m_steps.clear();
    carryOnSoon();
}

// Until the next question the controller drops what still comes in for this one, so that one has to wait a moment.
void Conversation::giveUp(ExitStatus status)
{
    m_assistant.stop();
    m_commandsMayFollow = false;
    end(status);
    wait(State::Stopped, m_options.tick);
}

void Conversation::onLimit()
{
    const State state = std::exchange(m_state, State::Idle);
    if (state == State::AwaitingAnswer) {
        console::message(QStringLiteral("the picture did not arrive in time"));
        giveUp(TimedOut);
    } else if (state == State::AwaitingFile) {
        console::message(QStringLiteral("the picture was not saved in time"));
        end(TimedOut);
    } else {
        carryOn();
    }
}

void Conversation::onAnswered(const QString &answer)
{
    if (m_state != State::AwaitingAnswer)
        return;
    console::text(answer);
    end(Answered);
}

void Conversation::onPictureReceived(const AIImage &picture)
{
    if (m_state != State::AwaitingAnswer)
        return;
    if (picture.pixmap.isNull())
        return onFailed(QStringLiteral("the picture cannot be fetched, or is none"));
    m_pictureAddress = QString::fromStdString(picture.url);
    console::result(QStringLiteral("picture"),
                    QStringLiteral("%1x%2").arg(picture.pixmap.width()).arg(picture.pixmap.height()));
    console::result(QStringLiteral("address"), m_pictureAddress);
    if (!picture.description.empty())
        console::result(QStringLiteral("description"), QString::fromStdString(picture.description));
    if (m_options.download)
        save();
    else
        end(Answered);
}

// The controller takes the first file that it saves for waiting commands: one that it announces means that none wait.
void Conversation::onPictureSaved(const QString &path)
{
    console::result(QStringLiteral("saved"), path);
    m_commandsMayFollow = false;
    if (m_state == State::AwaitingFile)
        end(Answered);
}

void Conversation::onCommands(const std::vector<AgentCmd> &commands)
{
    for (const AgentCmd &command : commands)
        console::result(QStringLiteral("command"), agentCommandText(command));
    m_commandsMayFollow = false;
    if (m_state == State::AwaitingCommands)
        end(m_status);
}

void Conversation::onFailed(const QString &why)
{
    if (m_state != State::AwaitingAnswer)
        return;
    console::message(why);
    giveUp(Failed);
}

void Conversation::onTimedOut()
{
    if (m_state != State::AwaitingAnswer)
        return;
    console::message(QStringLiteral("no answer within %1 s").arg(m_options.timeout.count()));
    giveUp(TimedOut);
}

} // namespace tavro::consolehost
