#pragma once

#include "widgets/pictureviewerwidget.h"

#include <QPixmap>

#include <string>

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace tavro::aiassistant {

class Q_DECL_HIDDEN PictureViewerWidget::Private : public QObject {
    Q_OBJECT

public:
    explicit Private(PictureViewerWidget *owner);

    void showPixmap();
    void nameClose();

    PictureViewerWidget *const q;
    QPushButton *close = nullptr;
    QPushButton *lastPicture = nullptr;
    QPushButton *nextPicture = nullptr;
    QLabel *picture = nullptr;
    QPushButton *download = nullptr;
    QPixmap pixmap;
    std::string description;
    std::string url;

public Q_SLOTS:
    void slotLastBtnClicked();
    void slotNextBtnClicked();
    void slotDownloadBtnClicked();

private:
    void build();
    QPushButton *makeRoundButton(const QString &name);
    void buildPicture();
    void buildDownloadButton();
    void layOut();
    QHBoxLayout *pictureRow() const;
    void connectButtons();
};

/// Gives the private part to tests.
struct PictureViewerWidgetAccess {
    static PictureViewerWidget::Private &of(PictureViewerWidget &widget) { return *widget.d; }
};

} // namespace tavro::aiassistant
