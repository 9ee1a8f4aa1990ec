#include "listenaddress.h"

#include <QRegularExpression>

namespace tavro::assistantservice {

std::optional<ListenAddress> parseListenAddress(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^(?:\\[([0-9A-Fa-f:.]+)\\]|([A-Za-z0-9._-]+)):([0-9]{1,5})$"));
    const QRegularExpressionMatch match = form.match(text);
    const int port = match.captured(3).toInt();
    if (!match.hasMatch() || port > 65535) {
        return std::nullopt;
    }
    return ListenAddress{match.captured(1) + match.captured(2), port};
}

QString httpUrl(const QString &host, int port)
{
    const QString form =
        host.contains(QLatin1Char(':')) ? QStringLiteral("http://[%1]:%2") : QStringLiteral("http://%1:%2");
    return form.arg(host).arg(port);
}

} // namespace tavro::assistantservice
