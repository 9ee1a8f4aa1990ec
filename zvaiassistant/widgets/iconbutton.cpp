#include "widgets/iconbutton.h"

#include <QAccessible>
#include <QEvent>
#include <QPainter>
#include <QPixmapCache>

namespace tavro::aiassistant {

namespace {

constexpr int disabledAlpha = 102; // of 255

// The buttons of all chat items share their pictures: painting one for each takes time, and kilobytes.
QPixmap dimmed(const QPixmap &picture)
{
    const QString key = QStringLiteral("zvaiassistant dimmed %1").arg(picture.cacheKey());
    QPixmap copy;
    if (QPixmapCache::find(key, &copy))
        return copy;
    copy = picture;
    QPainter painter(&copy);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(copy.rect(), QColor(0, 0, 0, disabledAlpha));
    painter.end();
    QPixmapCache::insert(key, copy);
    return copy;
}

} // namespace

QIcon withDisabledLook(QIcon icon, const QSize &size)
{
    const QPixmap normal = icon.pixmap(size);
    if (!normal.isNull())
        icon.addPixmap(dimmed(normal), QIcon::Disabled);
    return icon;
}

bool IconButton::event(QEvent *event)
{
    const bool result = QPushButton::event(event);
    // A style sheet has set the icon by then.
    const bool isStyled = event->type() == QEvent::Polish || event->type() == QEvent::StyleChange;
    if (isStyled && !icon().isNull())
        setIcon(withDisabledLook(icon(), iconSize()));
    return result;
}

// Qt makes an accessible interface for each button that changes, and looks for it ever after. For the buttons of a long
// conversation that takes as long as all else, so it is done only where a screen reader hears of it. The rest is as Qt
// does it.
void IconButton::changeEvent(QEvent *event)
{
    if (event->type() != QEvent::EnabledChange || QAccessible::isActive()) {
        QPushButton::changeEvent(event);
        return;
    }
    update();
    if (isEnabled() || !isDown())
        return;
    setDown(false);
    Q_EMIT released();
}

} // namespace tavro::aiassistant
