#include "view/mainmenu.h"

#include <QAction>
#include <QMenu>

namespace tavro::playout {

namespace {

QAction *add(QMenu &menu, const char *name, const QString &text, const QKeySequence &keys = {})
{
    QAction *const action = menu.addAction(text);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(keys);
    return action;
}

} // namespace

MainMenu::MainMenu(bool hasAssistant)
{
    setObjectName(QStringLiteral("menu"));
    setNativeMenuBar(false);
    QMenu *const file = addMenu(QStringLiteral("&Playout"));
    file->setObjectName(QStringLiteral("playoutMenu"));
    m_settings = add(*file, "settingsAction", QStringLiteral("&Settings…"), Qt::CTRL + Qt::Key_Comma);
    file->addSeparator();
    m_quit = add(*file, "quitAction", QStringLiteral("&Quit"), Qt::CTRL + Qt::Key_Q);
    QMenu *const view = addMenu(QStringLiteral("&View"));
    view->setObjectName(QStringLiteral("viewMenu"));
    m_search = add(*view, "searchAction", QStringLiteral("&Search media"), Qt::CTRL + Qt::Key_F);
    view->addSeparator();
    m_log = add(*view, "logAction", QStringLiteral("&Log"), Qt::Key_F8);
    m_assistant = add(*view, "assistantAction", QStringLiteral("&Assistant"), Qt::Key_F9);
    view->addSeparator();
    m_resetLayout = add(*view, "resetLayoutAction", QStringLiteral("&Reset layout"));
    for (QAction *const each : {m_log, m_assistant}) {
        each->setCheckable(true);
        each->setChecked(true);
    }
    m_assistant->setChecked(hasAssistant);
    m_assistant->setEnabled(hasAssistant);
}

} // namespace tavro::playout
