#pragma once

#include "aicontroller/chatrecords.h"
#include "common/export.h"

#include <QWidget>

#include <memory>

namespace tavro::aiassistant {

class AiController;

/// The whole chat panel: the conversation, the input area below it, and a viewer for pictures. 800 px wide.
///
/// GUI thread only, but for the operations that say otherwise. The panel may be destroyed before or after the
/// controller: what the controller emits afterwards does not reach it. Emissions on other threads must have ended by
/// then.
class ZVAIASSISTANT_EXPORT MainWidget : public QWidget {
    Q_OBJECT

public:
    /// Builds the panel and loads the language files: the module's own, then those in the folder
    /// "../share/language/zvaiassistant" beside the program's, which win.
    MainWidget();
    ~MainWidget() override;

    /// Connects the panel to @p controller, which is not owned. To be called once, before the user can ask: the
    /// connections of an earlier call stay, and twice the same controller shows everything twice. Null takes the
    /// controller away; what the user asks without one is refused with a warning.
    void setAIController(AiController *controller);

    /// Lets the user ask and use the conversation's buttons, or not.
    void setAskAndAnswerAreaEnable(bool enable);

    /// Removes the "generating" placeholder from the conversation, if there is one.
    void deleteGeneratingItem();

    /// Lets the user ask again; the conversation's buttons stay as they are.
    void onStopGenerateFinished();

    /// Shows all texts in the current language.
    void switchLanguage();

    // The operations from here on may be called from any thread: what they show, they show in the panel's own.

    /// Empties the input, the conversation and the controller's state.
    void resetMainWidget();

    /// Makes @p sheet the style sheet of the panel and of the picture viewer.
    void updateStyleSheet(const QString &sheet);

    void slotTextGeneratedFinished(const TextGeneratedPack &pack); ///< shows the answer, which types itself out
    /// Shows the picture as a thumbnail.
    void slotPictureGeneratedFinished(const QString &question, const PictureGenerateInfo &info, const AIImage &image);
    void slotRequestFailed(const ChatItemBasic &basic); ///< shows "request error" in the current language
    void slotRequestTimeout(const ChatItemBasic &basic); ///< shows "time-out" in the current language
    void slotDealRequestError(const ChatItemBasic &basic); ///< shows the message of @p basic
    void slotDeleteGeneratingItem(); ///< there will be no answer: removes the placeholder and lets the user ask
    void slotResetMainWidget(); ///< resetMainWidget()

Q_SIGNALS:
    // For hosts; the panel itself talks to the controller and emits none of them.
    void sigStopToGenerate(); ///< the answer is to be stopped
    void sigSendToGenerateText(const QString &strText); ///< a text question
    void sigSendToGeneratePixture(const PictureGenerateInfo &info); ///< a picture question
    void sigResetData(); ///< all is to be forgotten
    void sigClearAnswersRecord(); ///< the conversation is to be forgotten
    void sigShowDialog(); ///< the panel is to be shown

private:
    class ZVAIASSISTANT_NO_EXPORT Private;
    std::unique_ptr<Private> d;
    friend struct MainWidgetAccess;
};

} // namespace tavro::aiassistant
