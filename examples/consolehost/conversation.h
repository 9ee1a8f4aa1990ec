#pragma once

#include "exitstatus.h"
#include "mediafolder.h"
#include "options.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <deque>
#include <vector>

namespace tavro::aiassistant {
struct AgentCmd;
struct AIImage;
} // namespace tavro::aiassistant

namespace tavro::consolehost {

class Assistant;

/// Carries out steps one after the other and prints what comes of them.
class Conversation : public QObject {
    Q_OBJECT

public:
    Conversation(Assistant &assistant, const Options &options, const MediaLibrary &library);

    /// Queues @p step, or carries it out now where it is Stop. @p step comes from a person or from the command line.
    void add(const Step &step);

    /// There are no more steps: sigFinished follows once all have been carried out.
    void endInput();

Q_SIGNALS:
    void sigFinished(int status);

private:
    enum class State {
        Idle,
        AwaitingAnswer,
        AwaitingFile, ///< a picture is being saved
        Stopped, ///< replies to what was given up may still come in
        AwaitingCommands, ///< all is done but for commands that wait until a picture is saved
    };

    void carryOn();
    void carryOnSoon();
    void carryOut(const Step &step);
    void ask(const Step &step);
    void stop();
    void save();
    void printMedia() const;
    void quit();
    void reject(const QString &why);
    void finish();

    void wait(State state, std::chrono::milliseconds limit);
    void end(ExitStatus status);
    void giveUp(ExitStatus status);
    void onLimit();

    void onAnswered(const QString &answer);
    void onPictureReceived(const aiassistant::AIImage &picture);
    void onPictureSaved(const QString &path);
    void onCommands(const std::vector<aiassistant::AgentCmd> &commands);
    void onFailed(const QString &why);
    void onTimedOut();

    Assistant &m_assistant;
    const Options m_options;
    const MediaLibrary m_library;
    std::deque<Step> m_steps;
    QTimer m_limit;
    State m_state = State::Idle;
    ExitStatus m_status = Answered;
    QString m_pictureAddress; ///< of the last picture
    bool m_commandsMayFollow = false;
    bool m_inputEnded = false;
};

} // namespace tavro::consolehost
