#pragma once

#include <QWidget>

namespace tavro::aiassistant {

/// A frame over its parent that shows while the parent has the keyboard and was not given it by the mouse: a light line
/// in a dark one, to be seen on anything. It follows the parent's size and lets the mouse through.
class FocusRing : public QWidget {
public:
    explicit FocusRing(QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void focusCame(Qt::FocusReason reason);

    bool m_byKeyboard = false;
};

} // namespace tavro::aiassistant
