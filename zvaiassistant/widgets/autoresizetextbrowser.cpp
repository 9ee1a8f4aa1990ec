#include "widgets/autoresizetextbrowser.h"

#include "widgets/autoresizetextbrowser_p.h"
#include "widgets/harmlesstext.h"

#include <QEvent>
#include <QWheelEvent>

namespace tavro::aiassistant {

// Without its parent, the view is soon set up: there is no style sheet yet, and no other widget in its window.
AutoResizeTextBrowser::AutoResizeTextBrowser(QWidget *parent)
    : d(std::make_unique<Private>(this))
{
    d->setUp();
    setParent(parent);
}

AutoResizeTextBrowser::~AutoResizeTextBrowser() = default;

void AutoResizeTextBrowser::showText(const QString &text)
{
    d->stopTimers();
    d->fullText = harmlessText(text);
    d->shownCount = d->fullText.size();
    d->cursorVisible = false;
    d->beginWith(d->fullText);
    d->show(d->shownCount, false);
}

void AutoResizeTextBrowser::typeText(const QString &text)
{
    d->fullText = harmlessText(text);
    d->shownCount = 0;
    d->cursorVisible = true;
    d->beginWith(d->fullText);
    d->typingTimer.start();
    d->cursorTimer.start();
}

void AutoResizeTextBrowser::stopTyping()
{
    if (d->stopped)
        return;
    d->stopTimers();
    d->stopped = true;
    d->show(d->shownCount, false);
}

void AutoResizeTextBrowser::setResizer(const Resizer &resizer)
{
    d->resizer = resizer;
}

void AutoResizeTextBrowser::slotTypeTimeout()
{
    if (d->stopped)
        return;
    if (d->shownCount < d->fullText.size()) {
        ++d->shownCount;
        d->show(d->shownCount, d->cursorVisible);
        Q_EMIT sigTyping();
    } else {
        d->stopTimers();
        d->show(d->shownCount, false);
        Q_EMIT sigTypingFinished();
    }
}

void AutoResizeTextBrowser::slotCursorTimeout()
{
    if (d->stopped)
        return;
    d->cursorVisible = !d->cursorVisible;
    const bool typedOut = !d->typingTimer.isActive() && d->shownCount >= d->fullText.size();
    d->show(d->shownCount, d->cursorVisible && !typedOut);
}

void AutoResizeTextBrowser::changeEvent(QEvent *event)
{
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        d->adoptFont();
}

// The text is always there whole: the wheel is the list's, and Ctrl with it must not zoom the text out of its size.
void AutoResizeTextBrowser::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

} // namespace tavro::aiassistant
