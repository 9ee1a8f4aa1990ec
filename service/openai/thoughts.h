#pragma once

#include <QString>

namespace tavro::assistantservice {

/// The text without what a model thought to itself, in the marks that models put around it (such as "<think>" or
/// "[THINK]"). Sections may nest; one that is not closed goes to the end, and one that is only closed has begun at the
/// beginning.
QString withoutThoughts(const QString &text);

/// What a text in channels (gpt-oss) holds for the user.
struct ChanneledText {
    QString text;
    /// It also holds a call of a tool.
    bool calls = false;
};

ChanneledText readChannels(const QString &text);

} // namespace tavro::assistantservice
