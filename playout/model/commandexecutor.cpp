#include "model/commandexecutor.h"

#include "model/medialibrary.h"
#include "model/playoutstate.h"

#include <QFileInfo>
#include <QImageReader>

#include <cmath>

namespace tavro::playout {

using aiassistant::AgentCmd;

namespace {

constexpr int notGiven = -1;
constexpr double volumeNotGiven = -1.0;

CommandResult refused(const QString &why)
{
    return {false, why};
}

CommandResult done(const QString &what)
{
    return {true, what};
}

bool hasVolume(const AgentCmd &command)
{
    return !(command.volume == volumeNotGiven);
}

QString percent(double volume)
{
    return QStringLiteral("%1 %").arg(std::lround(volume * 100.0));
}

// Empty where @p number is not given or exists; else what is wrong with it.
QString checkNumber(const QString &what, int number, int count)
{
    if (number == notGiven || (number >= 1 && number <= count))
        return {};
    return QStringLiteral("there is no %1 %2, only 1 to %3").arg(what).arg(number).arg(count);
}

QString checkVolume(const AgentCmd &command)
{
    if (!hasVolume(command) || (command.volume >= 0.0 && command.volume <= 1.0))
        return {};
    return QStringLiteral("the volume goes from 0 to 1, not %1").arg(command.volume);
}

QString checkFile(const QString &path, const QString &name)
{
    if (!QFileInfo(path).isFile())
        return QStringLiteral("the file of \"%1\" is missing: %2").arg(name, path);
    return QImageReader(path).canRead() ? QString()
                                        : QStringLiteral("the file of \"%1\" cannot be shown: %2").arg(name, path);
}

} // namespace

CommandExecutor::CommandExecutor(PlayoutState &state, MediaLibrary &library)
    : m_state(state)
    , m_library(library)
{ }

CommandResult CommandExecutor::execute(const AgentCmd &command)
{
    switch (command.cmdType) {
    case AgentCmd::LibraryMedia:
        return play(command, QString::fromStdString(command.mediaId));
    case AgentCmd::GeneratedPicture:
        return playGenerated(command);
    case StopLayerCommand:
        return stop(command);
    case SetVolumeCommand:
        return setVolume(command);
    case AgentCmd::Unspecified:
        return refused(QStringLiteral("the command does not say what to do"));
    default:
        return refused(QStringLiteral("commands of type %1 are unknown here").arg(command.cmdType));
    }
}

QString CommandExecutor::findTarget(const AgentCmd &command, Target &target) const
{
    const PlayoutSize &size = m_state.size();
    const QString problems[] = {checkNumber(QStringLiteral("output"), command.outputId, size.outputs),
                                checkNumber(QStringLiteral("program"), command.programId, size.programs),
                                checkNumber(QStringLiteral("layer"), command.layerId, size.layers),
                                checkVolume(command)};
    for (const QString &problem : problems) {
        if (!problem.isEmpty())
            return problem;
    }
    target.output = command.outputId == notGiven ? 0 : command.outputId;
    target.programGiven = command.programId != notGiven;
    target.layerGiven = command.layerId != notGiven;
    const int output = target.output == 0 ? m_state.selectedOutput() : target.output;
    target.program = target.programGiven ? command.programId : m_state.programOf(output);
    for (int layer = 1; layer <= size.layers; ++layer) {
        if (!target.layerGiven || layer == command.layerId)
            target.layers.push_back(layer);
    }
    return {};
}

QString CommandExecutor::checkMedia(const QString &mediaId) const
{
    if (mediaId.isEmpty())
        return QStringLiteral("the command names no media");
    const MediaItem *const item = m_library.find(mediaId);
    return item ? checkFile(item->path, item->name) : QStringLiteral("\"%1\" is not in the media library").arg(mediaId);
}

CommandResult CommandExecutor::play(const AgentCmd &command, const QString &mediaId)
{
    Target target;
    QString problem = findTarget(command, target);
    if (problem.isEmpty())
        problem = checkMedia(mediaId);
    if (!problem.isEmpty())
        return refused(problem);
    if (!target.layerGiven)
        target.layers = {freeLayer(target.program)};
    target.layerGiven = true;
    const int layer = target.layers.front();
    if (hasVolume(command))
        m_state.setVolume(target.program, layer, command.volume);
    m_state.put(target.program, layer, mediaId, command.bPlay);
    if (target.programGiven && target.output != 0)
        m_state.showProgram(target.output, target.program);
    return done(QStringLiteral("%1 %2 %3 at %4")
                    .arg(place(target), command.bPlay ? QStringLiteral("plays") : QStringLiteral("holds"),
                         m_library.find(mediaId)->name, percent(m_state.layer(target.program, layer).volume)));
}

CommandResult CommandExecutor::playGenerated(const AgentCmd &command)
{
    const QString path = QString::fromStdString(command.localPath);
    if (path.isEmpty())
        return refused(QStringLiteral("there is no generated picture to play yet"));
    Target target;
    QString problem = findTarget(command, target);
    if (problem.isEmpty())
        problem = checkFile(path, QStringLiteral("the generated picture"));
    return problem.isEmpty() ? play(command, m_library.addGenerated(path)) : refused(problem);
}

CommandResult CommandExecutor::stop(const AgentCmd &command)
{
    Target target;
    const QString problem = findTarget(command, target);
    if (!problem.isEmpty())
        return refused(problem);
    for (const int layer : target.layers)
        m_state.setPlaying(target.program, layer, false);
    return done(QStringLiteral("%1 stopped").arg(place(target)));
}

CommandResult CommandExecutor::setVolume(const AgentCmd &command)
{
    Target target;
    QString problem = findTarget(command, target);
    if (problem.isEmpty() && !hasVolume(command))
        problem = QStringLiteral("the command gives no volume");
    if (!problem.isEmpty())
        return refused(problem);
    for (const int layer : target.layers)
        m_state.setVolume(target.program, layer, command.volume);
    return done(QStringLiteral("%1 volume %2").arg(place(target), percent(command.volume)));
}

int CommandExecutor::freeLayer(int program) const
{
    for (int layer = 1; layer <= m_state.size().layers; ++layer) {
        if (!m_state.layer(program, layer).playing)
            return layer;
    }
    return 1;
}

QString CommandExecutor::place(const Target &target) const
{
    const QString layers =
        target.layerGiven ? QStringLiteral("layer %1").arg(target.layers.front()) : QStringLiteral("all layers");
    return QStringLiteral("Program %1, %2:").arg(target.program).arg(layers);
}

} // namespace tavro::playout
