#include "openai/upstreamjson.h"

#include "duplicatekeys.h"

#include <QJsonDocument>

#include <algorithm>

namespace tavro::assistantservice {

namespace {

constexpr int deepest = 64;
// What Qt 5.15 takes for each: measured, with room.
constexpr qint64 bytesPerValue = 32;
constexpr qint64 bytesPerContainer = 100;
constexpr qint64 bytesPerByte = 2;
constexpr qint64 mostBytesPerByte = 20;
// A short text may be all brackets.
constexpr qint64 freeBytes = 256 * 1024;

struct Shape {
    int depth = 0;
    int greatestDepth = 0;
    qint64 values = 0;
    qint64 containers = 0;

    void take(char c)
    {
        if (c == '{' || c == '[') {
            ++containers;
            greatestDepth = std::max(greatestDepth, ++depth);
        } else if (c == '}' || c == ']') {
            --depth;
        } else if (c == ',' || c == ':') {
            ++values;
        }
    }
};

// Where the text behind an opening quotation mark ends.
int behindText(const QByteArray &json, int at)
{
    while (at < json.size() && json[at] != '"') {
        at += json[at] == '\\' ? 2 : 1;
    }
    return at;
}

Shape shapeOf(const QByteArray &json)
{
    Shape shape;
    for (int at = 0; at < json.size() && shape.greatestDepth <= deepest; ++at) {
        if (json[at] == '"') {
            at = behindText(json, at + 1);
        } else {
            shape.take(json[at]);
        }
    }
    return shape;
}

} // namespace

bool isModestJson(const QByteArray &json)
{
    const Shape shape = shapeOf(json);
    const qint64 cost =
        shape.values * bytesPerValue + shape.containers * bytesPerContainer + bytesPerByte * json.size();
    return shape.greatestDepth <= deepest && cost <= std::max(freeBytes, mostBytesPerByte * json.size())
        && !repeatsContainerKey(json);
}

QJsonObject readUpstreamObject(const QByteArray &json)
{
    return isModestJson(json) ? QJsonDocument::fromJson(json).object() : QJsonObject();
}

QJsonObject readUpstreamObject(const QString &json)
{
    return readUpstreamObject(json.toUtf8());
}

} // namespace tavro::assistantservice
