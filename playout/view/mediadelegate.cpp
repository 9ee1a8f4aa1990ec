#include "view/mediadelegate.h"

#include "view/hosttheme.h"
#include "view/medialistmodel.h"
#include "view/mediasizes.h"

#include <QPainter>

namespace tavro::playout {

namespace {

constexpr int frameWidth = 2;
constexpr int markFontSize = 12; // px
constexpr int markPadding = 4;

void centre(QRect &rect, const QRect &in)
{
    rect.moveCenter(in.center());
}

} // namespace

MediaDelegate::MediaDelegate(const HostTheme &theme, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_theme(theme)
{ }

QSize MediaDelegate::sizeHint(const QStyleOptionViewItem & /*option*/, const QModelIndex & /*index*/) const
{
    return mediaCellSize;
}

void MediaDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const int margin = gridStep / 2;
    const QRect cell = option.rect.adjusted(margin, margin, -margin, -margin);
    const QRect picture(cell.topLeft(), thumbnailSize);
    painter->save();
    paintThumbnail(*painter, picture, index);
    if (index.data(MediaListModel::GeneratedRole).toBool())
        paintMark(*painter, picture, QStringLiteral("AI"));
    paintFrame(*painter, picture, option);
    const QRect line(cell.left(), picture.bottom() + 1, cell.width(), mediaNameHeight);
    const QString name =
        option.fontMetrics.elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight, line.width());
    painter->setPen(m_theme.color("DefaultForegroundColor"));
    painter->setFont(option.font);
    painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, name);
    painter->restore();
}

void MediaDelegate::paintThumbnail(QPainter &painter, const QRect &area, const QModelIndex &index) const
{
    painter.fillRect(area, m_theme.color("BackgroundColor_4"));
    const auto pixmap = index.data(Qt::DecorationRole).value<QPixmap>();
    if (pixmap.isNull())
        return;
    QRect target(QPoint(), (pixmap.size() / pixmap.devicePixelRatio()).boundedTo(area.size()));
    centre(target, area);
    painter.drawPixmap(target, pixmap);
}

void MediaDelegate::paintMark(QPainter &painter, const QRect &area, const QString &text) const
{
    QFont font = painter.font();
    font.setPixelSize(markFontSize);
    font.setBold(true);
    painter.setFont(font);
    const QFontMetrics metrics(font);
    QRect mark(0, 0, metrics.horizontalAdvance(text) + 2 * markPadding, metrics.height());
    mark.moveTopRight(area.topRight() + QPoint(-markPadding, markPadding));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_theme.color("Button_Text_Hover"));
    painter.drawRoundedRect(mark, 2, 2);
    painter.setPen(m_theme.color("BackgroundColor_1"));
    painter.drawText(mark, Qt::AlignCenter, text);
}

void MediaDelegate::paintFrame(QPainter &painter, const QRect &area, const QStyleOptionViewItem &option) const
{
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const bool focused = option.state.testFlag(QStyle::State_HasFocus);
    if (!selected && !focused)
        return;
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
    QPen pen(focused ? m_theme.color("Button_Text_Hover") : m_theme.color("Color_Brand_6"), frameWidth);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.drawRect(area.adjusted(1, 1, -1, -1));
}

} // namespace tavro::playout
