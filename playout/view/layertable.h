#pragma once

#include <QWidget>

#include <vector>

class QButtonGroup;
class QGridLayout;

namespace tavro::playout {

class LayerRow;
class MediaLibrary;
class MediaListModel;
class PlayoutState;

/// The layers of the program on the selected output, below each other, or in two columns where there is room.
class LayerTable : public QWidget {
    Q_OBJECT

public:
    /// All that it is given must outlive the table.
    LayerTable(PlayoutState &state, const MediaLibrary &library, MediaListModel &media);

    int heightFor(int width) const; ///< all rows at this width

    /// As narrow as one column allows also while there are two: else the window could not shrink again.
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override { return minimumSizeHint(); }

    int targetLayer() const; ///< the layer that the library plays on
    void setTargetLayer(int layer);

Q_SIGNALS:
    void sigPlayClicked(int layer);
    void sigStopClicked(int layer);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void addRow(int number);
    void place(int columns);
    void refresh();
    void refreshRow(LayerRow &row);

    PlayoutState &m_state;
    const MediaLibrary &m_library;
    const MediaListModel &m_media;
    QGridLayout *m_grid = nullptr;
    QButtonGroup *m_targets = nullptr;
    std::vector<LayerRow *> m_rows;
    int m_columns = 0;
};

} // namespace tavro::playout
