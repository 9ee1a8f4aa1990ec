#pragma once

#include "aicontroller/chatrecords.h"

#include <QWidget>

#include <memory>

namespace tavro::aiassistant {

/// Shows one picture large, over a dimmed screen: a window of its own, without a frame. Escape closes it.
class PictureViewerWidget : public QWidget {
    Q_OBJECT

public:
    explicit PictureViewerWidget(QWidget *parent = nullptr);
    ~PictureViewerWidget() override;

    /// Puts @p image in the viewer; where its pixmap is null, a line says so.
    void showImage(const AIImage &image);

    void retranslate();

Q_SIGNALS:
    /// The user wants the picture in the media library. Empty where no picture was ever shown.
    void sigDownloadPicture(const QString &strNetUrl);

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
    friend struct PictureViewerWidgetAccess;
};

} // namespace tavro::aiassistant
