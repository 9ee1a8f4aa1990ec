#include "openai/modelchoice.h"

#include "openai/upstreamerror.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace tavro::assistantservice {

namespace {

constexpr qint64 largestList = 4 * 1024 * 1024;
constexpr int namedModels = 5;

QStringList modelNames(const QByteArray &body)
{
    QStringList names;
    const QJsonArray data = QJsonDocument::fromJson(body).object().value(QLatin1String("data")).toArray();
    for (const QJsonValue &model : data) {
        const QString name = model.toObject().value(QLatin1String("id")).toString();
        if (!name.isEmpty()) {
            names.append(name);
        }
    }
    return names;
}

ServiceError severalModels(const QStringList &names, const QString &server)
{
    const QString listed = names.mid(0, namedModels).join(QStringLiteral(", "));
    return {ErrorCode::UpstreamFailed,
            QStringLiteral("The model's server %1 has %2 models; one must be chosen with --model: %3%4")
                .arg(server)
                .arg(names.size())
                .arg(listed, names.size() > namedModels ? QStringLiteral(", …") : QString())};
}

} // namespace

ModelChoice::ModelChoice(const UpstreamClient &client)
    : m_client(client)
{ }

ServiceError ModelChoice::find(const Patience &patience, QString &model)
{
    {
        const std::lock_guard lock(m_mutex);
        model = m_model;
    }
    if (!model.isEmpty()) {
        return {};
    }
    const UpstreamAddress &address = m_client.address();
    const UpstreamReply reply = m_client.get(address.target("/models"), largestList, patience);
    if (!reply.isGood()) {
        return upstreamError(reply, address, {});
    }
    const QStringList names = modelNames(reply.body);
    if (names.isEmpty()) {
        return {ErrorCode::UpstreamFailed,
                QStringLiteral("The model's server %1 names no model; one must be chosen with --model.")
                    .arg(address.text())};
    }
    if (names.size() > 1) {
        return severalModels(names, address.text());
    }
    model = names.first();
    const std::lock_guard lock(m_mutex);
    m_model = model;
    return {};
}

} // namespace tavro::assistantservice
