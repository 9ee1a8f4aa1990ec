#include "translate/lookup.h"
#include "widgets/answerwidget_p.h"
#include "widgets/chatcolumn.h"
#include "widgets/chatitems.h"
#include "widgets/focusring.h"

#include <QCoreApplication>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

#include <vector>

namespace tavro::aiassistant {

namespace {

constexpr int listWidth = 800;

bool isHiddenForGood(const QWidget &widget)
{
    return widget.isHidden() && widget.testAttribute(Qt::WA_WState_ExplicitShowHide);
}

// Without the buttons that the item's kind does not show. They stay where they were made, and must: setTabOrder() looks
// back from a widget for one that takes the focus, and would pass all the labels and boxes of all items before.
std::vector<QWidget *> tabStops(const QWidget &widget)
{
    std::vector<QWidget *> stops;
    const auto children = widget.findChildren<QWidget *>();
    for (QWidget *const child : children) {
        if ((child->focusPolicy() & Qt::TabFocus) != 0 && !isHiddenForGood(*child))
            stops.push_back(child);
    }
    return stops;
}

ChatItemContext contextWithMessage(const QString &message)
{
    ChatItemContext context;
    context.message = message.toStdString();
    return context;
}

} // namespace

AnswerWidget::Private::Private(AnswerWidget *owner)
    : q(owner)
{ }

void AnswerWidget::Private::build()
{
    q->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    auto *const outer = new QVBoxLayout(q);
    outer->setContentsMargins(0, 0, 0, 10);
    outer->setSpacing(10);
    buildScrollArea();
    outer->addWidget(scrollArea);
    outer->addLayout(makeClearRow());
}

void AnswerWidget::Private::buildScrollArea()
{
    scrollArea = new QScrollArea(q);
    scrollArea->setObjectName(QStringLiteral("scrollArea"));
    scrollArea->setFixedWidth(listWidth);
    scrollArea->setFrameShape(QFrame::NoFrame);
    scrollArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrollArea->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    // The vertical bar covers the right margin, and following the focus must not shift the items because of it.
    QScrollBar *const across = scrollArea->horizontalScrollBar();
    connect(across, &QScrollBar::rangeChanged, across, [across] { across->setRange(0, 0); });

    itemsWidget = new QWidget;
    itemsWidget->setObjectName(QStringLiteral("itemsWidget"));
    itemsWidget->setFixedWidth(listWidth);
    itemsWidget->setStyleSheet(QStringLiteral("QWidget#itemsWidget{background: transparent;}"));
    itemsLayout = new ChatColumn(itemsWidget);
    itemsLayout->setContentsMargins(20, 20, 20, 0);
    itemsLayout->setSpacing(24);
    itemsLayout->addStretch();
    scrollArea->setWidget(itemsWidget);
    scrollArea->setWidgetResizable(true);
    new FocusRing(scrollArea);
}

QLayout *AnswerWidget::Private::makeClearRow()
{
    auto *const row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 20, 0);
    row->setSpacing(0);
    row->addStretch();
    clearButton = new QPushButton(q);
    clearButton->setObjectName(QStringLiteral("clearButton"));
    clearButton->setAutoDefault(true); // Return presses it, not only the space bar
    connect(clearButton, &QPushButton::clicked, this, &Private::clearItems);
    row->addWidget(clearButton);
    return row;
}

void AnswerWidget::Private::retranslate()
{
    clearButton->setText(text("Clear"));
    scrollArea->setAccessibleName(nameText("Conversation"));
    changeItems([](ChatItemWidget *item) { item->retranslate(); });
}

void AnswerWidget::Private::addWelcomeItem()
{
    addNew<HelloItemWidget>(contextWithMessage(ChatItemWidget::fixedText(ChatItemWidget::Kind::Hello)));
}

void AnswerWidget::Private::addPlaceholder(ChatItemWidget::Kind kind)
{
    const ChatItemContext context = contextWithMessage(ChatItemWidget::fixedText(kind));
    if (kind == ChatItemWidget::Kind::TextGenerating)
        addNew<TextGeneratingItemWidget>(context);
    else
        addNew<ImageGeneratingItemWidget>(context);
}

void AnswerWidget::Private::add(ChatItemWidget *item)
{
    connectItem(item);
    putIntoTabOrder(item);
    itemsLayout->append(item);
    if (itemsEnabled == false)
        itemsEnabled.reset();
    scrollToBottomLater();
}

void AnswerWidget::Private::connectItem(ChatItemWidget *item)
{
    using Item = ChatItemWidget;
    connect(item, &Item::sigModifyButtonClicked, q, &AnswerWidget::sigModifyButtonClicked);
    connect(item, &Item::sigDownloadButtonClicked, q, &AnswerWidget::sigDownloadButtonClicked);
    connect(item, &Item::sigLookImageButtonClicked, q, &AnswerWidget::sigLookImageButtonClicked);
    connect(item, &Item::sigTryAgainImageButtonClicked, q, &AnswerWidget::sigTryAgainImageButtonClicked);
    connect(item, &Item::sigTryAgainQuestionButtonClicked, q, &AnswerWidget::sigTryAgainQuestionButtonClicked);
    connect(item, &Item::sigTypingFinished, this, &Private::itemTyped);
    connect(item, &Item::sigTyping, this, &Private::scrollToBottomLater);
}

// A new widget comes last in the window's order, behind the ask area. The items come before the clear button.
void AnswerWidget::Private::putIntoTabOrder(ChatItemWidget *item)
{
    QWidget *before = lastTabStop();
    for (QWidget *const stop : tabStops(*item)) {
        QWidget::setTabOrder(before, stop);
        before = stop;
    }
}

QWidget *AnswerWidget::Private::lastTabStop() const
{
    for (int index = itemsLayout->count() - 1; index >= 0; --index) {
        const QWidget *const item = itemsLayout->itemAt(index)->widget();
        const std::vector<QWidget *> stops = item == nullptr ? std::vector<QWidget *>() : tabStops(*item);
        if (!stops.empty())
            return stops.back();
    }
    return scrollArea;
}

void AnswerWidget::Private::removeFirst(const QMetaObject &itemClass)
{
    for (ChatItemWidget *const item : items()) {
        if (itemClass.cast(item) == nullptr)
            continue;
        itemsLayout->remove(item);
        item->deleteLater();
        scrollToBottomLater();
        return;
    }
}

void AnswerWidget::Private::clearItems()
{
    while (itemsLayout->count() > 0) {
        const std::unique_ptr<QLayoutItem> item(itemsLayout->takeAt(itemsLayout->count() - 1));
        if (item->widget() != nullptr)
            item->widget()->deleteLater();
    }
    itemsLayout->addStretch();
    itemsEnabled.reset();
    scrollToBottomLater();
    Q_EMIT q->sigClearAllAnswers();
}

void AnswerWidget::Private::reset()
{
    if (resetting)
        return;
    resetting = true;
    clearItems();
    addWelcomeItem();
    resetting = false;
}

void AnswerWidget::Private::setItemsEnabled(bool enabled)
{
    if (itemsEnabled == enabled)
        return;
    changeItems([enabled](ChatItemWidget *item) { item->setButtonsEnabled(enabled); });
    itemsEnabled = enabled;
}

void AnswerWidget::Private::stop()
{
    for (ChatItemWidget *const item : items())
        item->stopTyping();
    Q_EMIT q->sigNeedSetFocus();
}

std::vector<ChatItemWidget *> AnswerWidget::Private::items() const
{
    std::vector<ChatItemWidget *> found;
    for (int index = 0; index < itemsLayout->count(); ++index) {
        if (auto *const item = qobject_cast<ChatItemWidget *>(itemsLayout->itemAt(index)->widget()))
            found.push_back(item);
    }
    return found;
}

// One walk over the items: those of a long conversation are in no cache any more when a second one comes.
template <typename Change>
void AnswerWidget::Private::changeItems(Change change)
{
    const QRect inSight(-itemsWidget->pos(), scrollArea->viewport()->size());
    for (int index = 0; index < itemsLayout->count(); ++index) {
        auto *const item = qobject_cast<ChatItemWidget *>(itemsLayout->itemAt(index)->widget());
        if (item == nullptr)
            continue;
        std::optional<ChatItemWidget::Unpainted> unpainted;
        if (!item->geometry().intersects(inSight))
            unpainted.emplace(*item);
        change(item);
    }
}

void AnswerWidget::Private::scrollToBottomLater()
{
    if (scrollPending)
        return;
    scrollPending = true;
    QTimer::singleShot(0, this, [this] { scrollToBottom(); });
}

// The bottom is where it belongs only when the column has its new height, and then the area has learnt of it.
void AnswerWidget::Private::scrollToBottom()
{
    scrollPending = false;
    itemsLayout->layOut();
    QCoreApplication::sendPostedEvents(scrollArea->viewport(), QEvent::LayoutRequest);
    QScrollBar *const bar = scrollArea->verticalScrollBar();
    bar->setValue(bar->maximum());
}

void AnswerWidget::Private::itemTyped()
{
    scrollToBottomLater();
    Q_EMIT q->sigTypingFinished();
    Q_EMIT q->sigNeedSetFocus();
}

} // namespace tavro::aiassistant
