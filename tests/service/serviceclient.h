#pragma once

#include "rawclient.h"
#include "serviceprocess.h"

#include <QByteArray>
#include <QJsonObject>
#include <QStringList>

/// The service's addresses.
namespace paths {
inline const QByteArray text = QByteArrayLiteral("/ai/texttotext/generate/");
inline const QByteArray picture = QByteArrayLiteral("/ai/texttoimage/generate/");
inline const QByteArray poll = QByteArrayLiteral("/ai/result/filter/");
} // namespace paths

/// Options with which no request is ever ready: each takes longer than any test lasts.
QStringList endlessWork();

/// Bodies of the three requests.
QByteArray question(const QByteArray &text);
QByteArray pictureWish(const QByteArray &prompt, int width = 64, int height = 36);
QByteArray poll(bool picture, const QString &id);

/// Parts of the replies; -1 and empty where there is no such part.
int codeOf(const QJsonObject &reply);
QString messageOf(const QJsonObject &reply);
QString requestIdOf(const QJsonObject &reply);
QString firstAnswerOf(const QJsonObject &reply);

/// One question after the other over one connection.
class ServiceClient {
public:
    /// @p headers: whole header lines that each post carries.
    explicit ServiceClient(const ServiceProcess &service, const QByteArray &headers = {});
    explicit ServiceClient(int port, const QByteArray &headers = {});

    QJsonObject post(const QByteArray &path, const QByteArray &body);
    QByteArray get(const QByteArray &path);

    /// Polls again and again, as often as the reply is "still working".
    QJsonObject result(bool picture, const QString &id);
    QJsonObject picture(const QByteArray &body);

private:
    RawClient m_raw;
    QByteArray m_headers;
};
