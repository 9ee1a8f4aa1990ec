#pragma once

#include "widgets/autoresizetextbrowser.h"
#include "widgets/typedtext.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTimer>

namespace tavro::aiassistant {

/// What is typed, and how the document is kept equal to it.
class Q_DECL_HIDDEN AutoResizeTextBrowser::Private {
public:
    explicit Private(AutoResizeTextBrowser *owner);

    void setUp();
    void beginWith(const QString &text);
    void show(int count, bool cursor);
    void adoptFont();
    void stopTimers();

    QString fullText;
    int shownCount = 0;
    bool cursorVisible = true;
    bool stopped = false;
    QTimer typingTimer;
    QTimer cursorTimer;

    TypedText typed; ///< what the document shows
    Resizer resizer;

private:
    void setUpTimers();
    void setUpView();
    void setUpColours();

    void showAnew(int count, bool cursor);
    void showOneMore(int count, bool cursor);
    void edit(const QString &insertion, bool cursor);

    void fitAll();
    bool fitParagraph(const QTextBlock &paragraph, int rows);
    qreal askedFor(qreal height) const;
    void setRowHeight(QTextCursor paragraphs, qreal height) const;
    void updateFrom(int paragraph, int line);

    void resizeLater();
    void resize();

    AutoResizeTextBrowser *const q;
    bool resizePending = false;
    qreal rowScale = 1;
};

/// The way in for code that has to turn the timers' hands.
class AutoResizeTextBrowserAccess {
public:
    static AutoResizeTextBrowser::Private &of(AutoResizeTextBrowser &browser) { return *browser.d; }
};

} // namespace tavro::aiassistant
