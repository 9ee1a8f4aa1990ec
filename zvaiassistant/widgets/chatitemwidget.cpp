#include "widgets/chatitemwidget.h"

#include "translate/lookup.h"
#include "widgets/autoresizetextbrowser.h"
#include "widgets/chatitemwidget_p.h"

#include <QPushButton>
#include <QStringList>

namespace tavro::aiassistant {

ChatItemWidget::ChatItemWidget(Kind kind, const ChatItemContext &context, QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this, kind, context))
{
    setObjectName(QStringLiteral("chatItemWidget"));
    d->build();
    d->retranslate();
    d->showText();
}

ChatItemWidget::~ChatItemWidget() = default;

QString ChatItemWidget::fixedText(Kind kind)
{
    switch (kind) {
    case Kind::Hello:
        return text("WelcomeText").split(u'#').join(u'\n');
    case Kind::TextGenerating:
        return text("Thinking");
    case Kind::ImageGenerating:
        return text("ImageGenerating");
    case Kind::Question:
    case Kind::AnswerText:
    case Kind::AnswerImage:
        break;
    }
    return {};
}

const ChatItemContext &ChatItemWidget::context() const
{
    return d->context;
}

// The attribute alone: setUpdatesEnabled() would ask for the painting that it held back.
ChatItemWidget::Unpainted::Unpainted(ChatItemWidget &item)
    : m_item(item)
{
    m_item.d->setPaintRequests(false);
}

ChatItemWidget::Unpainted::~Unpainted()
{
    m_item.d->setPaintRequests(true);
}

void ChatItemWidget::setButtonsEnabled(bool enabled)
{
    for (QPushButton *const button : {d->copyButton, d->modifyButton, d->tryAgainButton})
        button->setEnabled(enabled);
}

void ChatItemWidget::stopTyping()
{
    if (d->textBrowser == nullptr)
        return;
    d->textBrowser->stopTyping();
    Q_EMIT sigTypingFinished();
}

void ChatItemWidget::retranslate()
{
    d->retranslate();
    if (d->hasFixedText())
        d->textBrowser->showText(fixedText(d->kind));
}

} // namespace tavro::aiassistant
