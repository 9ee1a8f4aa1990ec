#include "widgets/autoresizetextbrowser_p.h"

#include <QAbstractTextDocumentLayout>
#include <QPalette>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace tavro::aiassistant {

namespace {

constexpr std::chrono::milliseconds typingInterval{50};
constexpr std::chrono::milliseconds cursorInterval{500};

// A bar that is off still scrolls, when a selection is dragged over the edge or the row width exceeds the widget's.
void keepUnscrolled(QScrollBar *bar)
{
    QObject::connect(bar, &QScrollBar::rangeChanged, bar, [bar] { bar->setRange(0, 0); });
}

// The bars are not to be seen, but as children of the view they and the boxes that they stand in would have style
// sheets and fonts worked out for them, which takes a sixth of an item's time and memory. The view uses them to its
// end.
void takeOut(QScrollBar *bar, QObject *view)
{
    QWidget *const box = bar->parentWidget();
    box->setParent(nullptr);
    QObject::connect(view, &QObject::destroyed, box, [box] { delete box; });
}

} // namespace

AutoResizeTextBrowser::Private::Private(AutoResizeTextBrowser *owner)
    : resizer([owner](const QSize &size) { owner->setFixedSize(size); })
    , q(owner)
{ }

void AutoResizeTextBrowser::Private::setUp()
{
    setUpTimers();
    setUpView();
    setUpColours();
    typed.setFont(q->font());
}

void AutoResizeTextBrowser::Private::setUpTimers()
{
    typingTimer.setInterval(typingInterval);
    cursorTimer.setInterval(cursorInterval);
    connect(&typingTimer, &QTimer::timeout, q, &AutoResizeTextBrowser::slotTypeTimeout);
    connect(&cursorTimer, &QTimer::timeout, q, &AutoResizeTextBrowser::slotCursorTimeout);
}

void AutoResizeTextBrowser::Private::setUpView()
{
    q->setFrameShape(QFrame::NoFrame);
    q->setContextMenuPolicy(Qt::NoContextMenu);
    q->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    q->document()->setDocumentMargin(0);
    q->document()->setUndoRedoEnabled(false);
    // A wrap at the widget's own width would lay the whole text out again each time the widget grows.
    q->setLineWrapMode(QTextEdit::FixedPixelWidth);
    q->setLineWrapColumnOrWidth(TypedText::rowWidth);
    for (QScrollBar *const bar : {q->horizontalScrollBar(), q->verticalScrollBar()}) {
        keepUnscrolled(bar);
        takeOut(bar, q);
    }
    q->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    q->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void AutoResizeTextBrowser::Private::setUpColours()
{
    QPalette palette = q->palette();
    palette.setBrush(QPalette::Inactive, QPalette::Highlight, Qt::transparent);
    palette.setBrush(QPalette::Inactive, QPalette::HighlightedText, QColor(QStringLiteral("#FFFFFF")));
    q->setPalette(palette);
}

void AutoResizeTextBrowser::Private::stopTimers()
{
    typingTimer.stop();
    cursorTimer.stop();
}

void AutoResizeTextBrowser::Private::beginWith(const QString &text)
{
    typed.setText(text);
    showAnew(0, false);
}

void AutoResizeTextBrowser::Private::show(int count, bool cursor)
{
    if (count == typed.count() && cursor == typed.cursorShown())
        return;
    // The first character comes with a new text, so that the view's own cursor stays before it and does not run along.
    const bool oneMoreAtMost = count - typed.count() == 0 || count - typed.count() == 1;
    if (oneMoreAtMost && typed.count() > 0)
        showOneMore(count, cursor);
    else
        showAnew(count, cursor);
}

void AutoResizeTextBrowser::Private::showAnew(int count, bool cursor)
{
    typed.showFirst(count);
    typed.showCursor(cursor);
    q->setPlainText(typed.shown());
    fitAll();
    resizeLater();
}

void AutoResizeTextBrowser::Private::showOneMore(int count, bool cursor)
{
    const QTextBlock last = q->document()->lastBlock();
    const int paragraph = last.blockNumber();
    const int line = last.layout()->lineCount() - 1;
    const Qt::LayoutDirection direction = last.textDirection();
    bool wholeParagraph = false;
    {
        // The layout would have everything from the paragraph's first line on painted again.
        const QSignalBlocker unpainted(q->document()->documentLayout());
        edit(count > typed.count() ? typed.nextInsertion() : QString(), cursor);
        typed.showFirst(count);
        typed.showCursor(cursor);
        const QTextBlock now = q->document()->findBlockByNumber(paragraph);
        const bool ended = now != q->document()->lastBlock();
        wholeParagraph = fitParagraph(now, ended ? typed.rowsOf(now.text()) : typed.lastParagraphRows());
        wholeParagraph = wholeParagraph || now.textDirection() != direction;
        if (ended)
            fitParagraph(q->document()->lastBlock(), typed.lastParagraphRows());
    }
    updateFrom(paragraph, wholeParagraph ? 0 : line - 1);
    resizeLater();
}

void AutoResizeTextBrowser::Private::edit(const QString &insertion, bool cursor)
{
    QTextCursor end(q->document());
    end.movePosition(QTextCursor::End);
    end.beginEditBlock();
    if (typed.cursorShown() && !cursor)
        end.deletePreviousChar();
    else if (typed.cursorShown())
        end.setPosition(end.position() - 1);
    end.insertText(insertion);
    if (cursor && !typed.cursorShown())
        end.insertText(QString(TypedText::cursorMark));
    end.endEditBlock();
}

} // namespace tavro::aiassistant
