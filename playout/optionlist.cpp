#include "optionlist.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>

namespace tavro::playout {

namespace {

QString samplesFolder()
{
    const QString folder = QCoreApplication::applicationDirPath() + QStringLiteral("/../share/playout/media");
    return QFileInfo(folder).isDir() ? QFileInfo(folder).canonicalFilePath() : QString();
}

QVector<OptionInfo> makeInfos()
{
    const QString none = QStringLiteral("none");
    return {
        {QStringLiteral("service"),
         QStringLiteral("URL"),
         QStringLiteral("Address of the AI service"),
         QStringLiteral("http://127.0.0.1:8080"),
         {},
         {}},
        {QStringLiteral("token"),
         QStringLiteral("TOKEN"),
         QStringLiteral("Token for the service, better not given here, where other users of the machine can read it"),
         {},
         none,
         QStringLiteral("ASSISTANT_TOKEN")},
        {QStringLiteral("user-id"), QStringLiteral("ID"), QStringLiteral("User id for the service"), {}, none, {}},
        {QStringLiteral("node"),
         QStringLiteral("NAME"),
         QStringLiteral("Name of this machine for the service"),
         {},
         none,
         {}},
        {QStringLiteral("timeout"),
         QStringLiteral("SECONDS"),
         QStringLiteral("How long an answer may take"),
         QStringLiteral("60"),
         {},
         {}},
        {QStringLiteral("tick"),
         QStringLiteral("SECONDS"),
         QStringLiteral("How often the service is asked for the answer"),
         QStringLiteral("1"),
         {},
         {}},
        {QStringLiteral("media"),
         QStringLiteral("DIR"),
         QStringLiteral("Folder with pictures and animations"),
         samplesFolder(),
         QStringLiteral("the samples beside the program"),
         {}},
        {QStringLiteral("language"),
         QStringLiteral("NAME"),
         QStringLiteral("Language of the assistant: en, korean, rus, zh_CN, zh_TW, or one that a language file adds"),
         QStringLiteral("en"),
         {},
         {}},
        {QStringLiteral("theme"),
         QStringLiteral("FILE"),
         QStringLiteral("Theme file"),
         QStringLiteral(":/aiassistant/theme/default_aiassistant.theme"),
         QStringLiteral("the assistant's own theme"),
         {}},
        {QStringLiteral("role"),
         QStringLiteral("ROLE"),
         QStringLiteral("What this machine does: all, local, server or client; see below"),
         QStringLiteral("all"),
         {},
         {}},
    };
}

} // namespace

const QVector<OptionInfo> &settingInfos()
{
    static const QVector<OptionInfo> infos = makeInfos();
    return infos;
}

const OptionInfo &settingInfo(const QString &name)
{
    const QVector<OptionInfo> &all = settingInfos();
    const auto found = std::find_if(all.begin(), all.end(), [&](const OptionInfo &each) { return each.name == name; });
    Q_ASSERT(found != all.end());
    return *found;
}

} // namespace tavro::playout
