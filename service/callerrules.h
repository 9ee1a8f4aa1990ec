#pragma once

#include "authority.h"
#include "serviceerror.h"

#include <QSet>
#include <QVector>

namespace tavro::assistantservice {

/// What the rules look at. An empty value means that the header is missing; of a header that came several times all
/// values are joined by commas, so that no rule looks at one and the next program at another.
struct RequestHead {
    QByteArray method;
    QByteArray host;
    QByteArray origin;
    QByteArray fetchSite; ///< Sec-Fetch-Site
    QByteArray contentType;
};

/// The names under which the service is reached.
struct ServiceNames {
    /// Where it listens: an address or a name, without brackets and port.
    QByteArray listenHost;
    /// This machine's name; empty where it has none.
    QByteArray machine;
    /// With a port only that port counts, without one any.
    QVector<Authority> others;
};

/// Keeps out requests that a web page makes a browser send: the browser reaches what its user's machine reaches, and
/// would answer for a page that its user only looked at.
class CallerRules {
public:
    explicit CallerRules(const ServiceNames &names);

    /// Why this request is not answered; no error where it is. To be asked of every request before anything else. Any
    /// thread.
    ServiceError check(const RequestHead &head) const;

private:
    ServiceError checkHost(const QByteArray &host) const;
    ServiceError checkOrigin(const RequestHead &head) const;
    bool isOwnOrigin(const Authority &origin, const QByteArray &host) const;
    bool isNamedByUser(const Authority &authority) const;

    QSet<QByteArray> m_names;
    QVector<Authority> m_others;
};

} // namespace tavro::assistantservice
