#pragma once

#include "script/scriptstep.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class QWidget;

namespace tavro::playout {

/// Plays a script on the program's windows, with the events that a user's keys and mouse make. It stops at the first
/// step that cannot be carried out.
class ScriptPlayer : public QObject {
    Q_OBJECT

public:
    /// @p window is what screenshots show and what is resized; it must outlive the player.
    ScriptPlayer(std::vector<ScriptStep> steps, QWidget &window);

    /// Begins when the event loop runs and the window has the keyboard, or did not get it for two seconds.
    void start();

Q_SIGNALS:
    void sigQuit(); ///< the step quit was reached
    void sigTold(const QString &line); ///< the step tell: a control as reportOn() has it
    void sigFailed(const QString &why); ///< "line N: what went wrong"

private:
    void startWhenActive();
    void playNext();
    void play(const ScriptStep &step);
    void next();
    void fail(const QString &why);
    void done();
    void failUnless(bool isDone, const QString &why);

    void point(const ScriptStep &step, bool (*act)(QWidget &widget));
    void startWaiting();
    void look();
    bool holds(const ScriptStep &step) const;
    QString whatIsThere(const ScriptStep &step) const;
    void tell(const ScriptStep &step);
    void takeScreenshot(const ScriptStep &step);

    std::vector<ScriptStep> m_steps;
    QWidget &m_window;
    std::size_t m_next = 0;
    QTimer m_poll;
    QElapsedTimer m_waiting;
};

} // namespace tavro::playout
