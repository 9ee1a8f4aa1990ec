#include "builtin/agentcommands.h"

#include <QJsonObject>

namespace tavro::assistantservice {

namespace {

constexpr int notGiven = -1;

CommandType typeOf(const Intent &intent)
{
    switch (intent.action) {
    case Intent::Action::Stop:
        return CommandType::StopLayer;
    case Intent::Action::SetVolume:
        return CommandType::SetVolume;
    default:
        return CommandType::Play;
    }
}

void insertNumber(QJsonObject &params, const QString &key, int number)
{
    if (number != notGiven) {
        params.insert(key, number);
    }
}

QJsonObject commonParams(const Intent &intent, const MediaNames &names)
{
    QJsonObject params;
    if (intent.action != Intent::Action::SetVolume) {
        params.insert(QStringLiteral("bPlay"), intent.action == Intent::Action::Play);
    }
    if (intent.media >= 0) {
        params.insert(QStringLiteral("mediaId"), names.item(intent.media).id);
    }
    if (intent.volume) {
        params.insert(QStringLiteral("volume"), *intent.volume);
    }
    return params;
}

QVector<int> orNone(const QVector<int> &numbers)
{
    return numbers.isEmpty() ? QVector<int>{notGiven} : numbers;
}

void append(QJsonArray &commands, const Intent &intent, const MediaNames &names)
{
    const QVector<int> programs = orNone(intent.places.programs);
    const QVector<int> outputs = orNone(intent.places.outputs);
    const QVector<int> layers = orNone(intent.places.layers);
    for (const int program : programs) {
        for (const int output : outputs) {
            for (const int layer : layers) {
                QJsonObject params = commonParams(intent, names);
                insertNumber(params, QStringLiteral("programId"), program);
                insertNumber(params, QStringLiteral("outputId"), output);
                insertNumber(params, QStringLiteral("layerId"), layer);
                commands.append(QJsonObject{{QStringLiteral("cmdType"), static_cast<int>(typeOf(intent))},
                                            {QStringLiteral("params"), params}});
            }
        }
    }
}

} // namespace

bool isTooMuch(const QVector<Intent> &intents)
{
    constexpr qint64 mostCommands = 100;
    qint64 count = 0;
    for (const Intent &intent : intents) {
        const Places &places = intent.places;
        count += qint64(orNone(places.programs).size()) * orNone(places.outputs).size() * orNone(places.layers).size();
    }
    return count > mostCommands;
}

QJsonArray agentCommands(const QVector<Intent> &intents, const MediaNames &names)
{
    QJsonArray commands;
    for (const Intent &intent : intents) {
        append(commands, intent, names);
    }
    return commands;
}

} // namespace tavro::assistantservice
