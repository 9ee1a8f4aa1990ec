#include "widgets/answerwidget.h"

#include "widgets/answerwidget_p.h"
#include "widgets/chatitems.h"

namespace tavro::aiassistant {

AnswerWidget::AnswerWidget(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    d->build();
    d->retranslate();
    d->addWelcomeItem();
}

AnswerWidget::~AnswerWidget() = default;

void AnswerWidget::addQuestionItem(const ChatItemContext &context)
{
    d->addNew<QuestionItemWidget>(context);
}

void AnswerWidget::addTextGeneratingItem()
{
    d->addPlaceholder(ChatItemWidget::Kind::TextGenerating);
}

void AnswerWidget::addImageGeneratingItem()
{
    d->addPlaceholder(ChatItemWidget::Kind::ImageGenerating);
}

void AnswerWidget::addAnswerTextItem(const ChatItemContext &context)
{
    deleteGeneratingItem();
    d->addNew<AnswerTextItemWidget>(context);
}

void AnswerWidget::addAnswerImageItem(const ChatItemContext &context)
{
    deleteGeneratingItem();
    d->addNew<AnswerImageItemWidget>(context);
}

void AnswerWidget::addErrorItem(const ChatItemContext &context)
{
    addAnswerTextItem(context);
}

void AnswerWidget::deleteGeneratingItem()
{
    d->removeFirst(ImageGeneratingItemWidget::staticMetaObject);
    d->removeFirst(TextGeneratingItemWidget::staticMetaObject);
}

void AnswerWidget::reset()
{
    d->reset();
}

void AnswerWidget::setItemsEnabled(bool enabled)
{
    d->setItemsEnabled(enabled);
}

void AnswerWidget::stop()
{
    d->stop();
}

void AnswerWidget::retranslate()
{
    d->retranslate();
}

} // namespace tavro::aiassistant
