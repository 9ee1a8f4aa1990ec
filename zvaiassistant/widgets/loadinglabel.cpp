#include "widgets/loadinglabel.h"

#include <QGuiApplication>
#include <QMovie>
#include <QPainter>
#include <QStyle>

namespace tavro::aiassistant {

LoadingLabel::LoadingLabel(QWidget *parent)
    : QLabel(parent)
    , m_scale(qApp->devicePixelRatio() > 1 ? 2 : 1)
{
    const QString file = m_scale > 1 ? QStringLiteral("loading@2x.gif") : QStringLiteral("loading.gif");
    auto *const animation = new QMovie(QStringLiteral(":/img/resource/images/") + file, QByteArray(), this);
    setMovie(animation);
    animation->start();
}

QSize LoadingLabel::sizeHint() const
{
    return movie()->currentPixmap().size() / m_scale;
}

// QLabel draws a frame with as many pixels of the window as the file has.
void LoadingLabel::paintEvent(QPaintEvent *)
{
    QPixmap frame = movie()->currentPixmap();
    frame.setDevicePixelRatio(m_scale);
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, sizeHint(), rect()), frame);
}

} // namespace tavro::aiassistant
