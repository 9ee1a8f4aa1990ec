#include "widgets/chatcolumn.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace tavro::aiassistant {

namespace {

ChatColumn *columnOf(const QWidget *widget)
{
    const QWidget *const parent = widget->parentWidget();
    return parent == nullptr ? nullptr : qobject_cast<ChatColumn *>(parent->layout());
}

// From the innermost outwards, as their layouts ask for it.
void sendPostedWithin(QWidget &widget, QEvent::Type type)
{
    const QList<QWidget *> inner = widget.findChildren<QWidget *>();
    for (auto child = inner.crbegin(); child != inner.crend(); ++child)
        QCoreApplication::sendPostedEvents(*child, type);
    QCoreApplication::sendPostedEvents(&widget, type);
}

} // namespace

ChatColumn::ItemChange::ItemChange(QWidget *widget)
    : m_widget(widget)
    , m_column(columnOf(widget))
    , m_index(m_column == nullptr ? -1 : m_column->indexOfWidget(widget))
{
    if (m_index >= 0)
        ++m_column->m_changes;
}

ChatColumn::ItemChange::~ItemChange()
{
    if (m_index < 0)
        return;
    // Later it would be a change of its own.
    sendPostedWithin(*m_widget, QEvent::LayoutRequest);
    --m_column->m_changes;
    m_column->changed(m_index);
}

ChatColumn::ChatColumn(QWidget *parent)
    : QVBoxLayout(parent)
{ }

// The widget is shown here: the base class would show it from the event loop, which were a change of its own. And
// show() would have an enabled column lay out all its items.
void ChatColumn::append(QWidget *widget)
{
    const int index = std::max(count() - 1, 0);
    ++m_changes;
    const bool complete = rowsAreComplete();
    insertWidget(index, widget);
    if (complete)
        m_rows.insert(m_rows.begin() + index, Row{});
    changed(index);
    setEnabled(false);
    widget->show();
    setEnabled(true);
    // New buttons ask for a new layout when they are polished, which otherwise is up to the event loop too.
    sendPostedWithin(*widget, QEvent::PolishRequest);
    sendPostedWithin(*widget, QEvent::LayoutRequest);
    --m_changes;
    layOut();
}

void ChatColumn::layOut()
{
    m_passOver = true;
    activate();
    m_passOver = false;
}

// Before it places anything, activate() has each item forget its sizes, from the first to the one that is not there.
// The items keep none, and the rows know which of them have changed.
QLayoutItem *ChatColumn::itemAt(int index) const
{
    return std::exchange(m_passOver, false) ? nullptr : QVBoxLayout::itemAt(index);
}

void ChatColumn::remove(const QWidget *widget)
{
    const int index = indexOfWidget(widget);
    if (index >= 0)
        delete takeAt(index);
}

void ChatColumn::invalidate()
{
    if (m_changes == 0)
        ++m_unexplained;
    QVBoxLayout::invalidate();
}

void ChatColumn::setGeometry(const QRect &rect)
{
    // A layout invalidates itself once more just before it places its items. That one request needs no reason, and
    // within a change it is not counted.
    if (m_unexplained > (m_changes > 0 ? 0 : 1))
        forgetRows();
    m_unexplained = 0;
    stack();
    // The box layout's own would place all items again.
    QLayout::setGeometry(rect); // NOLINT(bugprone-parent-virtual-call)
    const QRect room = rect.marginsRemoved(contentsMargins());
    const bool moved = room.topLeft() != m_placed.topLeft() || room.width() != m_placed.width();
    if (moved)
        m_firstUnplaced = 0;
    m_placed = room;
    place(room, moved);
}

QLayoutItem *ChatColumn::takeAt(int index)
{
    const bool complete = rowsAreComplete();
    ++m_changes;
    QLayoutItem *const item = QVBoxLayout::takeAt(index);
    --m_changes;
    if (item != nullptr && complete) {
        m_rows.erase(m_rows.begin() + index);
        m_firstUnstacked = std::min(m_firstUnstacked, index);
        m_firstUnplaced = std::min(m_firstUnplaced, index);
    }
    return item;
}

QSize ChatColumn::sizeHint() const
{
    return minimumSize();
}

QSize ChatColumn::minimumSize() const
{
    if (m_unexplained > 0)
        forgetRows();
    stack();
    const QMargins margins = contentsMargins();
    const int height = std::max(topOf(count()) - spacing(), 0);
    return {margins.left() + margins.right(), margins.top() + height + margins.bottom()};
}

QSize ChatColumn::maximumSize() const
{
    return {QLAYOUTSIZE_MAX, QLAYOUTSIZE_MAX};
}

Qt::Orientations ChatColumn::expandingDirections() const
{
    return Qt::Vertical;
}

bool ChatColumn::hasHeightForWidth() const
{
    return false;
}

int ChatColumn::indexOfWidget(const QWidget *widget) const
{
    for (int index = count() - 1; index >= 0; --index) {
        if (itemAt(index)->widget() == widget)
            return index;
    }
    return -1;
}

bool ChatColumn::rowsAreComplete() const
{
    return static_cast<int>(m_rows.size()) == count();
}

void ChatColumn::changed(int index) const
{
    if (!rowsAreComplete())
        return;
    m_rows[static_cast<std::size_t>(index)].height = unmeasured;
    m_firstUnstacked = std::min(m_firstUnstacked, index);
    m_firstUnplaced = std::min(m_firstUnplaced, index);
}

void ChatColumn::forgetRows() const
{
    if (!rowsAreComplete())
        m_rows.assign(static_cast<std::size_t>(count()), Row{});
    for (Row &row : m_rows)
        row.height = unmeasured;
    m_firstUnstacked = 0;
    m_firstUnplaced = 0;
    m_unexplained = 0;
}

int ChatColumn::measured(int index) const
{
    QLayoutItem *const item = QVBoxLayout::itemAt(index);
    if (item->isEmpty())
        return nothing;
    return item->sizeHint().expandedTo(item->minimumSize()).boundedTo(item->maximumSize()).height();
}

// Where the item at @p index begins; that of one past the last tells the whole height, with a spacing too many.
int ChatColumn::topOf(int index) const
{
    if (index == 0)
        return 0;
    const Row &above = m_rows[static_cast<std::size_t>(index - 1)];
    return above.height == nothing ? above.top : above.top + above.height + spacing();
}

void ChatColumn::stack() const
{
    if (!rowsAreComplete())
        forgetRows();
    for (; m_firstUnstacked < count(); ++m_firstUnstacked) {
        Row &row = m_rows[static_cast<std::size_t>(m_firstUnstacked)];
        row.top = topOf(m_firstUnstacked);
        if (row.height == unmeasured)
            row.height = measured(m_firstUnstacked);
    }
}

void ChatColumn::place(const QRect &room, bool moved)
{
    for (; m_firstUnplaced < count(); ++m_firstUnplaced) {
        Row &row = m_rows[static_cast<std::size_t>(m_firstUnplaced)];
        if (row.height != nothing && (moved || row.top != row.placedTop || row.height != row.placedHeight))
            QVBoxLayout::itemAt(m_firstUnplaced)->setGeometry({room.x(), room.y() + row.top, room.width(), row.height});
        row.placedTop = row.top;
        row.placedHeight = row.height;
    }
}

} // namespace tavro::aiassistant
