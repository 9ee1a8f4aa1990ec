#pragma once

#include "support/logcatcher.h"
#include "widgets/autoresizetextbrowser_p.h"

#include <QBackingStore>
#include <QImage>
#include <QRegularExpression>
#include <QtTest>

#include <optional>

namespace tavro::testsupport {

/// Keeps the timers of @p browser from firing by themselves; they can still be asked whether they run.
inline void holdTimers(aiassistant::AutoResizeTextBrowser &browser)
{
    aiassistant::AutoResizeTextBrowserAccess::of(browser).typingTimer.setInterval(std::chrono::hours(1));
    aiassistant::AutoResizeTextBrowserAccess::of(browser).cursorTimer.setInterval(std::chrono::hours(1));
}

/// What a tick of the typing timer does, and what it left to the event loop.
inline void typeOne(aiassistant::AutoResizeTextBrowser &browser)
{
    QVERIFY(QMetaObject::invokeMethod(&browser, "slotTypeTimeout"));
    QCoreApplication::processEvents();
}

/// The same of the cursor's timer.
inline void blink(aiassistant::AutoResizeTextBrowser &browser)
{
    QVERIFY(QMetaObject::invokeMethod(&browser, "slotCursorTimeout"));
    QCoreApplication::processEvents();
}

/// What the window shows now, without any painting.
inline QImage onScreen(const QWidget &window)
{
    return static_cast<const QImage *>(window.backingStore()->paintDevice())->copy();
}

/// Base of test classes in which a warning that was not announced is a failure.
class QuietTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_log.emplace(); }
    void cleanup()
    {
        QStringList complaints = m_log->complaints();
        m_log.reset();
        // The offscreen platform says so of each window.
        const QRegularExpression noise(QStringLiteral("propagateSizeHints"));
        for (const QString &line : complaints.filter(noise))
            complaints.removeOne(line);
        QCOMPARE(complaints, QStringList());
    }

private:
    std::optional<LogCatcher> m_log;
};

} // namespace tavro::testsupport
