#include "widgets/focusring.h"

#include <QFocusEvent>
#include <QPainter>

namespace tavro::aiassistant {

FocusRing::FocusRing(QWidget *parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    parent->installEventFilter(this);
}

void FocusRing::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRectF edge = rect();
    painter.setPen(QPen(Qt::black, 4));
    painter.drawRect(edge.adjusted(2, 2, -2, -2));
    painter.setPen(QPen(Qt::white, 2));
    painter.drawRect(edge.adjusted(1, 1, -1, -1));
}

bool FocusRing::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Resize:
        resize(parentWidget()->size());
        break;
    case QEvent::FocusIn:
        focusCame(static_cast<QFocusEvent *>(event)->reason());
        break;
    case QEvent::FocusOut:
        hide();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void FocusRing::focusCame(Qt::FocusReason reason)
{
    // A window or a menu gives the focus back as it was.
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
        m_byKeyboard = reason != Qt::MouseFocusReason;
    setVisible(m_byKeyboard);
    raise();
}

} // namespace tavro::aiassistant
