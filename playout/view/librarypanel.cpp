#include "view/librarypanel.h"

#include "view/mediadelegate.h"
#include "view/medialistmodel.h"
#include "view/mediasizes.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QVBoxLayout>

namespace tavro::playout {

namespace {

constexpr int columns = 2;
constexpr int scrollBarWidth = 8;

QLabel *makeLabel(const QString &name, const QString &text = {})
{
    auto *const label = new QLabel(text);
    label->setObjectName(name);
    return label;
}

QLineEdit *makeSearch()
{
    auto *const search = new QLineEdit;
    search->setObjectName(QStringLiteral("librarySearch"));
    search->setPlaceholderText(QStringLiteral("Search media"));
    search->setAccessibleName(QStringLiteral("Search media"));
    search->setClearButtonEnabled(true);
    search->setToolTip(QStringLiteral("Ctrl+F; Return plays the first item"));
    return search;
}

QListView *makeGrid()
{
    auto *const list = new QListView;
    list->setObjectName(QStringLiteral("mediaList"));
    list->setAccessibleName(QStringLiteral("Media"));
    list->setViewMode(QListView::IconMode);
    list->setMovement(QListView::Static);
    list->setResizeMode(QListView::Adjust);
    list->setUniformItemSizes(true);
    list->setGridSize(mediaCellSize);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list->setFrameShape(QFrame::NoFrame);
    list->setMouseTracking(true);
    return list;
}

} // namespace

LibraryPanel::LibraryPanel(MediaListModel &model, const HostTheme &theme)
{
    setObjectName(QStringLiteral("library"));
    m_filter = new QSortFilterProxyModel(this);
    m_filter->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_filter->setSourceModel(&model);
    build(theme);
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_filter->setFilterFixedString(text.trimmed());
        showCount();
    });
    connect(m_search, &QLineEdit::returnPressed, this, &LibraryPanel::chooseFirst);
    connect(m_list, &QListView::activated, this,
            [this](const QModelIndex &index) { Q_EMIT sigChosen(index.data(MediaListModel::IdRole).toString()); });
    connect(m_filter, &QAbstractItemModel::rowsInserted, this, &LibraryPanel::showCount);
    showCount();
}

void LibraryPanel::build(const HostTheme &theme)
{
    m_search = makeSearch();
    m_list = makeGrid();
    m_list->setItemDelegate(new MediaDelegate(theme, m_list));
    m_list->setModel(m_filter);
    m_count = makeLabel(QStringLiteral("libraryCount"));
    m_nothing = makeLabel(QStringLiteral("libraryNothing"));
    m_nothing->setWordWrap(true);
    m_nothing->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    layOut();
}

void LibraryPanel::layOut()
{
    // The cells bring a margin of their own, which the rest is in line with.
    const int cellMargin = gridStep / 2;
    m_nothing->setContentsMargins(cellMargin, 0, gridStep, 0);
    auto *const title = new QHBoxLayout;
    title->setContentsMargins(cellMargin, 0, gridStep, 0);
    title->addWidget(makeLabel(QStringLiteral("libraryTitle"), QStringLiteral("Media")));
    title->addStretch();
    title->addWidget(m_count);
    auto *const search = new QHBoxLayout;
    search->setContentsMargins(cellMargin, 0, gridStep, 0);
    search->addWidget(m_search);
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(2 * gridStep - cellMargin, 2 * gridStep, gridStep, gridStep);
    column->setSpacing(gridStep);
    column->addLayout(title);
    column->addLayout(search);
    column->addWidget(m_nothing);
    column->addWidget(m_list, 1);
    const int margins = 3 * gridStep;
    const int frame = gridStep;
    setFixedWidth(margins + columns * mediaCellSize.width() + scrollBarWidth + frame);
}

void LibraryPanel::focusSearch()
{
    m_search->setFocus(Qt::ShortcutFocusReason);
    m_search->selectAll();
}

void LibraryPanel::chooseFirst()
{
    if (m_filter->rowCount() > 0)
        Q_EMIT sigChosen(m_filter->index(0, 0).data(MediaListModel::IdRole).toString());
}

void LibraryPanel::showCount()
{
    const int shown = m_filter->rowCount();
    const int all = m_filter->sourceModel()->rowCount();
    m_count->setText(shown == all ? QString::number(all) : QStringLiteral("%1 of %2").arg(shown).arg(all));
    m_count->setAccessibleName(QStringLiteral("%1 of %2 items shown").arg(shown).arg(all));
    m_nothing->setText(all == 0 ? QStringLiteral("The media folder is empty. Start with --media DIR, or download a "
                                                 "picture from the assistant.")
                                : QStringLiteral("No media has this in its name."));
    m_nothing->setVisible(shown == 0);
    m_list->setVisible(shown > 0);
}

} // namespace tavro::playout
