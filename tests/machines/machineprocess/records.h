#pragma once

#include "aicontroller/agentcmd.h"
#include "aicontroller/chatrecords.h"

#include <QJsonValue>

#include <string>
#include <vector>

class QString;

namespace tavro::machineprocess {

// The controller's records as JSON; the keys are the names of the fields.

aiassistant::PictureGenerateInfo readPictureInfo(const QJsonValue &value); ///< absent keys: the defaults
std::vector<std::string> readTexts(const QJsonValue &value);

QJsonValue toJson(const QString &text);
QJsonValue toJson(const std::string &text);
QJsonValue toJson(const aiassistant::PictureGenerateInfo &info);
QJsonValue toJson(const aiassistant::ChatItemBasic &item);
QJsonValue toJson(const aiassistant::TextGeneratedPack &pack);
QJsonValue toJson(const aiassistant::AIImage &image); ///< the pixmap as its width and height
QJsonValue toJson(const std::vector<aiassistant::AgentCmd> &commands); ///< their types

} // namespace tavro::machineprocess
