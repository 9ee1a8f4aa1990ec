#pragma once

#include <QImage>
#include <QUrl>

#include <optional>

namespace tavro::assistantservice {

/// Where a generated picture is: in the reply itself, or at an address.
struct PictureReply {
    QByteArray bytes;
    /// Set where there are no bytes; http or https.
    QUrl url;
    /// What the model made of the prompt; empty where the server does not say.
    QString revisedPrompt;
};

/// Reads the body of an image generation; nothing where it holds no picture.
std::optional<PictureReply> readPictureReply(const QByteArray &body);

/// Null where the bytes are no picture, or one of an absurd size.
QImage decodedPicture(const QByteArray &bytes);

} // namespace tavro::assistantservice
