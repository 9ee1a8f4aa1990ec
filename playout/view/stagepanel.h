#pragma once

#include <QFrame>

class QSplitter;

namespace tavro::playout {

class HostTheme;
class LayerTable;
class LogBook;
class LogView;
class MediaLibrary;
class MediaListModel;
class OutputPanel;
class PictureLoader;
class PlayoutState;

/// What the stage shows and changes.
struct StageParts {
    PlayoutState &state;
    const MediaLibrary &library;
    MediaListModel &media;
    PictureLoader &loader;
    const HostTheme &theme;
    LogBook &log;
};

/// The middle of the window: the selected output, the layers of the program on it, and the log.
class StagePanel : public QFrame {
    Q_OBJECT

public:
    /// All parts must outlive the panel.
    explicit StagePanel(const StageParts &parts);

    LayerTable &layers();
    LogView &log() { return *m_log; }

    /// The height that the operator gave the log; 0: what the picture leaves.
    int logHeight() const { return m_logHeight; }
    void setLogHeight(int height);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void share();
    void onHandleMoved();

    OutputPanel *m_output = nullptr;
    LogView *m_log = nullptr;
    QSplitter *m_splitter = nullptr;
    int m_logHeight = 0;
};

} // namespace tavro::playout
