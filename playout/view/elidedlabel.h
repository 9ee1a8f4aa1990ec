#pragma once

#include <QLabel>

namespace tavro::playout {

/// A line of plain text that ends in dots where the room is too small; the tool tip then has it whole. text() gives the
/// whole text.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(const QString &text = {});

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace tavro::playout
