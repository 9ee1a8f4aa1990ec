#include "secrets.h"

#include <openssl/crypto.h>

#include <QCryptographicHash>

namespace tavro::assistantservice {

// Both are hashed first, so that the comparison has one length for all.
bool equalSecrets(const QByteArray &given, const QByteArray &expected)
{
    const QByteArray a = QCryptographicHash::hash(given, QCryptographicHash::Sha256);
    const QByteArray b = QCryptographicHash::hash(expected, QCryptographicHash::Sha256);
    return CRYPTO_memcmp(a.constData(), b.constData(), static_cast<size_t>(a.size())) == 0;
}

} // namespace tavro::assistantservice
