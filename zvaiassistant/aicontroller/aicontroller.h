#pragma once

#include "aicontroller/chatrecords.h"
#include "aicontroller/iaicontroller.h"
#include "common/export.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tavro::aiassistant {

/// The assistant: asks the AI service, waits for its answers, fetches pictures, and tells the panel and the host.
///
/// All work is done in the thread in which the controller lives (the one that made it; QObject::moveToThread() is
/// allowed before the first question). That thread needs a running event loop, and the controller is destroyed on it.
/// Operations that are called from other threads are queued to it.
///
/// One question is followed at a time. A second one while an answer is awaited replaces it.
class ZVAIASSISTANT_EXPORT AiController : public IAiController {
    Q_OBJECT

public:
    AiController();
    ~AiController() override;

    void setZVRuntime(IZVRuntime *runtime) override;
    void loadTheme(const std::string &path) override;
    void switchLanguage(const std::string &language) override;
    void resetMainWidget() override;
    void setTimeout(int seconds) override;
    void setSingleTickTime(int seconds) override;
    void setDomain(const QString &domain) override;
    void setToken(const QString &token) override;
    void setUserId(const QString &userId) override;
    void setNode(const QString &node) override;
    void setMediaLibAllResources(const std::vector<std::pair<std::string, std::string>> &resources) override;
    void clear() override;

    /// Sets token, user id and node at once. Anything but exactly three entries is ignored.
    void updateHeaderInfo(const std::vector<std::string> &info);

    /// Sets token, user id and node to empty values and resets the panel.
    void clearHeaderInfo();

    /// Makes the poll timer (interval 5 s, not started), in place of an earlier one.
    void createTimer();

    /// Starts the poll timer; a question does this by itself. Without a timer a warning is logged.
    void startTimer();

    // What this machine does itself.

    /// Sends a text question to the service, with the conversation so far.
    void generateText(const QString &text);

    /// Asks the service for a picture.
    void generatePicture(const PictureGenerateInfo &info);

    /// Switches the deep model on or off for text questions, and begins a new conversation.
    void activeDeepseekModel(bool active);

    /// Switches online search on or off for text questions, and begins a new conversation.
    void activeOnlineSearch(bool active);

    /// Stops waiting for the answer. What was already on its way is dropped when it arrives.
    void stopGenerate();

    /// Begins a new conversation.
    void clearHistoryRecord();

    /// Forgets the conversation, the last picture and the request in progress. Files of saved pictures are kept.
    void clearCathe();

    /// Saves the picture at the address @p url as a file and announces it with sigDownloadPictureFinished. A picture
    /// that cannot be fetched or saved is logged and not announced.
    void downloadPicture(const QString &url);

    /// Fetches the picture of a finished picture answer and announces it with sigGeneratePictureFinished.
    Q_INVOKABLE void queryImageData(const PicturedGeneratedPack &pack);

    // What the panel calls: each is sent to the serving machine where this one is a proxy client, and carried out here
    // where this machine is a local executor.

    void textToGenerateText(const QString &text); ///< generateText()
    void textToGeneratePicture(const PictureGenerateInfo &info); ///< generatePicture()
    void toActiveDeepSeekModel(bool active); ///< activeDeepseekModel()
    void toActiveOnlineSearch(bool active); ///< activeOnlineSearch()
    void toClearCathe(); ///< clearCathe()
    void toClearHeaderInfo(); ///< clearHeaderInfo()
    void toClearHistoryRecord(); ///< clearHistoryRecord()
    void toStopGenerate(); ///< stopGenerate()
    void toUpdateHeaderInfo(const std::vector<std::string> &info); ///< updateHeaderInfo()

    /// Always downloads on this machine: the user wants the file here.
    void toDownloadPicture(const QString &url);

    /// Tells the serving machine that the panel is shown; does nothing on a machine that is no proxy client.
    void notifyAiWidgetShow();

    // Outcomes of a request, on the machine that asked the service. Each reaches the other machines where this one
    // serves them, and this machine's panel by the rules of its role.

    void errorOccured(const ChatItemBasic &basic); ///< the service reported an error; its text is in message
    void requestFailed(const ChatItemBasic &basic); ///< the service could not be reached or understood
    void requesetTimeout(const ChatItemBasic &basic); ///< the answer took too long

    // Outcomes as this machine's panel learns them. They are announced on the calling thread.

    void generateTextFinished(const TextGeneratedPack &pack); ///< announces the answer
    void generatePictureFinished(const PicturedGeneratedPack &pack); ///< fetches the picture, which is then announced
    void downloadPictureFinished(const QString &path); ///< announces the saved picture
    void errorOccuredFinished(const ChatItemBasic &basic); ///< announces the service's error
    void requestFailedFinished(const ChatItemBasic &basic); ///< announces the failure
    void requestTimeoutFinished(const ChatItemBasic &basic); ///< announces the time-out
    void deleteGeneratingItem(); ///< the "generating" placeholder must go: there will be no answer

    sigslot::signal<const QString &> sigThemeChanged; ///< the finished style sheet
    sigslot::signal<> sigLanguageChanged; ///< texts are to be looked up anew
    sigslot::signal<> sigResetMainWidget; ///< the panel is to be emptied
    sigslot::signal<const TextGeneratedPack &> sigGenerateTextFinished; ///< the answer to a text question
    /// Question, what was asked for, and the picture; its pixmap is null where it could not be fetched or read.
    sigslot::signal<const QString &, const PictureGenerateInfo &, const AIImage &> sigGeneratePictureFinished;
    sigslot::signal<const ChatItemBasic &> sigRequestFailed; ///< the service was not reached or understood
    sigslot::signal<const ChatItemBasic &> sigErrorOccured; ///< the service's own error, in its message
    sigslot::signal<const ChatItemBasic &> sigChatItemEvent; ///< spare: the controller does not fire it
    sigslot::signal<const ChatItemBasic &> sigRequestTimeout; ///< the answer took too long
    sigslot::signal<> sigDeleteGeneratingItem; ///< there will be no answer: the placeholder must go
    sigslot::signal<> sigNotify; ///< the panel of another machine was shown; fired by the proxy

private:
    class ZVAIASSISTANT_NO_EXPORT Private;
    std::unique_ptr<Private> d;
    friend struct AiControllerAccess;
};

} // namespace tavro::aiassistant
