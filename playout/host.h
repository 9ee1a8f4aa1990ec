#pragma once

#include "assistant/assistant.h"
#include "model/commandexecutor.h"
#include "model/playoutstate.h"
#include "view/hosttheme.h"
#include "view/medialistmodel.h"
#include "view/pictureloader.h"

#include <memory>

namespace tavro::playout {

class MainWindow;

/// The whole host: it starts the assistant in the order that it asks for, carries its commands out, and ends it.
class Host : public QObject {
    Q_OBJECT

public:
    Host(const Options &options, PanelFactory panelFactory);
    ~Host() override; ///< shuts down, where that was not done

    MainWindow &window() { return *m_window; }
    PlayoutState &state() { return m_state; }
    MediaLibrary &library() { return m_library; }

    /// Carries a command out and shows what became of it.
    void carryOut(const aiassistant::AgentCmd &command);

private:
    void connectAssistant();
    void connectWindow();
    void showService(const QString &state, bool isGood);
    void showConnection(const QString &text, bool isGood);
    void play(const QString &mediaId, int layer);
    void stop(int layer);

    const Options m_options;
    MediaLibrary m_library;
    PlayoutState m_state;
    CommandExecutor m_executor;
    HostTheme m_theme;
    PictureLoader m_loader;
    std::unique_ptr<MediaListModel> m_media;
    // The window has the panel in it, and the panel goes before its controller.
    std::unique_ptr<Assistant> m_assistant;
    std::unique_ptr<MainWindow> m_window;
    QString m_connection; // as last shown
};

} // namespace tavro::playout
