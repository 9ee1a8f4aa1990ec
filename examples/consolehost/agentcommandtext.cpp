#include "agentcommandtext.h"

#include <QStringList>

namespace tavro::consolehost {

using aiassistant::AgentCmd;

namespace {

// Types that assistantservice gives a meaning. A host agrees with its service on more of them.
constexpr int stopLayer = 1001;
constexpr int setVolume = 1002;

QString meaning(int type)
{
    switch (type) {
    case AgentCmd::GeneratedPicture:
        return QStringLiteral("generated picture");
    case AgentCmd::LibraryMedia:
        return QStringLiteral("library media");
    case stopLayer:
        return QStringLiteral("stop layer");
    case setVolume:
        return QStringLiteral("set volume");
    default:
        return QStringLiteral("unknown to this host");
    }
}

void addId(QStringList &values, const QString &name, int id)
{
    if (id != -1)
        values.append(QStringLiteral("%1 %2").arg(name).arg(id));
}

void addText(QStringList &values, const QString &name, const std::string &text)
{
    if (!text.empty())
        values.append(QStringLiteral("%1 \"%2\"").arg(name, QString::fromStdString(text)));
}

QStringList givenValues(const AgentCmd &command)
{
    QStringList values;
    if (command.bPlay)
        values.append(QStringLiteral("play"));
    if (command.playWay != 0)
        values.append(QStringLiteral("play way %1").arg(command.playWay));
    addText(values, QStringLiteral("media"), command.mediaId);
    addText(values, QStringLiteral("file"), command.localPath);
    addId(values, QStringLiteral("program"), command.programId);
    addId(values, QStringLiteral("layer"), command.layerId);
    addId(values, QStringLiteral("output"), command.outputId);
    if (command.volume >= 0.0)
        values.append(QStringLiteral("volume %1").arg(command.volume));
    return values;
}

} // namespace

QString agentCommandText(const AgentCmd &command)
{
    const QString type = QStringLiteral("%1 (%2)").arg(command.cmdType).arg(meaning(command.cmdType));
    const QStringList values = givenValues(command);
    return values.isEmpty() ? type : type + QStringLiteral(": ") + values.join(QStringLiteral(", "));
}

} // namespace tavro::consolehost
