#pragma once

#include "assistant/assistant.h"
#include "log/logbook.h"
#include "log/logcapture.h"
#include "model/commandexecutor.h"
#include "model/mediafolder.h"
#include "model/playoutstate.h"
#include "view/hosttheme.h"
#include "view/medialistmodel.h"
#include "view/pictureloader.h"

#include <QPointer>

#include <memory>

namespace tavro::playout {

class MainWindow;
class SettingsDialog;

/// The whole host: it starts the assistant in the order that it asks for, carries its commands out, and ends it.
class Host : public QObject {
    Q_OBJECT

public:
    Host(const Options &options, PanelFactory panelFactory);
    ~Host() override; ///< shuts down, where that was not done

    MainWindow &window() { return *m_window; }
    PlayoutState &state() { return m_state; }
    MediaLibrary &library() { return m_library; }

    LogBook &log() { return m_log; }

    /// Shows the settings, or brings them up where they are shown.
    void showSettings();

    /// Carries a command out and shows what became of it.
    void carryOut(const aiassistant::AgentCmd &command);

private:
    void connectAssistant();
    void connectWindow();
    void showService(const QString &state, bool isGood);
    void refreshService();
    void showConnection(const QString &text, bool isGood);
    void showTrouble(const LogRecord &record);
    void play(const QString &mediaId, int layer);
    void stop(int layer);

    void restoreLayout();
    void keepLayout() const;
    QString changeSettings(const Options &edited);
    void dress();

    Options m_options;
    LogBook m_log;
    LogCapture m_capture{m_log};
    MediaLibrary m_library;
    std::unique_ptr<MediaFolder> m_mediaFolder; // null where none is configured
    PlayoutState m_state;
    CommandExecutor m_executor;
    HostTheme m_theme;
    PictureLoader m_loader;
    std::unique_ptr<MediaListModel> m_media;
    // The window has the panel in it, and the panel goes before its controller.
    std::unique_ptr<Assistant> m_assistant;
    std::unique_ptr<MainWindow> m_window;
    QPointer<SettingsDialog> m_settings;
    QString m_connection; // as last shown
    QString m_serviceState = QStringLiteral("not asked yet");
    bool m_isServiceGood = true;
};

} // namespace tavro::playout
