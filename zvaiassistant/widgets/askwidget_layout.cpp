#include "widgets/askwidget_p.h"
#include "widgets/iconbutton.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QCoreApplication>
#include <QFrame>
#include <QGraphicsOpacityEffect>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTextEdit>
#include <QVBoxLayout>

namespace tavro::aiassistant {

namespace {

// All distances in px, on a grid of 8 but for the side margins, which are those of the conversation above.
constexpr int sideMargin = 20;
constexpr int verticalMargin = 16;
constexpr int innerMargin = 12;
constexpr int areaBorder = 1; // of the style sheet
constexpr int spacing = 8;
constexpr int controlHeight = 32;
constexpr int editHeight = 80;
constexpr int sendWidth = 104;
constexpr QSize iconSize(20, 16); // with room between it and the text
constexpr int styleCount = 10;

QString iconFile(const QString &name)
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/../share/themes/images/default/aiassistant")
        + name;
}

QIcon modeIcon(const QString &normal, const QString &checked)
{
    QIcon icon;
    icon.addFile(iconFile(normal), QSize(), QIcon::Normal, QIcon::Off);
    icon.addFile(iconFile(checked), QSize(), QIcon::Normal, QIcon::On);
    // What is chosen stays recognisable while an answer is generated.
    icon.addFile(iconFile(checked), QSize(), QIcon::Disabled, QIcon::On);
    return withDisabledLook(icon, iconSize);
}

QPushButton *makeSendButton(QWidget *parent, const QString &name)
{
    auto *const button = new QPushButton(parent);
    button->setObjectName(name);
    button->setAutoDefault(true);
    button->setMinimumWidth(sendWidth);
    button->setFixedHeight(controlHeight);
    return button;
}

QComboBox *makeChooser(QWidget *parent, const QString &name)
{
    auto *const chooser = new QComboBox(parent);
    chooser->setObjectName(name);
    chooser->setFixedHeight(controlHeight);
    chooser->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    // The list's own delegate does not ask the style sheet how high a row is.
    chooser->setItemDelegate(new QStyledItemDelegate(chooser));
    return chooser;
}

} // namespace

AskWidget::Private::Private(AskWidget *owner)
    : q(owner)
{
    buildModes();
    buildAskArea();
    buildSendButtons();
    layOut();
    orderFocus();
    connectControls();
    slotTextEditTextChanged();
    retranslate();
}

QPushButton *AskWidget::Private::makeOption(QWidget *parent, const QString &name, const QString &icon,
                                            const QString &checkedIcon) const
{
    auto *const button = new QPushButton(parent);
    button->setObjectName(name);
    button->setCheckable(true);
    button->setAutoDefault(true); // Return presses it, not only the space bar
    button->setIcon(modeIcon(icon, checkedIcon));
    button->setIconSize(iconSize);
    button->setFixedHeight(controlHeight);
    return button;
}

void AskWidget::Private::buildModes()
{
    askAndAnswer = makeOption(q, QStringLiteral("askAndAnwser"), QStringLiteral("/answer_normal.png"),
                              QStringLiteral("/answer_checked.png"));
    generateImage = makeOption(q, QStringLiteral("generateImage"), QStringLiteral("/generateImage_normal.png"),
                               QStringLiteral("/generateImage_checked.png"));
    modes = new QButtonGroup(q);
    modes->setExclusive(true);
    modes->addButton(askAndAnswer, AskAndAnswer);
    modes->addButton(generateImage, GenerateImage);
    askAndAnswer->setChecked(true);
    letTabReachChosenMode();
}

void AskWidget::Private::buildAskArea()
{
    askArea = new QFrame(q);
    askArea->setObjectName(QStringLiteral("askArea"));
    buildEdit();
    line2 = new QFrame(askArea);
    line2->setObjectName(QStringLiteral("line2"));
    line2->setFixedHeight(1);
    buildOptions();
}

void AskWidget::Private::buildEdit()
{
    edit = new QTextEdit(askArea);
    edit->setObjectName(QStringLiteral("askEdit"));
    edit->setAcceptRichText(false);
    edit->setTabChangesFocus(true);
    edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    edit->setFixedHeight(editHeight);
    edit->installEventFilter(this);
}

void AskWidget::Private::buildOptions()
{
    model = makeOption(askArea, QStringLiteral("modelBtn"), QStringLiteral("/model_normal.png"),
                       QStringLiteral("/model_checked.png"));
    model->setText(QStringLiteral("Deepseek"));
    onlineSearch = makeOption(askArea, QStringLiteral("onlineSearch"), QStringLiteral("/onlineSearch.png"),
                              QStringLiteral("/onlineSearch_checked.png"));
    ratio = makeChooser(askArea, QStringLiteral("ratioSelect"));
    ratio->addItems({QStringLiteral("16:9"), QStringLiteral("16:10"), QStringLiteral("5:4"), QStringLiteral("4:3")});
    style = makeChooser(askArea, QStringLiteral("styleSelect"));
    for (int entry = 0; entry < styleCount; ++entry)
        style->addItem(QString());
    ratio->hide();
    style->hide();
}

void AskWidget::Private::buildSendButtons()
{
    // These stand over the ask area, not in it: stop must work while the area is disabled.
    remainWord = new QLabel(QStringLiteral("0/200"), q);
    remainWord->setObjectName(QStringLiteral("remainWord"));
    send = makeSendButton(q, QStringLiteral("sendMsg"));
    sendOpacity = new QGraphicsOpacityEffect(send);
    send->setGraphicsEffect(sendOpacity);
    stop = makeSendButton(q, QStringLiteral("stop"));
    stop->hide();
}

void AskWidget::Private::layOut()
{
    layOutAskArea();
    auto *const grid = new QGridLayout(q);
    grid->setContentsMargins(sideMargin, verticalMargin, sideMargin, sideMargin);
    grid->setSpacing(spacing);
    grid->addLayout(modeRow(), 0, 0);
    grid->addWidget(askArea, 1, 0);
    grid->addLayout(sendRow(), 1, 0, Qt::AlignRight | Qt::AlignBottom);
}

QBoxLayout *AskWidget::Private::modeRow() const
{
    auto *const row = new QHBoxLayout;
    row->setSpacing(spacing);
    row->addWidget(askAndAnswer);
    row->addWidget(generateImage);
    row->addStretch();
    return row;
}

void AskWidget::Private::layOutAskArea() const
{
    auto *const column = new QVBoxLayout(askArea);
    column->setContentsMargins(0, spacing, 0, 0);
    column->setSpacing(0);
    auto *const editRow = new QHBoxLayout;
    editRow->setContentsMargins(spacing, 0, spacing, spacing);
    editRow->addWidget(edit);
    column->addLayout(editRow);
    column->addWidget(line2);
    column->addLayout(optionRow());
}

QBoxLayout *AskWidget::Private::optionRow() const
{
    auto *const row = new QHBoxLayout;
    row->setContentsMargins(innerMargin, spacing, innerMargin, spacing);
    row->setSpacing(spacing);
    row->addWidget(model);
    row->addWidget(onlineSearch);
    row->addWidget(ratio);
    row->addWidget(style);
    row->addStretch();
    return row;
}

QBoxLayout *AskWidget::Private::sendRow() const
{
    auto *const row = new QHBoxLayout;
    row->setContentsMargins(0, 0, innerMargin + areaBorder, spacing + areaBorder);
    row->setSpacing(innerMargin);
    row->addWidget(remainWord);
    row->addWidget(send);
    row->addWidget(stop);
    return row;
}

void AskWidget::Private::orderFocus() const
{
    const QVector<QWidget *> order{askAndAnswer, generateImage, edit, model, onlineSearch, ratio, style, send, stop};
    for (int place = 1; place < order.size(); ++place)
        QWidget::setTabOrder(order[place - 1], order[place]);
}

void AskWidget::Private::connectControls()
{
    connect(edit, &QTextEdit::textChanged, this, &Private::slotTextEditTextChanged);
    connect(modes, QOverload<QAbstractButton *>::of(&QButtonGroup::buttonClicked), this, &Private::slotGroupBtnClicked);
    // A screen reader checks a button without a click.
    connect(modes, &QButtonGroup::idToggled, this, [this](int mode, bool checked) {
        if (checked)
            applyMode(mode);
    });
    connect(send, &QPushButton::clicked, this, &Private::slotDealSendMsgBtnClicked);
    connect(stop, &QPushButton::clicked, this, &Private::slotDealStopBtnClicked);
    connect(model, &QPushButton::toggled, q, &AskWidget::sigActiveDeepSeekModel);
    connect(onlineSearch, &QPushButton::toggled, q, &AskWidget::sigActiverOnlineSearch);
}

} // namespace tavro::aiassistant
