#include "widgets/pictureviewerwidget.h"

#include "translate/lookup.h"
#include "widgets/harmlesstext.h"
#include "widgets/pictureviewerwidget_p.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace tavro::aiassistant {

namespace {

constexpr int roundButtonEdge = 50;
constexpr int pictureHeight = 788;
constexpr int downloadHeight = 44;
constexpr int dimming = 217; // of 255
constexpr QSize designedSize(1920, 1080); // what the layout's margins are made for

} // namespace

PictureViewerWidget::Private::Private(PictureViewerWidget *owner)
    : q(owner)
{
    build();
    layOut();
    lastPicture->hide();
    nextPicture->hide();
    connectButtons();
}

void PictureViewerWidget::Private::build()
{
    close = makeRoundButton(QStringLiteral("close"));
    lastPicture = makeRoundButton(QStringLiteral("lastPicture"));
    nextPicture = makeRoundButton(QStringLiteral("nextPicture"));
    nameClose();
    buildPicture();
    buildDownloadButton();
}

void PictureViewerWidget::Private::nameClose()
{
    close->setAccessibleName(nameText("Close"));
    close->setToolTip(nameText("Close"));
}

QPushButton *PictureViewerWidget::Private::makeRoundButton(const QString &name)
{
    auto *const button = new QPushButton(q);
    button->setObjectName(name);
    button->setFixedSize(roundButtonEdge, roundButtonEdge);
    button->setAutoDefault(true); // Return presses it, not only the space bar
    return button;
}

void PictureViewerWidget::Private::buildPicture()
{
    picture = new QLabel(q);
    picture->setObjectName(QStringLiteral("picture"));
    picture->setFixedHeight(pictureHeight);
    picture->setAlignment(Qt::AlignCenter);
    picture->setPixmap(QPixmap());
}

void PictureViewerWidget::Private::buildDownloadButton()
{
    download = new QPushButton(QStringLiteral("下载图像至素材库"), q);
    download->setObjectName(QStringLiteral("download"));
    download->setFixedHeight(downloadHeight);
    download->setAutoDefault(true);
    // The path has no folder in front of it: a host that keeps no such file has the style sheet's icon.
    download->setIcon(QIcon(QStringLiteral("/../share/themes/images/default/aiassistant/downloadBig.png")));
    download->setIconSize(QSize(16, 16));
}

void PictureViewerWidget::Private::layOut()
{
    auto *const column = new QVBoxLayout(q);
    column->setContentsMargins(160, 64, 150, 94);
    column->setSpacing(10);
    // On a screen that is smaller than the design the window must not grow beyond it: the buttons stay in reach, over
    // the picture.
    column->setSizeConstraint(QLayout::SetNoConstraint);
    auto *const top = new QHBoxLayout;
    top->addStretch();
    top->addWidget(close);
    auto *const bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(download);
    bottom->addStretch();
    column->addLayout(top);
    column->addLayout(pictureRow());
    column->addLayout(bottom);
}

QHBoxLayout *PictureViewerWidget::Private::pictureRow() const
{
    auto *const row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 20);
    row->setSpacing(60);
    row->addWidget(lastPicture);
    row->addWidget(picture);
    row->addWidget(nextPicture);
    return row;
}

void PictureViewerWidget::Private::connectButtons()
{
    connect(close, &QPushButton::clicked, q, &QWidget::hide);
    connect(lastPicture, &QPushButton::clicked, this, &Private::slotLastBtnClicked);
    connect(nextPicture, &QPushButton::clicked, this, &Private::slotNextBtnClicked);
    connect(download, &QPushButton::clicked, this, &Private::slotDownloadBtnClicked);
}

void PictureViewerWidget::Private::showPixmap()
{
    if (pixmap.isNull()) {
        picture->setText(QStringLiteral("can not load picture"));
        return;
    }
    const int height = picture->height();
    const int width = static_cast<int>(double(pixmap.width()) * height / pixmap.height());
    // Scaled in device pixels, so that it is sharp at every scale.
    const qreal ratio = q->devicePixelRatioF();
    QPixmap scaled = pixmap.scaled(QSize(width, height) * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(ratio);
    picture->setScaledContents(false);
    picture->setPixmap(scaled);
}

// There is one picture only; the two buttons never show.
void PictureViewerWidget::Private::slotLastBtnClicked() { }

void PictureViewerWidget::Private::slotNextBtnClicked() { }

void PictureViewerWidget::Private::slotDownloadBtnClicked()
{
    Q_EMIT q->sigDownloadPicture(QString::fromStdString(url));
}

PictureViewerWidget::PictureViewerWidget(QWidget *parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint)
{
    setObjectName(QStringLiteral("pictureViewer"));
    setAttribute(Qt::WA_TranslucentBackground);
    // An open viewer must not keep a host running whose windows are closed.
    setAttribute(Qt::WA_QuitOnClose, false);
    resize(designedSize);
    d = std::make_unique<Private>(this);
}

PictureViewerWidget::~PictureViewerWidget() = default;

void PictureViewerWidget::showImage(const AIImage &image)
{
    d->pixmap = image.pixmap;
    d->description = image.description;
    d->url = image.url;
    d->picture->setAccessibleName(harmlessText(QString::fromStdString(d->description)));
    d->showPixmap();
}

void PictureViewerWidget::retranslate()
{
    d->download->setText(text("DownloadToMediaLibrary"));
    d->nameClose();
}

void PictureViewerWidget::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), QColor(0, 0, 0, dimming));
}

void PictureViewerWidget::showEvent(QShowEvent *event)
{
    // The screen that it comes up on may have another scale than the one that it was on.
    const QPixmap shown = d->picture->pixmap(Qt::ReturnByValue);
    if (!shown.isNull() && !qFuzzyCompare(shown.devicePixelRatio(), devicePixelRatioF()))
        d->showPixmap();
    // Not the button that was used the last time: keys are the viewer's, and Tab begins with its first button.
    setFocus(Qt::OtherFocusReason);
    QWidget::showEvent(event);
}

void PictureViewerWidget::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        d->close->click();
    else
        QWidget::keyPressEvent(event);
}

} // namespace tavro::aiassistant
