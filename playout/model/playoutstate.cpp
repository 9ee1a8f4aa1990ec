#include "model/playoutstate.h"

#include <algorithm>

namespace tavro::playout {

namespace {

std::size_t index(int number)
{
    Q_ASSERT(number >= 1);
    return static_cast<std::size_t>(number - 1);
}

} // namespace

PlayoutState::PlayoutState(const PlayoutSize &size, QObject *parent)
    : QObject(parent)
    , m_size(size)
    , m_programs(static_cast<std::size_t>(size.programs), std::vector<Layer>(static_cast<std::size_t>(size.layers)))
{
    for (int output = 1; output <= size.outputs; ++output)
        m_outputs.push_back(std::min(output, size.programs));
}

const Layer &PlayoutState::layer(int program, int layer) const
{
    return m_programs.at(index(program)).at(index(layer));
}

Layer &PlayoutState::at(int program, int layer)
{
    return m_programs.at(index(program)).at(index(layer));
}

int PlayoutState::programOf(int output) const
{
    return m_outputs.at(index(output));
}

void PlayoutState::put(int program, int layer, const QString &mediaId, bool play)
{
    Layer &target = at(program, layer);
    target.mediaId = mediaId;
    target.playing = play && !mediaId.isEmpty();
    Q_EMIT sigLayerChanged(program, layer);
}

void PlayoutState::setPlaying(int program, int layer, bool playing)
{
    Layer &target = at(program, layer);
    const bool plays = playing && !target.mediaId.isEmpty();
    if (target.playing == plays)
        return;
    target.playing = plays;
    Q_EMIT sigLayerChanged(program, layer);
}

void PlayoutState::setVolume(int program, int layer, double volume)
{
    Layer &target = at(program, layer);
    if (qFuzzyCompare(1.0 + target.volume, 1.0 + volume))
        return;
    target.volume = volume;
    Q_EMIT sigLayerChanged(program, layer);
}

void PlayoutState::showProgram(int output, int program)
{
    int &shown = m_outputs.at(index(output));
    if (shown == program)
        return;
    shown = program;
    Q_EMIT sigProgramShown(output, program);
}

void PlayoutState::selectOutput(int output)
{
    if (m_selectedOutput == output)
        return;
    m_selectedOutput = output;
    Q_EMIT sigOutputSelected(output);
}

} // namespace tavro::playout
