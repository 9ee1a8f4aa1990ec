#pragma once

#include "aicontroller/chatrecords.h"
#include "common/export.h"

#include <QWidget>

#include <memory>

namespace tavro::aiassistant {

/// The row of thumbnails under a picture answer: one cell for each image of the context, from left to right. GUI thread
/// only.
class ZVAIASSISTANT_EXPORT PixmapLabel : public QWidget {
    Q_OBJECT

public:
    /// Shows the images of @p context, which is copied. Without images the row is empty.
    explicit PixmapLabel(const ChatItemContext &context, QWidget *parent = nullptr);
    ~PixmapLabel() override;

    /// Reads the buttons' tool tips and accessible names again, in the current language.
    void retranslate();

Q_SIGNALS:
    void sigLookImageButtonClicked(const AIImage &image); ///< the user wants to see the picture large
    void sigDownloadButtonClicked(const AIImage &image); ///< the user wants the picture in the media library
    /// The user wants the same picture request again.
    void sigTryAgainImageButtonClicked(const QString &question, const PictureGenerateInfo &picInfo);

private:
    class ZVAIASSISTANT_NO_EXPORT Private;
    std::unique_ptr<Private> d;
};

} // namespace tavro::aiassistant
