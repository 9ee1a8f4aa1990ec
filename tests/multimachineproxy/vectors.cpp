#include "vectors.h"

#include <QCryptographicHash>
#include <QFile>

namespace {

constexpr int longestLine = 400;

QVector<Vector> read()
{
    QFile file(QString::fromLocal8Bit(qgetenv("ZVAI_VECTORS")));
    if (!file.open(QFile::ReadOnly))
        return {};
    QVector<Vector> lines;
    while (!file.atEnd()) {
        const QList<QByteArray> words = file.readLine().trimmed().split(' ');
        lines.append({words.value(0), words.value(1), words.value(2), words.value(3), words.value(4)});
    }
    return lines;
}

} // namespace

QByteArray Vector::payload() const
{
    return QByteArray::fromHex(bytes);
}

const QVector<Vector> &vectors()
{
    static const QVector<Vector> lines = read();
    return lines;
}

QByteArray packedVector(const QByteArray &type, const QByteArray &name)
{
    for (const Vector &vector : vectors()) {
        if (vector.kind == "packed" && vector.type == type && vector.name == name)
            return vector.payload();
    }
    qFatal("no such vector: %s %s", type.constData(), name.constData());
}

QByteArray shownAsInVectors(const QByteArray &payload)
{
    if (payload.isEmpty())
        return "-";
    if (payload.size() <= longestLine)
        return payload.toHex();
    return QByteArray::number(payload.size()) + ':'
        + QCryptographicHash::hash(payload, QCryptographicHash::Sha256).toHex();
}
