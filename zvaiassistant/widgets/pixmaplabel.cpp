#include "widgets/pixmaplabel.h"

#include "widgets/pixmapcelllabel.h"

#include <QHBoxLayout>

namespace tavro::aiassistant {

namespace {

constexpr int cellWidth = 163;
constexpr int cellHeight = 102;
constexpr int cellSpacing = 7;

} // namespace

class Q_DECL_HIDDEN PixmapLabel::Private : public QObject {
public:
    Private(PixmapLabel *owner, const ChatItemContext &itemContext)
        : q(owner)
        , context(itemContext)
    { }

    void buildRow();
    PixmapCellLabel *makeCell(const AIImage &image);

    PixmapLabel *const q;
    const ChatItemContext context;
    std::vector<PixmapCellLabel *> cells;
};

void PixmapLabel::Private::buildRow()
{
    auto *const row = new QHBoxLayout(q);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(cellSpacing);
    for (const AIImage &image : context.images) {
        cells.push_back(makeCell(image));
        row->addWidget(cells.back());
    }
    row->addStretch();
}

PixmapCellLabel *PixmapLabel::Private::makeCell(const AIImage &image)
{
    auto *const cell = new PixmapCellLabel(QString::fromStdString(context.question), context.picInfo, image, q);
    connect(cell, &PixmapCellLabel::sigLookImageButtonClicked, q, &PixmapLabel::sigLookImageButtonClicked);
    connect(cell, &PixmapCellLabel::sigDownloadButtonClicked, q, &PixmapLabel::sigDownloadButtonClicked);
    connect(cell, &PixmapCellLabel::sigTryAgainImageButtonClicked, q, &PixmapLabel::sigTryAgainImageButtonClicked);
    cell->setFixedSize(cellWidth, cellHeight);
    cell->placeButtonBar();
    return cell;
}

PixmapLabel::PixmapLabel(const ChatItemContext &context, QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this, context))
{
    d->buildRow();
}

PixmapLabel::~PixmapLabel() = default;

void PixmapLabel::retranslate()
{
    for (PixmapCellLabel *const cell : d->cells)
        cell->retranslate();
}

} // namespace tavro::aiassistant
