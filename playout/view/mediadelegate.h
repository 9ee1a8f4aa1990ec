#pragma once

#include <QStyledItemDelegate>

namespace tavro::playout {

class HostTheme;

/// Draws an item of the media library: the thumbnail, the name below it, and a mark on what the assistant drew.
class MediaDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// The theme must outlive the delegate.
    MediaDelegate(const HostTheme &theme, QObject *parent);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    void paintThumbnail(QPainter &painter, const QRect &area, const QModelIndex &index) const;
    void paintMark(QPainter &painter, const QRect &area, const QString &text) const;
    void paintFrame(QPainter &painter, const QRect &area, const QStyleOptionViewItem &option) const;

    const HostTheme &m_theme;
};

} // namespace tavro::playout
