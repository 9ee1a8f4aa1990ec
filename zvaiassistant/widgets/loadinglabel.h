#pragma once

#include <QLabel>

namespace tavro::aiassistant {

/// Plays the loading animation from the start, sharp also on a screen of double scale.
class LoadingLabel : public QLabel {
public:
    explicit LoadingLabel(QWidget *parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const int m_scale; ///< of the file that is played
};

} // namespace tavro::aiassistant
