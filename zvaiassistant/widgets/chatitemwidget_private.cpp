#include "translate/lookup.h"
#include "widgets/autoresizetextbrowser.h"
#include "widgets/chatcolumn.h"
#include "widgets/chatitemwidget_p.h"
#include "widgets/iconbutton.h"
#include "widgets/loadinglabel.h"
#include "widgets/pixmaplabel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tavro::aiassistant {

namespace {

constexpr int avatarSize = 36;
constexpr int buttonRowHeight = 20;

} // namespace

ChatItemWidget::Private::Private(ChatItemWidget *owner, Kind itemKind, const ChatItemContext &itemContext)
    : q(owner)
    , kind(itemKind)
    , context(itemContext)
{ }

void ChatItemWidget::Private::build()
{
    auto *const root = new QHBoxLayout(q);
    root->setContentsMargins(0, 0, 0, 0);
    root->setSpacing(8);
    root->addLayout(makeAvatarColumn());
    makeRightWidget();
    // The box is as wide as what it holds.
    root->addWidget(rightWidget, 0, Qt::AlignLeft);
    connectParts();
}

QLayout *ChatItemWidget::Private::makeAvatarColumn()
{
    auto *const column = new QVBoxLayout;
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    // A label, because the sheets give the picture to labels of that type.
    auto *const avatar = new QLabel(q);
    avatar->setObjectName(QStringLiteral("avatar"));
    avatar->setFixedSize(avatarSize, avatarSize);
    const bool ofUser = kind == Kind::Question;
    avatar->setProperty("type", ofUser ? QStringLiteral("user") : QStringLiteral("aiassistant"));
    column->addWidget(avatar);
    column->addStretch();
    return column;
}

void ChatItemWidget::Private::makeRightWidget()
{
    const bool ofPictures = kind == Kind::AnswerImage;
    rightWidget = new QWidget(q);
    rightWidget->setObjectName(QStringLiteral("rightWidget"));
    auto *const column = new QVBoxLayout(rightWidget);
    column->setContentsMargins(ofPictures ? QMargins(8, 6, 8, 6) : QMargins(12, 8, 12, 8));
    column->setSpacing(10);
    column->addLayout(ofPictures ? makePictureColumn() : makeTextRow());
    column->addWidget(makeButtonRow());
}

QLayout *ChatItemWidget::Private::makeTextRow()
{
    auto *const row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    textBrowser = new AutoResizeTextBrowser(rightWidget);
    textBrowser->setObjectName(QStringLiteral("textBrowser"));
    textBrowser->setResizer([this](const QSize &size) { resizeText(size); });
    row->addWidget(textBrowser);
    if (kind == Kind::TextGenerating || kind == Kind::ImageGenerating)
        row->addWidget(makeLoadingLabel());
    row->addStretch();
    return row;
}

QLayout *ChatItemWidget::Private::makePictureColumn()
{
    auto *const column = new QVBoxLayout;
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(10);
    caption = new QLabel(rightWidget);
    caption->setObjectName(QStringLiteral("textLabel"));
    caption->setStyleSheet(QStringLiteral("background: transparent; color: #FFFFFF;"));
    column->addWidget(caption);
    pictures = new PixmapLabel(context, rightWidget);
    column->addWidget(pictures);
    return column;
}

QWidget *ChatItemWidget::Private::makeLoadingLabel()
{
    auto *const label = new LoadingLabel(rightWidget);
    label->setObjectName(QStringLiteral("loadingLabel"));
    return label;
}

QWidget *ChatItemWidget::Private::makeButtonRow()
{
    auto *const buttons = new QWidget(rightWidget);
    buttons->setObjectName(QStringLiteral("buttonRow"));
    buttons->setFixedHeight(hasButtons() ? buttonRowHeight : 0);
    auto *const row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(16);
    copyButton = addButton(row, QStringLiteral("copyButton"));
    modifyButton = addButton(row, QStringLiteral("modifyButton"));
    tryAgainButton = addButton(row, QStringLiteral("tryAgainButton"));
    row->addStretch();
    copyButton->setVisible(hasButtons());
    modifyButton->setVisible(kind == Kind::Question);
    tryAgainButton->setVisible(kind == Kind::AnswerText);
    // A row without a height would still have its spacing above.
    buttons->setVisible(hasButtons());
    return buttons;
}

QPushButton *ChatItemWidget::Private::addButton(QHBoxLayout *row, const QString &name)
{
    auto *const button = new IconButton(row->parentWidget());
    button->setObjectName(name);
    button->setAutoDefault(true); // Return presses it, not only the space bar
    button->hide();
    row->addWidget(button);
    return button;
}

void ChatItemWidget::Private::connectParts()
{
    connect(tryAgainButton, &QPushButton::clicked, this,
            [this] { Q_EMIT q->sigTryAgainQuestionButtonClicked(context); });
    if (textBrowser != nullptr)
        connectText();
    if (pictures != nullptr)
        connectPictures();
}

void ChatItemWidget::Private::connectText()
{
    connect(copyButton, &QPushButton::clicked, this, &Private::copy);
    connect(modifyButton, &QPushButton::clicked, this, &Private::modify);
    connect(textBrowser, &AutoResizeTextBrowser::sigTypingFinished, q, &ChatItemWidget::sigTypingFinished);
    connect(textBrowser, &AutoResizeTextBrowser::sigTyping, q, &ChatItemWidget::sigTyping);
}

void ChatItemWidget::Private::connectPictures()
{
    connect(pictures, &PixmapLabel::sigLookImageButtonClicked, q, &ChatItemWidget::sigLookImageButtonClicked);
    connect(pictures, &PixmapLabel::sigDownloadButtonClicked, q, &ChatItemWidget::sigDownloadButtonClicked);
    connect(pictures, &PixmapLabel::sigTryAgainImageButtonClicked, q, &ChatItemWidget::sigTryAgainImageButtonClicked);
}

bool ChatItemWidget::Private::hasButtons() const
{
    return kind == Kind::Question || kind == Kind::AnswerText;
}

bool ChatItemWidget::Private::hasFixedText() const
{
    return kind == Kind::Hello || kind == Kind::TextGenerating || kind == Kind::ImageGenerating;
}

void ChatItemWidget::Private::setPaintRequests(bool on)
{
    for (QPushButton *const button : {copyButton, modifyButton, tryAgainButton})
        button->setAttribute(Qt::WA_UpdatesDisabled, !on || !rightWidget->updatesEnabled());
}

void ChatItemWidget::Private::retranslate()
{
    copyButton->setText(text("Copy"));
    modifyButton->setText(text("Modify"));
    tryAgainButton->setText(text("TryAgain"));
    if (textBrowser != nullptr)
        textBrowser->setAccessibleName(nameText(kind == Kind::Question ? "Question" : "Answer"));
    if (caption != nullptr)
        caption->setText(text("ImageGenerated"));
    if (pictures != nullptr)
        pictures->retranslate();
}

void ChatItemWidget::Private::showText()
{
    if (textBrowser == nullptr)
        return;
    if (kind == Kind::AnswerText)
        textBrowser->typeText(QString::fromStdString(context.message));
    else
        textBrowser->showText(QString::fromStdString(kind == Kind::Question ? context.question : context.message));
}

void ChatItemWidget::Private::resizeText(const QSize &size)
{
    if (textBrowser->minimumSize() == size && textBrowser->maximumSize() == size)
        return;
    const ChatColumn::ItemChange change(q);
    textBrowser->setFixedSize(size);
}

void ChatItemWidget::Private::copy()
{
    QGuiApplication::clipboard()->setText(textBrowser->toPlainText());
}

void ChatItemWidget::Private::modify()
{
    Q_EMIT q->sigModifyButtonClicked(textBrowser->toPlainText(), static_cast<QuestionType>(kind), context.picInfo);
}

} // namespace tavro::aiassistant
