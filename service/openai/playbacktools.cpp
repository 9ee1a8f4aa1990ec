#include "openai/playbacktools.h"

#include <QJsonObject>

namespace tavro::assistantservice {

namespace {

QJsonObject parameter(const char *type, const char *description)
{
    return {{QStringLiteral("type"), QLatin1String(type)}, {QStringLiteral("description"), QLatin1String(description)}};
}

QJsonObject placeNumber(const char *description)
{
    QJsonObject number = parameter("integer", description);
    number.insert(QStringLiteral("minimum"), 1);
    return number;
}

QJsonObject placeParameters()
{
    return {{QStringLiteral("layer_id"), placeNumber("Number of the layer.")},
            {QStringLiteral("program_id"), placeNumber("Number of the program.")},
            {QStringLiteral("output_id"), placeNumber("Number of the output.")}};
}

QJsonObject volumeParameter()
{
    QJsonObject volume = parameter("number", "0.0 is silent, 1.0 is full; 50 percent is 0.5.");
    volume.insert(QStringLiteral("minimum"), 0);
    volume.insert(QStringLiteral("maximum"), 1);
    return volume;
}

QJsonObject mediaIdParameter(const QVector<ShownItem> &shownMedia)
{
    QJsonObject id = parameter("string", "The media_id of the item in the library.");
    // An empty list of what is allowed would be no schema.
    if (!shownMedia.isEmpty()) {
        QJsonArray ids;
        for (const ShownItem &item : shownMedia) {
            ids.append(item.id);
        }
        id.insert(QStringLiteral("enum"), ids);
    }
    return id;
}

QJsonObject tool(const char *name, const char *description, const QJsonObject &parameters,
                 const QJsonArray &required = {})
{
    const QJsonObject schema{{QStringLiteral("type"), QStringLiteral("object")},
                             {QStringLiteral("properties"), parameters},
                             {QStringLiteral("required"), required}};
    const QJsonObject function{{QStringLiteral("name"), QLatin1String(name)},
                               {QStringLiteral("description"), QLatin1String(description)},
                               {QStringLiteral("parameters"), schema}};
    return {{QStringLiteral("type"), QStringLiteral("function")}, {QStringLiteral("function"), function}};
}

} // namespace

QJsonArray playbackTools(const QVector<ShownItem> &shownMedia)
{
    const QJsonObject places = placeParameters();
    QJsonObject play = places;
    play.insert(QStringLiteral("media_id"), mediaIdParameter(shownMedia));
    play.insert(QStringLiteral("media_name"), parameter("string", "The item's name, only where it is not listed."));
    play.insert(QStringLiteral("volume"), volumeParameter());
    QJsonObject picture = places;
    picture.insert(QStringLiteral("volume"), volumeParameter());
    QJsonObject stop = places;
    stop.insert(QStringLiteral("every_layer"), parameter("boolean", "True where the operator wants all stopped."));
    QJsonObject volume = places;
    volume.insert(QStringLiteral("every_layer"), parameter("boolean", "True where the operator means all layers."));
    volume.insert(QStringLiteral("volume"), volumeParameter());
    return {tool("play_media", "Plays an item of the media library.", play),
            tool("play_generated_picture", "Plays the picture that was generated last.", picture),
            tool("stop_layer", "Stops what is playing on a layer, or on all.", stop),
            tool("set_volume", "Sets the volume of a layer, or of all.", volume, {QStringLiteral("volume")})};
}

} // namespace tavro::assistantservice
