#include "openai/modelchoice.h"

#include "openai/errorbody.h"
#include "openai/plaintext.h"
#include "openai/upstreamerror.h"
#include "openai/upstreamjson.h"

#include <QJsonArray>

namespace tavro::assistantservice {

namespace {

constexpr qint64 largestList = 4 * 1024 * 1024;
constexpr int namedModels = 5;
constexpr int longestName = 100;

QStringList modelNames(const QByteArray &body)
{
    QStringList names;
    const QJsonArray data = readUpstreamObject(body).value(QLatin1String("data")).toArray();
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
    QStringList shown = names.mid(0, namedModels);
    for (QString &name : shown) {
        name = plainLine(name, longestName);
    }
    const QString listed = shown.join(QStringLiteral(", "));
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
    if (names.isEmpty() && bodyKind(reply) != BodyKind::Json) {
        return unusableAnswer(reply, address, "data");
    }
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
