#include "view/elidedlabel.h"

#include <QPainter>

namespace tavro::playout {

ElidedLabel::ElidedLabel(const QString &text)
    : QLabel(text)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent * /*event*/)
{
    const QRect room = contentsRect();
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, room.width());
    const QString tip = shown == text() ? QString() : text();
    if (toolTip() != tip)
        setToolTip(tip);
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(room, static_cast<int>(alignment()) | Qt::TextSingleLine, shown);
}

} // namespace tavro::playout
