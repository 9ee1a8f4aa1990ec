// The bytes of a picture, as the panel gets them from the service and the service from a model's server.

#include "aicontroller/picturedecoder.h"
#include "openai/picturereply.h"
#include "support/application.h"
#include "support/checks.h"
#include "support/input.h"

#include <QEventLoop>

namespace {

constexpr qint64 maxPixels = 134'217'728;

// libFuzzer does not see Qt's decoders. It keeps an input that gives a picture of another shape, too.
__attribute__((used, section("__libfuzzer_extra_counters"))) std::uint8_t shapes[4096];

void note(const QImage &picture)
{
    shapes[(picture.width() % 16 * 16 + picture.height() % 16) * 16 + picture.format() % 16] = 1;
}

bool isBounded(const QImage &picture)
{
    return qint64{picture.width()} * picture.height() <= maxPixels;
}

QImage decodedByTheModule(const QByteArray &bytes)
{
    QImage picture;
    QEventLoop loop;
    tavro::aiassistant::PictureDecoder decoder;
    // Empty bytes are done within the call.
    bool isDone = false;
    decoder.decode(bytes, [&](const QImage &decoded) {
        picture = decoded;
        isDone = true;
        loop.quit();
    });
    if (!isDone)
        loop.exec();
    return picture;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    needApplication();
    const QByteArray bytes = Input(data, size).rest();
    const QImage picture = tavro::assistantservice::decodedPicture(bytes);
    note(picture);
    demand(isBounded(picture) && isBounded(decodedByTheModule(bytes)));
    return 0;
}
