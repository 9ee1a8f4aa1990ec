// The column beside a plain vertical layout, and what it leaves alone.

#include "heldbrowser.h"
#include "widgets/chatcolumn.h"

#include <QPushButton>
#include <QRandomGenerator>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

namespace {

// Counts how often it is measured.
class Box : public QWidget {
public:
    explicit Box(int boxHeight, QWidget *parent = nullptr)
        : QWidget(parent)
        , m_height(boxHeight)
    { }

    QSize sizeHint() const override
    {
        ++measured;
        return {10, m_height};
    }

    QSize minimumSizeHint() const override { return sizeHint(); }

    void setBoxHeight(int height)
    {
        m_height = height;
        updateGeometry();
    }

    int boxHeight() const { return m_height; }

    mutable int measured = 0;

private:
    int m_height;
    // Only the first item made for a widget keeps its sizes; the column's has to ask each time.
    QWidgetItemV2 m_keeper{this};
};

template <typename Layout>
class Column : public QWidget {
public:
    // Not a window itself, whose minimum size would follow the layout's.
    Column()
    {
        sheet = new QWidget(this);
        layout = new Layout(sheet);
        layout->setContentsMargins(20, 20, 20, 0);
        layout->setSpacing(24);
        layout->addStretch();
        sheet->resize(200, 5000);
        show();
    }

    std::vector<Box *> boxes() const
    {
        std::vector<Box *> found;
        for (int index = 0; index < layout->count(); ++index) {
            if (auto *const box = dynamic_cast<Box *>(layout->itemAt(index)->widget()))
                found.push_back(box);
        }
        return found;
    }

    std::vector<QRect> places() const
    {
        QCoreApplication::processEvents();
        std::vector<QRect> rects;
        for (const Box *box : boxes()) {
            if (!box->isHidden())
                rects.push_back(box->geometry());
        }
        return rects;
    }

    QWidget *sheet;
    Layout *layout;
};

using Tested = Column<ChatColumn>;
using Plain = Column<QVBoxLayout>;

void compare(const Tested &tested, const Plain &plain)
{
    QCOMPARE(tested.places(), plain.places());
    QCOMPARE(tested.layout->minimumSize().height(), plain.layout->minimumSize().height());
    QCOMPARE(tested.layout->sizeHint().height(), plain.layout->sizeHint().height());
}

void fill(Tested &column, int count)
{
    for (int index = 0; index < count; ++index)
        column.layout->append(new Box(20));
    QCoreApplication::processEvents();
}

int measuredIn(const Tested &column)
{
    int measured = 0;
    for (const Box *box : column.boxes())
        measured += box->measured;
    return measured;
}

void forgetMeasured(const Tested &column)
{
    for (const Box *box : column.boxes())
        box->measured = 0;
}

} // namespace

class TestChatColumn : public QuietTest {
    Q_OBJECT

private Q_SLOTS:
    void emptyColumnIsLikeAPlainOne();
    void placesLikeAPlainOneAfterAnyChange();
    void changeThatIsAnnouncedMeasuresOneItem();
    void changeThatIsNotAnnouncedMeasuresAll();
    void appendMeasuresTheNewItemOnly();
    void appendedItemIsInItsPlaceAtOnce();
    void buttonsOfANewItemDoNotHaveAllMeasured();
    void layingOutLosesNoItem();
    void removedItemLeavesNoGap();
    void otherWidthPlacesAllAnew();
    void changeOfAWidgetElsewhereIsHarmless();
    void itemInsertedWithinAnothersChangeIsPlaced();
    void growsLikeAPlainOne();
};

void TestChatColumn::emptyColumnIsLikeAPlainOne()
{
    compare(Tested(), Plain());
}

void TestChatColumn::placesLikeAPlainOneAfterAnyChange()
{
    Tested tested;
    Plain plain;
    QRandomGenerator random(42);
    for (int step = 0; step < 300; ++step) {
        const auto present = static_cast<int>(tested.boxes().size());
        const auto at = static_cast<std::size_t>(present == 0 ? 0 : random.bounded(present));
        const int height = random.bounded(60);
        switch (present == 0 ? 0 : random.bounded(6)) {
        case 0:
        case 1:
            tested.layout->append(new Box(height));
            plain.layout->insertWidget(plain.layout->count() - 1, new Box(height));
            break;
        case 2: {
            const ChatColumn::ItemChange change(tested.boxes()[at]);
            tested.boxes()[at]->setBoxHeight(height);
            plain.boxes()[at]->setBoxHeight(height);
            break;
        }
        case 3:
            tested.boxes()[at]->setBoxHeight(height);
            plain.boxes()[at]->setBoxHeight(height);
            break;
        case 4: {
            Box *const box = tested.boxes()[at];
            tested.layout->remove(box);
            delete box;
            delete plain.boxes()[at];
            break;
        }
        case 5:
            tested.boxes()[at]->setHidden(height % 2 == 0);
            plain.boxes()[at]->setHidden(height % 2 == 0);
            break;
        }
        if (random.bounded(3) == 0)
            tested.layout->layOut();
        // Several changes may come before the layout is done.
        if (random.bounded(3) != 0)
            compare(tested, plain);
        if (QTest::currentTestFailed())
            return qWarning("after step %d", step);
    }
}

void TestChatColumn::changeThatIsAnnouncedMeasuresOneItem()
{
    Tested column;
    fill(column, 50);
    forgetMeasured(column);
    {
        const ChatColumn::ItemChange change(column.boxes()[30]);
        column.boxes()[30]->setBoxHeight(33);
    }
    QCoreApplication::processEvents();
    QCOMPARE(column.boxes()[30]->height(), 33);
    QCOMPARE(column.boxes()[31]->y(), column.boxes()[30]->geometry().bottom() + 1 + 24);
    for (std::size_t index = 0; index < 30; ++index)
        QCOMPARE(column.boxes()[index]->measured, 0);
}

void TestChatColumn::changeThatIsNotAnnouncedMeasuresAll()
{
    Tested column;
    fill(column, 50);
    forgetMeasured(column);
    column.boxes()[30]->setBoxHeight(33);
    QCoreApplication::processEvents();
    QCOMPARE(column.boxes()[30]->height(), 33);
    for (const Box *box : column.boxes())
        QVERIFY(box->measured > 0);
}

void TestChatColumn::appendMeasuresTheNewItemOnly()
{
    Tested column;
    fill(column, 50);
    forgetMeasured(column);
    auto *const box = new Box(20);
    column.layout->append(box);
    QCoreApplication::processEvents();
    QVERIFY(box->isVisible());
    QCOMPARE(box->y(), 20 + 50 * 44);
    QCOMPARE(measuredIn(column), box->measured);
}

void TestChatColumn::appendedItemIsInItsPlaceAtOnce()
{
    Tested column;
    fill(column, 3);
    auto *const box = new Box(20);
    column.layout->append(box);
    QVERIFY(box->isVisible());
    QCOMPARE(box->geometry(), QRect(20, 20 + 3 * 44, 160, 20));
}

// A button asks for a new layout when it has been polished, and that is left to the event loop.
void TestChatColumn::buttonsOfANewItemDoNotHaveAllMeasured()
{
    Tested column;
    fill(column, 50);
    forgetMeasured(column);
    auto *const box = new Box(20);
    auto *const inside = new QVBoxLayout(box);
    inside->addWidget(new QPushButton(box));
    column.layout->append(box);
    QCoreApplication::processEvents();
    column.layout->append(new Box(20));
    QCoreApplication::processEvents();
    for (std::size_t index = 0; index < 50; ++index)
        QCOMPARE(column.boxes()[index]->measured, 0);
}

void TestChatColumn::layingOutLosesNoItem()
{
    Tested column;
    fill(column, 3);
    column.layout->layOut(); // nothing is to be done
    QCOMPARE(column.boxes().size(), std::size_t{3});
    column.boxes()[0]->setBoxHeight(50);
    column.layout->layOut();
    QCOMPARE(column.boxes().size(), std::size_t{3});
    QCOMPARE(column.boxes()[1]->y(), 20 + 50 + 24);
}

void TestChatColumn::removedItemLeavesNoGap()
{
    Tested column;
    fill(column, 3);
    Box *const second = column.boxes()[1];
    column.layout->remove(second);
    QCoreApplication::processEvents();
    QCOMPARE(column.boxes().size(), std::size_t{2});
    QCOMPARE(column.boxes()[1]->y(), 20 + 44);
    column.layout->remove(second); // not there any more
    QCOMPARE(column.boxes().size(), std::size_t{2});
    delete second;
}

void TestChatColumn::otherWidthPlacesAllAnew()
{
    Tested column;
    fill(column, 3);
    column.sheet->resize(300, 5000);
    QCoreApplication::processEvents();
    for (const Box *box : column.boxes())
        QCOMPARE(box->width(), 260);
}

void TestChatColumn::changeOfAWidgetElsewhereIsHarmless()
{
    QWidget alone;
    const ChatColumn::ItemChange noParent(&alone);
    QWidget parent;
    QWidget child(&parent);
    const ChatColumn::ItemChange noLayout(&child);
    Tested column;
    QWidget notInColumn(column.sheet);
    const ChatColumn::ItemChange noItem(&notInColumn);
    fill(column, 1);
    QCOMPARE(column.boxes()[0]->y(), 20);
}

// Through the base class's interface, of which the change has the column think nothing.
void TestChatColumn::itemInsertedWithinAnothersChangeIsPlaced()
{
    Tested tested;
    Plain plain;
    for (int height : {20, 30}) {
        tested.layout->append(new Box(height));
        plain.layout->insertWidget(plain.layout->count() - 1, new Box(height));
    }
    compare(tested, plain);
    {
        const ChatColumn::ItemChange change(tested.boxes()[1]);
        tested.layout->insertWidget(0, new Box(40));
        plain.layout->insertWidget(0, new Box(40));
        QCOMPARE(tested.layout->minimumSize().height(), plain.layout->minimumSize().height());
    }
    compare(tested, plain);
}

void TestChatColumn::growsLikeAPlainOne()
{
    Tested tested;
    Plain plain;
    fill(tested, 1);
    plain.layout->insertWidget(0, new Box(20));
    QCOMPARE(tested.layout->maximumSize(), plain.layout->maximumSize());
    QCOMPARE(tested.layout->expandingDirections(), plain.layout->expandingDirections());
    QCOMPARE(tested.layout->hasHeightForWidth(), plain.layout->hasHeightForWidth());
}

QTEST_MAIN(TestChatColumn)
#include "tst_chatcolumn.moc"
