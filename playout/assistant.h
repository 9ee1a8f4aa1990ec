#pragma once

#include "aicontroller/aicontroller.h"
#include "localruntime.h"
#include "model/medialibrary.h"
#include "options.h"

#include <QObject>

#include <vector>

class QWidget;

namespace tavro::playout {

/// Makes the panel of a controller; see panel.h. The caller owns the widget.
using PanelFactory = QWidget *(*)(aiassistant::AiController &controller, const QString &styleSheet);

/// The assistant as this host sets it up, with what it tells the host as Qt signals. Everything happens on the thread
/// that makes it.
class Assistant : public QObject {
    Q_OBJECT

public:
    Assistant(const Options &options, const MediaLibrary::Resources &library);

    /// Makes the panel, which must go before the assistant does.
    QWidget *makePanel(PanelFactory factory);

    /// To be called once the panel is made: where the wanted language has no texts, switches to English and says so.
    void checkLanguage();

    /// Hands the media library over again, after it changed.
    void setLibrary(const MediaLibrary::Resources &library);

    /// Ends all network activity, for good. The panel may still be there.
    void shutDown();

Q_SIGNALS:
    void sigCommands(const std::vector<tavro::aiassistant::AgentCmd> &commands);
    void sigPictureSaved(const QString &path);
    void sigServiceState(const QString &state, bool isGood); ///< what the last question showed of the service
    void sigRemark(const QString &text); ///< something that the operator should know

private:
    void configure(const Options &options, const MediaLibrary::Resources &library);
    void connectSignals();
    void renewTime();

    void onThemeChanged(const QString &sheet);
    void onCommands(std::vector<aiassistant::AgentCmd> &commands);
    void onPictureSaved(const std::string &path);
    void onTextGenerated(const aiassistant::TextGeneratedPack &pack);
    void onPictureGenerated(const QString &question, const aiassistant::PictureGenerateInfo &info,
                            const aiassistant::AIImage &image);
    void onRequestFailed(const aiassistant::ChatItemBasic &item);
    void onErrorOccured(const aiassistant::ChatItemBasic &item);
    void onTimeout(const aiassistant::ChatItemBasic &item);

    // The controller uses the runtime to its end, so the runtime stands before it and goes after it.
    LocalRuntime m_runtime;
    aiassistant::AiController m_controller;
    QString m_language;
    QString m_styleSheet;
};

} // namespace tavro::playout
