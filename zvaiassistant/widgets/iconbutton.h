#pragma once

#include <QIcon>
#include <QPushButton>

namespace tavro::aiassistant {

/// @p icon with a picture for controls that are disabled: the normal one, dimmed as their text is. @p size is that in
/// which the icon is shown. Qt's own disabled picture of a light icon is as light as an enabled one.
QIcon withDisabledLook(QIcon icon, const QSize &size);

/// A button whose icon looks disabled where the button is, also an icon that comes from a style sheet.
class IconButton : public QPushButton {
public:
    using QPushButton::QPushButton;

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
};

} // namespace tavro::aiassistant
