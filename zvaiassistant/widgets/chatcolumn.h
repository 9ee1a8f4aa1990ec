#pragma once

#include <QVBoxLayout>

#include <vector>

namespace tavro::aiassistant {

/// A vertical box layout for a long column. It places what a plain one would place at the same spot, but measures one
/// item only, and moves those behind it, where it is told that nothing else has changed.
///
/// For widgets that fill the column's width and have a height that does not depend on it, with a spacer at the end. How
/// wide the column is, is its parent's matter.
class ChatColumn : public QVBoxLayout {
    Q_OBJECT

public:
    /// While it lives, whatever asks the column for a new layout does so for the sake of one widget. Without effect for
    /// a widget that stands in no column.
    class ItemChange {
    public:
        explicit ItemChange(QWidget *widget);
        ~ItemChange();

        ItemChange(const ItemChange &) = delete;
        ItemChange &operator=(const ItemChange &) = delete;

    private:
        QWidget *const m_widget;
        ChatColumn *const m_column;
        const int m_index;
    };

    explicit ChatColumn(QWidget *parent);

    /// Adds @p widget before the trailing spacer, and shows it.
    void append(QWidget *widget);

    /// Takes @p widget out, for the caller to delete. Nothing happens where it is not in the column.
    void remove(const QWidget *widget);

    /// Places what is to be placed, where anything is. The event loop would do it later, and slower.
    void layOut();

    QLayoutItem *itemAt(int index) const override;
    void invalidate() override;
    void setGeometry(const QRect &rect) override;
    QLayoutItem *takeAt(int index) override;

    QSize sizeHint() const override;
    QSize minimumSize() const override;
    QSize maximumSize() const override;
    Qt::Orientations expandingDirections() const override;
    bool hasHeightForWidth() const override;

private:
    static constexpr int nothing = -1; ///< height of an item that is not to be seen: it has no spacing either
    static constexpr int unmeasured = -2;

    struct Row {
        int top = 0; ///< below the upper margin
        int height = unmeasured;
        int placedTop = nothing;
        int placedHeight = unmeasured;
    };

    int indexOfWidget(const QWidget *widget) const;
    bool rowsAreComplete() const;
    void changed(int index) const;
    void forgetRows() const;
    int measured(int index) const;
    int topOf(int index) const;
    void stack() const;
    void place(const QRect &room, bool moved);

    mutable std::vector<Row> m_rows; ///< one for each item
    mutable int m_firstUnstacked = 0;
    mutable int m_firstUnplaced = 0;
    mutable int m_unexplained = 0; ///< requests for a new layout that came with no ItemChange
    int m_changes = 0; ///< ItemChanges that live
    mutable bool m_passOver = false; ///< the next item asked for is said not to be there
    QRect m_placed;
};

} // namespace tavro::aiassistant
