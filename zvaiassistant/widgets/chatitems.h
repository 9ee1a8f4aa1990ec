#pragma once

#include "widgets/chatitemwidget.h"

namespace tavro::aiassistant {

// The kinds of chat items. They add nothing but their kind.

/// The greeting: the context's message.
class HelloItemWidget : public ChatItemWidget {
    Q_OBJECT

public:
    explicit HelloItemWidget(const ChatItemContext &context, QWidget *parent = nullptr);
};

/// What the user asked: the context's question.
class QuestionItemWidget : public ChatItemWidget {
    Q_OBJECT

public:
    explicit QuestionItemWidget(const ChatItemContext &context, QWidget *parent = nullptr);
};

/// An answer or an error: the context's message, which types itself out.
class AnswerTextItemWidget : public ChatItemWidget {
    Q_OBJECT

public:
    explicit AnswerTextItemWidget(const ChatItemContext &context, QWidget *parent = nullptr);
};

/// The context's pictures.
class AnswerImageItemWidget : public ChatItemWidget {
    Q_OBJECT

public:
    explicit AnswerImageItemWidget(const ChatItemContext &context, QWidget *parent = nullptr);
};

/// Stands until a text answer comes: the context's message and an animation.
class TextGeneratingItemWidget : public ChatItemWidget {
    Q_OBJECT

public:
    explicit TextGeneratingItemWidget(const ChatItemContext &context, QWidget *parent = nullptr);
};

/// Stands until a picture comes: the context's message and an animation.
class ImageGeneratingItemWidget : public ChatItemWidget {
    Q_OBJECT

public:
    explicit ImageGeneratingItemWidget(const ChatItemContext &context, QWidget *parent = nullptr);
};

} // namespace tavro::aiassistant
