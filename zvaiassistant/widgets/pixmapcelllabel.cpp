#include "widgets/pixmapcelllabel.h"

#include "translate/lookup.h"
#include "widgets/focusring.h"
#include "widgets/harmlesstext.h"

#include <QApplication>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

namespace tavro::aiassistant {

namespace {

constexpr QSize barSize(80, 24);
constexpr int barDistance = 10; // px from the cell's lower edge
constexpr int buttonEdge = 16;

void nameButton(QPushButton *button, const QString &name)
{
    button->setToolTip(name);
    button->setAccessibleName(name);
}

} // namespace

PixmapCellLabel::PixmapCellLabel(const QString &question, const PictureGenerateInfo &picInfo, const AIImage &image,
                                 QWidget *parent)
    : QWidget(parent)
    , m_question(question)
    , m_image(image)
    , m_picInfo(picInfo)
{
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(image.description.empty() ? question : harmlessText(QString::fromStdString(image.description)));
    buildPicture();
    buildButtonBar();
    connectButtons();
    retranslate();
}

PixmapCellLabel::~PixmapCellLabel() = default;

void PixmapCellLabel::buildPicture()
{
    m_picture = new QLabel(this);
    m_picture->setPixmap(m_image.pixmap);
    m_picture->setScaledContents(true);
    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_picture);
    new FocusRing(this);
}

void PixmapCellLabel::buildButtonBar()
{
    m_buttonBar = new QFrame(this);
    m_buttonBar->setObjectName(QStringLiteral("imageButtonFrame"));
    m_buttonBar->setStyleSheet(QStringLiteral("background:#2B2B2B;"));
    m_buttonBar->setFixedSize(barSize);
    m_buttonBar->installEventFilter(this);
    m_buttonBar->hide();
    auto *const layout = new QHBoxLayout(m_buttonBar);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->setSpacing(8);
    m_look = addButton(layout, QStringLiteral("magnifierButton"));
    m_download = addButton(layout, QStringLiteral("downloadButton"));
    m_tryAgain = addButton(layout, QStringLiteral("modifyButton"));
    layout->addStretch();
}

QPushButton *PixmapCellLabel::addButton(QHBoxLayout *layout, const QString &name)
{
    auto *const button = new QPushButton(m_buttonBar);
    button->setObjectName(name);
    button->setFixedSize(buttonEdge, buttonEdge);
    // A click must not keep the bar in place after the mouse has left, so only the keyboard gives the focus.
    button->setFocusPolicy(Qt::TabFocus);
    button->setAutoDefault(true); // Return presses it, not only the space bar
    button->installEventFilter(this);
    layout->addWidget(button);
    return button;
}

void PixmapCellLabel::connectButtons()
{
    connect(m_look, &QPushButton::clicked, this, [this] { Q_EMIT sigLookImageButtonClicked(m_image); });
    connect(m_download, &QPushButton::clicked, this, [this] { Q_EMIT sigDownloadButtonClicked(m_image); });
    connect(m_tryAgain, &QPushButton::clicked, this,
            [this] { Q_EMIT sigTryAgainImageButtonClicked(m_question, m_picInfo); });
}

void PixmapCellLabel::placeButtonBar()
{
    m_buttonBar->move((width() - m_buttonBar->width()) / 2, height() - m_buttonBar->height() - barDistance);
}

void PixmapCellLabel::retranslate()
{
    nameButton(m_look, nameText("View Image"));
    nameButton(m_download, text("DownloadToMediaLibrary"));
    nameButton(m_tryAgain, text("Modify"));
}

void PixmapCellLabel::enterEvent(QEvent *event)
{
    m_buttonBar->show();
    QWidget::enterEvent(event);
}

void PixmapCellLabel::leaveEvent(QEvent *event)
{
    m_buttonBar->setVisible(hasKeyboardFocus());
    QWidget::leaveEvent(event);
}

void PixmapCellLabel::focusInEvent(QFocusEvent *event)
{
    showBarWhereNeeded();
    QWidget::focusInEvent(event);
}

void PixmapCellLabel::focusOutEvent(QFocusEvent *event)
{
    showBarWhereNeeded();
    QWidget::focusOutEvent(event);
}

void PixmapCellLabel::keyPressEvent(QKeyEvent *event)
{
    const bool isPress =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    if (isPress)
        m_look->click();
    else
        QWidget::keyPressEvent(event);
}

bool PixmapCellLabel::eventFilter(QObject *watched, QEvent *event)
{
    // A sheet's border would push the buttons off their places.
    if (watched == m_buttonBar && event->type() == QEvent::ContentsRectChange)
        m_buttonBar->setContentsMargins(0, 0, 0, 0);
    else if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        showBarWhereNeeded();
    return QWidget::eventFilter(watched, event);
}

bool PixmapCellLabel::hasKeyboardFocus() const
{
    return hasFocus() || m_buttonBar->isAncestorOf(QApplication::focusWidget());
}

void PixmapCellLabel::showBarWhereNeeded()
{
    m_buttonBar->setVisible(underMouse() || hasKeyboardFocus());
}

} // namespace tavro::aiassistant
