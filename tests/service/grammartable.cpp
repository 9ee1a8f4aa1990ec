#include "grammartable.h"

#include "builtin/builtinengine.h"

#include <QJsonObject>
#include <QtTest>

namespace grammartable {

QString written(const QJsonArray &commands)
{
    QStringList all;
    for (const QJsonValue &command : commands) {
        QString text = QString::number(command[QLatin1String("cmdType")].toInt());
        const QJsonObject params = command[QLatin1String("params")].toObject();
        for (auto param = params.begin(); param != params.end(); ++param) {
            text += QStringLiteral(" %1=%2").arg(param.key(), param.value().toVariant().toString());
        }
        all.append(text);
    }
    return all.join(QStringLiteral("; "));
}

QVector<ChatMessage> conversation(const QString &messages)
{
    QVector<ChatMessage> history;
    for (const QString &message : messages.split(QStringLiteral(" || "))) {
        if (!history.isEmpty()) {
            history.append({true, QStringLiteral("?")});
        }
        history.append({false, message});
    }
    return history;
}

TextResult ask(const QString &messages, const QVector<MediaItem> &media)
{
    const std::atomic<bool> cancelled{false};
    return tavro::assistantservice::BuiltinEngine().answer({false, false, conversation(messages), media}, cancelled);
}

QVector<MediaItem> libraryOf(std::initializer_list<const char *> names)
{
    QVector<MediaItem> media;
    for (const char *name : names) {
        media.append({QString::fromUtf8(name), QString::fromUtf8(name)});
    }
    return media;
}

void columns()
{
    QTest::addColumn<QString>("messages");
    QTest::addColumn<QString>("commands");
    QTest::addColumn<QString>("answer");
}

void row(const char *messages, const char *commands, const char *answer)
{
    QTest::newRow(messages) << QString::fromUtf8(messages) << QString::fromUtf8(commands) << QString::fromUtf8(answer);
}

void check(const QVector<MediaItem> &media)
{
    QFETCH(QString, messages);
    QFETCH(QString, commands);
    QFETCH(QString, answer);
    const TextResult result = ask(messages, media);
    QVERIFY(!result.error);
    QVERIFY2(written(result.agentCommands) == commands,
             qPrintable(written(result.agentCommands) + QLatin1Char('\n') + result.answer));
    QVERIFY2(result.answer.contains(answer), qPrintable(result.answer));
}

} // namespace grammartable
