#pragma once

#include <QWidget>

#include <memory>
#include <vector>

namespace tavro::playout {

class HostTheme;
class LayerSource;
class MediaLibrary;
class PictureLoader;
class PlayoutState;

/// The picture of the selected output at 16:9: the playing layers of its program, the first at the bottom.
class OutputView : public QWidget {
    Q_OBJECT

public:
    /// All that it is given must outlive the view.
    OutputView(const PlayoutState &state, const MediaLibrary &library, PictureLoader &loader, const HostTheme &theme);
    ~OutputView() override;

    /// The height that suits @p width.
    static int heightFor(int width);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void refresh();
    void refreshLayer(int layer);
    QRect screen() const;

    const PlayoutState &m_state;
    const MediaLibrary &m_library;
    PictureLoader &m_loader;
    std::vector<std::unique_ptr<LayerSource>> m_sources; // null where the layer does not play
    const HostTheme &m_theme;
};

} // namespace tavro::playout
