#pragma once

#include "aicontroller/aicontroller.h"
#include "assistant/machines.h"
#include "assistant/questionwatch.h"
#include "assistant/upkeep.h"
#include "model/medialibrary.h"
#include "options.h"

#include <QObject>

#include <memory>
#include <vector>

class QWidget;

namespace tavro::playout {

/// Makes the panel of a controller; see panel.h. The caller owns the widget.
using PanelFactory = QWidget *(*)(aiassistant::AiController &controller, const QString &styleSheet);

/// The assistant as this host sets it up for its role, with what it tells the host as Qt signals. Everything happens on
/// the thread that makes it.
class Assistant : public QObject {
    Q_OBJECT

public:
    Assistant(const Options &options, const MediaLibrary::Resources &library);
    ~Assistant() override;

    /// Makes the panel, which must go before the assistant does. Null where this role has none.
    QWidget *makePanel(PanelFactory factory);

    /// To be called once the panel is made and the signals are connected: where the wanted language has no texts,
    /// switches to English and says so, and tells the state of the connection.
    void start();

    /// Puts in force what differs between the two and may change while the host runs: all but media, role and broker.
    void change(const Options &before, const Options &after);

    /// The languages that the assistant speaks; empty where this machine shows none.
    QStringList languages() const;

    /// Hands the media library over again, after it changed.
    void setLibrary(const MediaLibrary::Resources &library);

    /// Tells the serving machine that the operator brought the panel up.
    void notifyPanelShown();

    /// Ends all network activity, for good. The panel may still be there.
    void shutDown();

Q_SIGNALS:
    void sigCommands(const std::vector<tavro::aiassistant::AgentCmd> &commands);
    void sigPictureSaved(const QString &path);
    void sigServiceState(const QString &state, bool isGood); ///< what the last question showed of the service
    void sigConnection(const QString &text, bool isGood); ///< between the machines
    void sigRemark(const QString &text, bool isGood); ///< something that the operator should know

private:
    aiassistant::AiController *serving() const { return m_serving.get(); }
    aiassistant::AiController *showing() const { return m_showing ? m_showing.get() : m_showingToo; }

    void makeControllers(const Options &options, const MediaLibrary::Resources &library);
    void startServing(const Options &options, const MediaLibrary::Resources &library);
    void startShowing(const Options &options);
    void setService(const Options &options);
    void followQuestions(const Options &options);
    void connectShowing(aiassistant::AiController &controller);
    void connectLink();
    void checkLanguage();

    void onThemeChanged(const QString &sheet);
    void onCommands(std::vector<aiassistant::AgentCmd> &commands);
    void onPictureSaved(const std::string &path);
    void onTextGenerated(const aiassistant::TextGeneratedPack &pack);
    void onPictureGenerated(const QString &question, const aiassistant::PictureGenerateInfo &info,
                            const aiassistant::AIImage &image);
    void onRequestFailed(const aiassistant::ChatItemBasic &item);
    void onErrorOccured(const aiassistant::ChatItemBasic &item);
    void onTimeout(const aiassistant::ChatItemBasic &item);
    void onOutcomeSent(const QByteArray &name);
    void onQuestionGivenUp(const aiassistant::ChatItemBasic &question);
    void onMessageLost(const QString &name, const QString &reason);

    // A controller uses its runtime to its end, so the runtimes stand before it and go after it.
    Machines m_machines;
    std::unique_ptr<aiassistant::AiController> m_serving; // null where another machine serves
    std::unique_ptr<aiassistant::AiController> m_showing; // null where the serving one shows, or nothing is shown
    aiassistant::AiController *m_showingToo = nullptr;
    std::unique_ptr<Upkeep> m_upkeep;
    std::unique_ptr<QuestionWatch> m_watch;
    QString m_language;
    QString m_styleSheet;
};

} // namespace tavro::playout
