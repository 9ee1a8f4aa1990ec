#include "widgets/askwidget.h"

#include "translate/lookup.h"
#include "widgets/askwidget_p.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QFrame>
#include <QGraphicsOpacityEffect>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTextEdit>

#include <array>
#include <utility>

namespace tavro::aiassistant {

namespace {

constexpr int maxLength = 200;
constexpr int pictureWidth = 1920;
constexpr double faded = 0.4;
constexpr double placeholderOpacity = 0.6;

struct Ratio {
    float width;
    float height;
};
constexpr std::array<Ratio, 4> ratios{{{16, 9}, {16, 10}, {5, 4}, {4, 3}}}; // in the chooser's order

int pictureHeight(int ratioIndex)
{
    if (ratioIndex < 0 || ratioIndex >= static_cast<int>(ratios.size()))
        return pictureWidth;
    const Ratio ratio = ratios[static_cast<std::size_t>(ratioIndex)];
    return static_cast<int>(pictureWidth * ratio.height / ratio.width);
}

/// The part of a text that may stay: never half of a surrogate pair.
QString limited(const QString &text)
{
    const bool splitsPair = text.at(maxLength - 1).isHighSurrogate();
    return text.left(splitsPair ? maxLength - 1 : maxLength);
}

} // namespace

void AskWidget::Private::slotTextEditTextChanged()
{
    const bool hasText = !edit->toPlainText().isEmpty();
    send->setEnabled(hasText);
    sendOpacity->setOpacity(hasText ? 1.0 : faded);
    limitLength();
    remainWord->setText(QStringLiteral("%1/200").arg(edit->toPlainText().size()));
}

void AskWidget::Private::limitLength()
{
    const QString written = edit->toPlainText();
    if (written.size() > maxLength)
        writeText(limited(written));
}

void AskWidget::Private::writeText(const QString &content)
{
    edit->setPlainText(content);
    edit->moveCursor(QTextCursor::End);
}

void AskWidget::Private::slotGroupBtnClicked(QAbstractButton *button)
{
    applyMode(modes->id(button));
}

void AskWidget::Private::setMode(Mode mode)
{
    modes->button(mode)->setChecked(true);
    applyMode(mode);
}

void AskWidget::Private::applyMode(int mode)
{
    if (mode != AskAndAnswer && mode != GenerateImage)
        return;
    const bool isPicture = mode == GenerateImage;
    model->setVisible(!isPicture);
    onlineSearch->setVisible(!isPicture);
    ratio->setVisible(isPicture);
    style->setVisible(isPicture);
    updatePlaceholder();
    letTabReachChosenMode();
}

// As with all buttons of which one is chosen: the arrow keys go on to the other.
void AskWidget::Private::letTabReachChosenMode()
{
    for (QPushButton *const button : {askAndAnswer, generateImage})
        button->setFocusPolicy(button->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
}

void AskWidget::Private::updatePlaceholder()
{
    const QString placeholder = text(generateImage->isChecked() ? "DescribeImage" : "SendMsgToMe");
    edit->setPlaceholderText(placeholder);
    edit->setAccessibleName(placeholder);
}

// A style sheet gives the placeholder the colour of the text, and with it the look of something written.
void AskWidget::Private::dimPlaceholder()
{
    QPalette palette = edit->palette();
    QColor dimmed = palette.color(QPalette::Text);
    dimmed.setAlphaF(placeholderOpacity);
    if (palette.color(QPalette::PlaceholderText) == dimmed)
        return;
    palette.setColor(QPalette::PlaceholderText, dimmed);
    edit->setPalette(palette);
}

void AskWidget::Private::slotDealSendMsgBtnClicked()
{
    showStopButton(true);
    const QString content = edit->toPlainText();
    const QPointer<AskWidget> guard(q);
    if (askAndAnswer->isChecked())
        Q_EMIT q->sigSendToGenerateText(content);
    else
        Q_EMIT q->sigSendToGenrateImage(pictureRequest(content));
    if (guard)
        edit->clear();
}

PictureGenerateInfo AskWidget::Private::pictureRequest(const QString &content) const
{
    PictureGenerateInfo info;
    info.style = style->currentText().toStdString();
    info.content = content.toStdString();
    info.width = pictureWidth;
    info.height = pictureHeight(ratio->currentIndex());
    return info;
}

void AskWidget::Private::slotDealStopBtnClicked()
{
    Q_EMIT q->sigStopToGenerate();
}

void AskWidget::Private::showStopButton(bool isGenerating)
{
    send->setVisible(!isGenerating);
    stop->setVisible(isGenerating);
}

void AskWidget::Private::setAreaEnabled(bool enable)
{
    // A disabled edit hands the focus to the next control, which is stop: the next blank typed would end the answer. So
    // the ask area itself keeps it meanwhile.
    if (!enable && edit->hasFocus())
        q->setFocus(Qt::OtherFocusReason);
    for (QWidget *const control : std::initializer_list<QWidget *>{askAndAnswer, generateImage, askArea, edit, model,
                                                                   onlineSearch, ratio, style})
        control->setEnabled(enable);
    stop->setEnabled(true);
    showStopButton(!enable);
    if (enable && q->hasFocus())
        edit->setFocus(Qt::OtherFocusReason);
}

bool AskWidget::Private::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == edit && event->type() == QEvent::KeyPress)
        return handleKey(*static_cast<QKeyEvent *>(event));
    if (watched == edit && event->type() == QEvent::PaletteChange)
        dimPlaceholder();
    return QObject::eventFilter(watched, event);
}

bool AskWidget::Private::handleKey(const QKeyEvent &event)
{
    if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter)
        return false;
    if (event.modifiers().testFlag(Qt::ShiftModifier)) {
        edit->insertPlainText(QStringLiteral("\n"));
        edit->ensureCursorVisible();
    } else if (send->isVisibleTo(q) && send->isEnabled()) {
        slotDealSendMsgBtnClicked();
    }
    return true;
}

void AskWidget::Private::restoreStyle(const PictureGenerateInfo &info)
{
    const QString wanted = QString::fromStdString(info.style);
    for (int entry = 0; entry < style->count() && style->itemText(entry) == wanted; ++entry)
        style->setCurrentIndex(entry);
}

void AskWidget::Private::retranslate()
{
    askAndAnswer->setText(text("AIAnswer"));
    generateImage->setText(text("GeneateImage"));
    onlineSearch->setText(text("OnlineSearch"));
    send->setText(text("Send"));
    stop->setText(text("Stop"));
    for (int entry = 0; entry < style->count(); ++entry)
        style->setItemText(entry, text(qPrintable(QStringLiteral("Style%1").arg(entry + 1))));
    for (const auto &[chooser, name] : {std::pair(ratio, "Aspect Ratio"), std::pair(style, "Style")}) {
        chooser->setAccessibleName(nameText(name));
        // Where Qt gives what is chosen as a chooser's name, this is still told.
        chooser->setAccessibleDescription(nameText(name));
        chooser->setToolTip(nameText(name));
    }
    updatePlaceholder();
}

AskWidget::AskWidget(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{ }

AskWidget::~AskWidget() = default;

void AskWidget::setAskAreaEnable(bool enable)
{
    d->setAreaEnabled(enable);
}

void AskWidget::reset()
{
    d->setMode(Private::AskAndAnswer);
    d->edit->clear();
    d->setAreaEnabled(true);
    d->model->setChecked(false);
    d->onlineSearch->setChecked(false);
    d->ratio->setCurrentIndex(0);
    d->style->setCurrentIndex(0);
}

void AskWidget::setQuestion(const QString &question, QuestionType type, const PictureGenerateInfo &picInfo, bool modify)
{
    if (type == QuestionType::Text) {
        d->setMode(Private::AskAndAnswer);
    } else if (type == QuestionType::Picture) {
        d->setMode(Private::GenerateImage);
        d->restoreStyle(picInfo);
    }
    if (modify)
        d->writeText(question);
}

void AskWidget::tryAgainPicture(const QString &question, const PictureGenerateInfo &picInfo)
{
    d->setMode(Private::GenerateImage);
    d->writeText(question);
    d->restoreStyle(picInfo);
}

void AskWidget::focusEdit()
{
    d->edit->setFocus(Qt::OtherFocusReason);
}

void AskWidget::retranslate()
{
    d->retranslate();
}

} // namespace tavro::aiassistant
