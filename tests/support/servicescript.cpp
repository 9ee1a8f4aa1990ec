#include "support/servicescript.h"

#include <QBuffer>
#include <QImage>

namespace tavro::testsupport {

ScriptedAnswer ServiceScript::accepted(const QString &reqId)
{
    const QJsonObject data{{QStringLiteral("reqId"), reqId}};
    return ScriptedAnswer::json({{QStringLiteral("code"), 0}, {QStringLiteral("data"), data}});
}

ScriptedAnswer ServiceScript::refused(const QString &why)
{
    return ScriptedAnswer::json({{QStringLiteral("code"), 7}, {QStringLiteral("message"), why}});
}

ScriptedAnswer ServiceScript::working()
{
    return ScriptedAnswer::json({{QStringLiteral("code"), 1}});
}

ScriptedAnswer ServiceScript::ready(const QString &answer, const QJsonArray &commands, const QString &description)
{
    const QJsonObject data{
        {QStringLiteral("answers"), QJsonArray{answer}},
        {QStringLiteral("description"), description},
        {QStringLiteral("agentCmds"), commands},
    };
    return ScriptedAnswer::json({{QStringLiteral("code"), 0}, {QStringLiteral("data"), data}});
}

void ServiceScript::expectAnswer(const QString &answer, const QJsonArray &commands)
{
    expect("POST", text, accepted(QStringLiteral("text%1").arg(++m_lastId)));
    expect("POST", result, ready(answer, commands));
}

void ServiceScript::expectPicture(const QByteArray &bytes, const QJsonArray &commands, const QString &description)
{
    const QString target = QStringLiteral("/pictures/%1").arg(++m_lastId);
    expect("POST", picture, accepted(QStringLiteral("picture%1").arg(m_lastId)));
    expect("POST", result, ready(url() + target, commands, description));
    always("GET", target.toLatin1(), ScriptedAnswer::bytes(bytes, "image/png"));
}

QStringList ServiceScript::arguments(const QStringList &arguments) const
{
    return QStringList{QStringLiteral("--service"), url()} + arguments;
}

QJsonObject ServiceScript::body(const QByteArray &target, int index) const
{
    return requestsTo(target).value(index).json();
}

QByteArray pngBytes(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::darkBlue);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace tavro::testsupport
