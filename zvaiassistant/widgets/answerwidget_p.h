#pragma once

#include "widgets/answerwidget.h"
#include "widgets/chatitemwidget.h"

#include <QObject>

#include <optional>
#include <vector>

class QLayout;
class QPushButton;
class QScrollArea;

namespace tavro::aiassistant {

class ChatColumn;

class Q_DECL_HIDDEN AnswerWidget::Private : public QObject {
public:
    explicit Private(AnswerWidget *owner);

    void build();
    void retranslate();

    void addWelcomeItem();
    void addPlaceholder(ChatItemWidget::Kind kind);
    void add(ChatItemWidget *item);
    void removeFirst(const QMetaObject &itemClass);
    void clearItems();
    void reset();

    void setItemsEnabled(bool enabled);
    void stop();

    template <typename Item>
    void addNew(const ChatItemContext &context)
    {
        add(new Item(context, itemsWidget));
    }

private:
    void buildScrollArea();
    QLayout *makeClearRow();
    void connectItem(ChatItemWidget *item);
    void putIntoTabOrder(ChatItemWidget *item);
    QWidget *lastTabStop() const;
    std::vector<ChatItemWidget *> items() const;

    template <typename Change>
    void changeItems(Change change);

    void scrollToBottomLater();
    void scrollToBottom();
    void itemTyped();

    AnswerWidget *const q;
    QScrollArea *scrollArea = nullptr;
    QWidget *itemsWidget = nullptr;
    ChatColumn *itemsLayout = nullptr;
    QPushButton *clearButton = nullptr;
    bool resetting = false;
    bool scrollPending = false;
    std::optional<bool> itemsEnabled; ///< what all items' buttons are; empty where they differ
};

} // namespace tavro::aiassistant
