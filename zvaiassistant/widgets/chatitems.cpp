#include "widgets/chatitems.h"

namespace tavro::aiassistant {

HelloItemWidget::HelloItemWidget(const ChatItemContext &context, QWidget *parent)
    : ChatItemWidget(Kind::Hello, context, parent)
{ }

QuestionItemWidget::QuestionItemWidget(const ChatItemContext &context, QWidget *parent)
    : ChatItemWidget(Kind::Question, context, parent)
{ }

AnswerTextItemWidget::AnswerTextItemWidget(const ChatItemContext &context, QWidget *parent)
    : ChatItemWidget(Kind::AnswerText, context, parent)
{ }

AnswerImageItemWidget::AnswerImageItemWidget(const ChatItemContext &context, QWidget *parent)
    : ChatItemWidget(Kind::AnswerImage, context, parent)
{ }

TextGeneratingItemWidget::TextGeneratingItemWidget(const ChatItemContext &context, QWidget *parent)
    : ChatItemWidget(Kind::TextGenerating, context, parent)
{ }

ImageGeneratingItemWidget::ImageGeneratingItemWidget(const ChatItemContext &context, QWidget *parent)
    : ChatItemWidget(Kind::ImageGenerating, context, parent)
{ }

} // namespace tavro::aiassistant
