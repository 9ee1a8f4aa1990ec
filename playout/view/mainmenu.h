#pragma once

#include <QMenuBar>

class QAction;

namespace tavro::playout {

/// The window's menus. The actions bring their shortcuts; what they do is the window's business.
class MainMenu : public QMenuBar {
    Q_OBJECT

public:
    /// @p hasAssistant: whether there is one to show.
    explicit MainMenu(bool hasAssistant);

    QAction &settings() { return *m_settings; }
    QAction &quit() { return *m_quit; }
    QAction &search() { return *m_search; }
    QAction &log() { return *m_log; } ///< checkable
    QAction &assistant() { return *m_assistant; } ///< checkable; disabled where there is none
    QAction &resetLayout() { return *m_resetLayout; }

private:
    QAction *m_settings = nullptr;
    QAction *m_quit = nullptr;
    QAction *m_search = nullptr;
    QAction *m_log = nullptr;
    QAction *m_assistant = nullptr;
    QAction *m_resetLayout = nullptr;
};

} // namespace tavro::playout
