#include "openai/picturefitting.h"

#include <algorithm>
#include <cmath>

namespace tavro::assistantservice {

namespace {

// How far two shapes are from each other, the same for upright and lying ones.
double shapeDistance(const QSize &size, const QSize &from)
{
    const auto shape = [](const QSize &of) { return std::log(double(of.width()) / of.height()); };
    return std::abs(shape(size) - shape(from));
}

qint64 area(const QSize &size)
{
    return qint64{size.width()} * size.height();
}

} // namespace

QSize nearestSize(const QSize &wanted, const QVector<QSize> &offered)
{
    if (offered.isEmpty()) {
        return wanted;
    }
    return *std::min_element(offered.begin(), offered.end(), [&](const QSize &one, const QSize &other) {
        const double oneDistance = shapeDistance(one, wanted);
        const double otherDistance = shapeDistance(other, wanted);
        return oneDistance != otherDistance ? oneDistance < otherDistance : area(one) > area(other);
    });
}

// Cut first: the other way round a wide picture of a square one needs the memory of a far larger square.
QImage fitted(const QImage &picture, const QSize &size)
{
    const QSize part = size.scaled(picture.size(), Qt::KeepAspectRatio).expandedTo({1, 1});
    const QRect middle(QPoint((picture.width() - part.width()) / 2, (picture.height() - part.height()) / 2), part);
    return picture.copy(middle).scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace tavro::assistantservice
