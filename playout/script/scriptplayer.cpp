#include "script/scriptplayer.h"

#include "script/userinput.h"
#include "script/widgetreport.h"
#include "script/widgetsearch.h"

#include <QPixmap>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace tavro::playout {

namespace {

constexpr std::chrono::milliseconds lookEvery{20};
constexpr std::chrono::milliseconds longestActivation{2000};

} // namespace

ScriptPlayer::ScriptPlayer(std::vector<ScriptStep> steps, QWidget &window)
    : m_steps(std::move(steps))
    , m_window(window)
{
    connect(&m_poll, &QTimer::timeout, this, &ScriptPlayer::look);
}

void ScriptPlayer::start()
{
    m_waiting.start();
    startWhenActive();
}

// Where no window manager gives the window the keyboard, it begins all the same.
void ScriptPlayer::startWhenActive()
{
    if (m_window.isActiveWindow() || m_waiting.hasExpired(longestActivation.count()))
        next();
    else
        QTimer::singleShot(lookEvery, this, &ScriptPlayer::startWhenActive);
}

// Each step begins from the event loop, so that what the one before it set off is done.
void ScriptPlayer::next()
{
    QTimer::singleShot(0, this, &ScriptPlayer::playNext);
}

void ScriptPlayer::playNext()
{
    if (m_next < m_steps.size())
        play(m_steps[m_next]);
}

void ScriptPlayer::play(const ScriptStep &step)
{
    switch (step.kind) {
    case ScriptStep::Kind::Type:
        userinput::type(step.text, m_window);
        return done();
    case ScriptStep::Kind::Press:
        userinput::press(step.key, m_window);
        return done();
    case ScriptStep::Kind::Click:
        return point(step, userinput::click);
    case ScriptStep::Kind::Hover:
        return point(step, userinput::hover);
    case ScriptStep::Kind::Wait:
        return startWaiting();
    case ScriptStep::Kind::Tell:
        return tell(step);
    case ScriptStep::Kind::Screenshot:
        return takeScreenshot(step);
    case ScriptStep::Kind::Resize:
        m_window.resize(step.size);
        return done();
    case ScriptStep::Kind::Quit:
        Q_EMIT sigQuit();
        return;
    }
}

void ScriptPlayer::done()
{
    ++m_next;
    next();
}

void ScriptPlayer::failUnless(bool isDone, const QString &why)
{
    if (isDone)
        done();
    else
        fail(why);
}

void ScriptPlayer::fail(const QString &why)
{
    Q_EMIT sigFailed(QStringLiteral("line %1: %2").arg(m_steps[m_next].line).arg(why));
}

// Of several controls with one name, such as the buttons of the answers, the last is the newest.
void ScriptPlayer::point(const ScriptStep &step, bool (*act)(QWidget &widget))
{
    const QList<QWidget *> widgets = visibleWidgets(step.widget);
    if (widgets.isEmpty())
        return fail(QStringLiteral("no \"%1\" is to be seen").arg(step.widget));
    QWidget &widget = *widgets.last();
    if (!widget.isEnabled())
        return fail(QStringLiteral("\"%1\" is disabled").arg(step.widget));
    failUnless(act(widget), QStringLiteral("something lies over \"%1\"").arg(step.widget));
}

void ScriptPlayer::startWaiting()
{
    m_waiting.start();
    m_poll.start(lookEvery);
    look();
}

void ScriptPlayer::look()
{
    const ScriptStep &step = m_steps[m_next];
    const bool reached = holds(step);
    if (!reached && !m_waiting.hasExpired(step.limit.count()))
        return;
    m_poll.stop();
    failUnless(reached, QStringLiteral("waited in vain; %1").arg(whatIsThere(step)));
}

bool ScriptPlayer::holds(const ScriptStep &step) const
{
    const QList<QWidget *> visible = visibleWidgets(step.widget);
    switch (step.condition) {
    case ScriptStep::Condition::Visible:
        return !visible.isEmpty();
    case ScriptStep::Condition::Hidden:
        return visible.isEmpty();
    case ScriptStep::Condition::Enabled:
        return !visible.isEmpty() && visible.last()->isEnabled();
    case ScriptStep::Condition::Disabled:
        return !visible.isEmpty() && !visible.last()->isEnabled();
    case ScriptStep::Condition::Focused:
        return !visible.isEmpty() && visible.last()->hasFocus();
    case ScriptStep::Condition::Text:
        break;
    }
    return std::any_of(visible.begin(), visible.end(),
                       [&step](const QWidget *widget) { return shownText(*widget).contains(step.text); });
}

QString ScriptPlayer::whatIsThere(const ScriptStep &step) const
{
    if (allWidgets(step.widget).isEmpty())
        return QStringLiteral("there is no \"%1\"").arg(step.widget);
    const QList<QWidget *> visible = visibleWidgets(step.widget);
    if (visible.isEmpty())
        return QStringLiteral("\"%1\" is hidden").arg(step.widget);
    return QStringLiteral("\"%1\" is %2 and shows \"%3\"")
        .arg(step.widget, visible.last()->isEnabled() ? QStringLiteral("enabled") : QStringLiteral("disabled"),
             shownText(*visible.last()));
}

void ScriptPlayer::tell(const ScriptStep &step)
{
    const QList<QWidget *> widgets = visibleWidgets(step.widget);
    if (widgets.isEmpty())
        return fail(QStringLiteral("no \"%1\" is to be seen").arg(step.widget));
    Q_EMIT sigTold(reportOn(*widgets.last()));
    done();
}

void ScriptPlayer::takeScreenshot(const ScriptStep &step)
{
    failUnless(m_window.grab().save(step.text, "PNG"), QStringLiteral("cannot write %1").arg(step.text));
}

} // namespace tavro::playout
