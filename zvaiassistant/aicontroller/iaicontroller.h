#pragma once

#include "aicontroller/agentcmd.h"
#include "common/export.h"

#include <sigslot/signal.hpp>

#include <QObject>

#include <string>
#include <utility>
#include <vector>

class QString;

namespace tavro {
class IZVRuntime;
}

namespace tavro::aiassistant {

/// How a host configures the assistant, and what the assistant tells the host.
///
/// All operations may be called from any thread and return at once; what they change is in force for everything that is
/// asked for afterwards from the same thread. No operation throws. The order of the virtual operations is part of the
/// interface.
///
/// The signal objects call their slots directly on the emitting thread, in the order of connection. Connecting,
/// disconnecting and emitting are safe from any thread. A slot may use the controller, and may even destroy it.
class ZVAIASSISTANT_EXPORT IAiController : public QObject {
    Q_OBJECT

public:
    explicit IAiController(QObject *parent = nullptr); ///< @p parent as of any QObject
    ~IAiController() override;

    /// Gives the host's runtime, which must outlive the controller. Null takes it away: the machine then counts as a
    /// single one that does everything itself. To be called before the first question.
    virtual void setZVRuntime(IZVRuntime *runtime) = 0;

    /// Reads the theme file at @p path (Latin-1) and announces the finished style sheet.
    virtual void loadTheme(const std::string &path) = 0;

    /// Switches the panel to @p language (UTF-8), one of the names that the language files give.
    virtual void switchLanguage(const std::string &language) = 0;

    /// Empties the panel: input, conversation and the request in progress.
    virtual void resetMainWidget() = 0;

    /// Sets how long an answer may take, in seconds, counted in whole poll intervals. Default 60. With 0 or less the
    /// first tick of the poll timer gives up. At most about 2 million seconds; more counts as that.
    virtual void setTimeout(int seconds) = 0;

    /// Sets the interval at which the service is asked for the answer, in seconds. Default 5. Needs the poll timer
    /// (AiController::createTimer()); without it, and for a negative value, a warning is logged and nothing changes.
    virtual void setSingleTickTime(int seconds) = 0;

    /// Sets the service's base address, for example "http://127.0.0.1:8080". The endpoints' paths, which begin with a
    /// slash, are appended as they are.
    virtual void setDomain(const QString &domain) = 0;

    /// Sets the "token" header of all requests to the service. Null and empty send the header with an empty value. A
    /// value that no header can hold (a line break or a NUL in it) is refused with a warning. The same holds for the
    /// two below.
    virtual void setToken(const QString &token) = 0;

    /// Sets the "userId" header; see setToken().
    virtual void setUserId(const QString &userId) = 0;

    /// Sets the "node" header; see setToken().
    virtual void setNode(const QString &node) = 0;

    /// Gives the host's media library as pairs of id and name (UTF-8). The service chooses from it in agent commands.
    /// The list is copied; giving the same list again costs nothing.
    virtual void setMediaLibAllResources(const std::vector<std::pair<std::string, std::string>> &resources) = 0;

    /// Ends all network activity, for good: the last call before the controller is destroyed. Nothing is announced any
    /// more once it has been carried out; later questions and downloads log a warning and do nothing.
    virtual void clear() = 0;

    /// A picture was saved; the argument is the file's path (UTF-8).
    sigslot::signal<const std::string &> sigDownloadPictureFinished;

    /// An answer brought commands for the host. The list is the controller's own: it is valid during the call only.
    sigslot::signal<std::vector<AgentCmd> &> sigAgentCmds;

    /// The assistant's panel was shown on another machine.
    sigslot::signal<> sigAiNotify;
};

} // namespace tavro::aiassistant
