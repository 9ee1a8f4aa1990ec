#pragma once

#include <QByteArray>
#include <QMetaType>
#include <QVector>

/// One line of vectors.txt, which make-vectors explains.
struct Vector {
    QByteArray kind; ///< packed, accepted, refused
    QByteArray type;
    QByteArray name;
    QByteArray bytes; ///< hexadecimal, or size and digest
    QByteArray result; ///< accepted: the value packed again; refused: the error

    QByteArray payload() const; ///< the bytes themselves; only where they are written out
};

Q_DECLARE_METATYPE(Vector)

/// All lines; none where the file cannot be read. Its place is in the environment variable ZVAI_VECTORS.
const QVector<Vector> &vectors();

/// The bytes of one "packed" line.
QByteArray packedVector(const QByteArray &type, const QByteArray &name);

/// @p payload as it stands in the file.
QByteArray shownAsInVectors(const QByteArray &payload);
