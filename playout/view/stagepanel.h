#pragma once

#include <QFrame>

class QButtonGroup;
class QComboBox;
class QHBoxLayout;

namespace tavro::playout {

class HostTheme;
class LayerTable;
class LogView;
class MediaLibrary;
class MediaListModel;
class OutputView;
class PictureLoader;
class PlayoutState;

/// What the stage shows and changes.
struct StageParts {
    PlayoutState &state;
    const MediaLibrary &library;
    MediaListModel &media;
    PictureLoader &loader;
    const HostTheme &theme;
};

/// The middle of the window: the selected output, the layers of the program on it, and the log.
class StagePanel : public QFrame {
    Q_OBJECT

public:
    /// All parts but the theme must outlive the panel.
    explicit StagePanel(const StageParts &parts);

    LayerTable &layers() { return *m_layers; }
    LogView &log() { return *m_log; }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QHBoxLayout *buildHeader();
    void showSelection();

    PlayoutState &m_state;
    QButtonGroup *m_outputs = nullptr;
    QComboBox *m_program = nullptr;
    OutputView *m_view = nullptr;
    LayerTable *m_layers = nullptr;
    LogView *m_log = nullptr;
};

} // namespace tavro::playout
