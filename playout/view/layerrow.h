#pragma once

#include <QFrame>
#include <QPixmap>

class QLabel;
class QPushButton;
class QSlider;

namespace tavro::playout {

class ElidedLabel;
struct Layer;

/// One layer: its number, what is on it, whether it plays (in letters that are read from afar), volume, and a button.
class LayerRow : public QFrame {
    Q_OBJECT

public:
    explicit LayerRow(int number);

    int number() const { return m_number; }

    /// @p name and @p thumbnail of the media on the layer; they do not count where it is empty.
    void showLayer(const Layer &layer, const QString &name, const QPixmap &thumbnail);

    /// The button with the number: checked on the layer that the library plays on.
    QPushButton *targetButton() const { return m_target; }

Q_SIGNALS:
    void sigPlayClicked(int number);
    void sigStopClicked(int number);
    void sigVolumeMoved(int number, double volume);

private:
    void build();
    void layOut();
    void connectControls();
    void showState(const QString &state, const QString &look);
    QString childName(const QString &part) const;

    const int m_number;
    bool m_playing = false;
    QPushButton *m_target = nullptr;
    QLabel *m_thumbnail = nullptr;
    ElidedLabel *m_media = nullptr;
    QSlider *m_fader = nullptr;
    QLabel *m_volume = nullptr;
    QLabel *m_state = nullptr;
    QPushButton *m_playStop = nullptr;
};

} // namespace tavro::playout
