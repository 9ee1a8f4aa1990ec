#pragma once

#include <QWidget>

class QButtonGroup;
class QComboBox;
class QHBoxLayout;

namespace tavro::playout {

class LayerTable;
class OutputView;
class PlayoutState;
struct StageParts;

/// The selected output, and the layers of the program on it.
class OutputPanel : public QWidget {
    Q_OBJECT

public:
    /// All parts must outlive the panel.
    explicit OutputPanel(const StageParts &parts);

    LayerTable &layers() { return *m_layers; }

    int heightFor(int width) const; ///< that shows the picture as wide as it can be

    QSize minimumSizeHint() const override;

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
};

} // namespace tavro::playout
