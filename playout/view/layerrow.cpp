#include "view/layerrow.h"

#include "model/playoutstate.h"
#include "view/elidedlabel.h"
#include "view/mediasizes.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyle>
#include <QVBoxLayout>
#include <QVariant>

#include <cmath>

namespace tavro::playout {

namespace {

constexpr int rowHeight = 72;
constexpr int numberWidth = 40;
constexpr QSize layerThumbnailSize{80, 45};
constexpr QSize stateSize{112, 40};
constexpr int buttonWidth = 56;
constexpr int volumeWidth = 48;
constexpr int controlHeight = 32;
constexpr int wholeVolume = 100;

QLabel *makeLabel(const QString &name, int width, Qt::Alignment alignment)
{
    auto *const label = new QLabel;
    label->setObjectName(name);
    label->setFixedWidth(width);
    label->setAlignment(alignment);
    return label;
}

QPixmap shrunk(const QPixmap &thumbnail)
{
    const qreal ratio = thumbnail.devicePixelRatio();
    QPixmap small = thumbnail.scaled(layerThumbnailSize * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    small.setDevicePixelRatio(ratio);
    return small;
}

void setLook(QWidget &widget, const QString &look)
{
    if (widget.property("look").toString() == look)
        return;
    widget.setProperty("look", look);
    // A style sheet looks at properties only when a widget is polished.
    widget.style()->unpolish(&widget);
    widget.style()->polish(&widget);
}

} // namespace

LayerRow::LayerRow(int number)
    : m_number(number)
{
    setObjectName(QStringLiteral("layer%1").arg(number));
    setProperty("part", QStringLiteral("layerRow"));
    setFixedHeight(rowHeight);
    build();
    layOut();
    connectControls();
    showLayer({}, {}, {});
}

QString LayerRow::childName(const QString &part) const
{
    return QStringLiteral("layer%1%2").arg(m_number).arg(part);
}

void LayerRow::build()
{
    m_target = new QPushButton(QString::number(m_number));
    m_target->setObjectName(childName(QStringLiteral("Target")));
    m_target->setProperty("part", QStringLiteral("layerNumber"));
    m_target->setCheckable(true);
    m_target->setFixedSize(numberWidth, rowHeight - 2 * gridStep);
    m_target->setAccessibleName(QStringLiteral("Play the library on layer %1").arg(m_number));
    m_target->setToolTip(QStringLiteral("The media library plays on this layer (Ctrl+%1)").arg(m_number));
    m_thumbnail = makeLabel(childName(QStringLiteral("Thumbnail")), layerThumbnailSize.width(), Qt::AlignCenter);
    m_thumbnail->setFixedHeight(layerThumbnailSize.height());
    m_thumbnail->setProperty("part", QStringLiteral("layerThumbnail"));
    m_media = new ElidedLabel;
    m_media->setObjectName(childName(QStringLiteral("Media")));
    m_fader = new QSlider(Qt::Horizontal);
    m_fader->setObjectName(childName(QStringLiteral("Fader")));
    m_fader->setRange(0, wholeVolume);
    m_fader->setPageStep(wholeVolume / 10);
    m_fader->setAccessibleName(QStringLiteral("Volume of layer %1").arg(m_number));
    m_fader->setToolTip(QStringLiteral("Volume"));
    m_volume = makeLabel(childName(QStringLiteral("Volume")), volumeWidth, Qt::AlignRight | Qt::AlignVCenter);
    m_state = makeLabel(childName(QStringLiteral("State")), stateSize.width(), Qt::AlignCenter);
    m_state->setFixedHeight(stateSize.height());
    m_state->setProperty("part", QStringLiteral("layerState"));
    m_playStop = new QPushButton;
    m_playStop->setObjectName(childName(QStringLiteral("PlayStop")));
    m_playStop->setProperty("part", QStringLiteral("playStop"));
    m_playStop->setFixedSize(buttonWidth, controlHeight);
}

void LayerRow::layOut()
{
    auto *const volume = new QHBoxLayout;
    volume->setSpacing(0);
    volume->addWidget(m_fader, 1);
    volume->addWidget(m_volume);
    auto *const middle = new QVBoxLayout;
    middle->setSpacing(0);
    middle->addStretch();
    middle->addWidget(m_media);
    middle->addLayout(volume);
    middle->addStretch();
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(gridStep, 0, gridStep, 0);
    row->setSpacing(gridStep);
    row->addWidget(m_target);
    row->addWidget(m_thumbnail);
    row->addLayout(middle, 1);
    row->addWidget(m_state);
    row->addWidget(m_playStop);
}

void LayerRow::connectControls()
{
    connect(m_fader, &QSlider::valueChanged, this,
            [this](int value) { Q_EMIT sigVolumeMoved(m_number, value / double(wholeVolume)); });
    connect(m_playStop, &QPushButton::clicked, this, [this] {
        if (m_playing)
            Q_EMIT sigStopClicked(m_number);
        else
            Q_EMIT sigPlayClicked(m_number);
    });
}

void LayerRow::showLayer(const Layer &layer, const QString &name, const QPixmap &thumbnail)
{
    const bool isEmpty = layer.mediaId.isEmpty();
    m_playing = layer.playing;
    m_media->setText(isEmpty ? QStringLiteral("No media") : name);
    m_thumbnail->setPixmap(isEmpty || thumbnail.isNull() ? QPixmap() : shrunk(thumbnail));
    const int volume = static_cast<int>(std::lround(layer.volume * wholeVolume));
    const QSignalBlocker noEcho(m_fader);
    m_fader->setValue(volume);
    m_volume->setText(QStringLiteral("%1 %").arg(volume));
    m_playStop->setEnabled(!isEmpty);
    m_playStop->setText(m_playing ? QStringLiteral("Stop") : QStringLiteral("Play"));
    m_playStop->setAccessibleName(QStringLiteral("%1 layer %2").arg(m_playStop->text()).arg(m_number));
    if (isEmpty)
        showState(QStringLiteral("EMPTY"), QStringLiteral("empty"));
    else
        showState(m_playing ? QStringLiteral("PLAYING") : QStringLiteral("STOPPED"),
                  m_playing ? QStringLiteral("playing") : QStringLiteral("stopped"));
}

void LayerRow::showState(const QString &state, const QString &look)
{
    m_state->setText(state);
    m_state->setAccessibleName(QStringLiteral("Layer %1: %2").arg(m_number).arg(look));
    for (QWidget *const widget : std::initializer_list<QWidget *>{this, m_state, m_media, m_volume})
        setLook(*widget, look);
}

} // namespace tavro::playout
