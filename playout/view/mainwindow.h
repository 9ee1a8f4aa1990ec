#pragma once

#include "windowlayout.h"

#include <QMainWindow>

class QDockWidget;

namespace tavro::playout {

class LibraryPanel;
class LogBook;
class MainMenu;
class StagePanel;
class StatusLine;
struct StageParts;

/// The host's one window: media library, stage, and the assistant in a dock; the status line below them.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// @p panel is the assistant's widget; the window owns it from now on. Null: this machine shows no assistant.
    MainWindow(const StageParts &parts, QWidget *panel);

    StatusLine &statusLine() { return *m_status; }

    /// Shows what became of a command.
    void showResult(const QString &text, bool isDone);

    /// Shows something that the operator should know.
    void showRemark(const QString &text, bool isGood);

    bool isAssistantShown() const;
    void setAssistantShown(bool shown); ///< shown, it gets the keyboard

    bool isLogShown() const;
    void setLogShown(bool shown);

    /// How the operator arranged the window, and the same again.
    WindowLayout windowLayout() const;
    void setWindowLayout(const WindowLayout &layout);
    void resetLayout();

    /// To be called when the theme changed.
    void refreshTheme(const QString &styleSheet);

Q_SIGNALS:
    void sigMediaChosen(const QString &mediaId, int layer);
    void sigPlayClicked(int layer);
    void sigStopClicked(int layer);
    void sigSettingsWanted();
    void sigAssistantShown(); ///< the assistant was hidden and is to be seen again

private:
    void buildMiddle(const StageParts &parts);
    void buildDock(QWidget *panel);
    void connectMenu();
    void showAssistantState(bool shown);
    void addShortcuts();

    LogBook &m_book;
    MainMenu *m_menu = nullptr;
    LibraryPanel *m_library = nullptr;
    StagePanel *m_stage = nullptr;
    QDockWidget *m_dock = nullptr; // null where there is no assistant
    StatusLine *m_status = nullptr;
};

} // namespace tavro::playout
