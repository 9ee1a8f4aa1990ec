#pragma once

#include <QObject>
#include <QString>

#include <vector>

namespace tavro::playout {

/// One layer of a program.
struct Layer {
    QString mediaId; ///< empty: nothing is on the layer
    bool playing = false;
    double volume = 1.0; ///< 0 (silent) to 1
};

/// How much of everything a playout has.
struct PlayoutSize {
    int programs = 2;
    int layers = 4; ///< of each program
    int outputs = 2;
};

/// What plays where: programs made of layers, and outputs that each show one program. All numbers count from 1.
///
/// Callers give numbers that exist; the checks of what comes from outside are CommandExecutor's.
class PlayoutState : public QObject {
    Q_OBJECT

public:
    /// All layers are empty at full volume. Output n shows program n, where there is one, else the last program.
    explicit PlayoutState(const PlayoutSize &size = {}, QObject *parent = nullptr);

    const PlayoutSize &size() const { return m_size; }

    const Layer &layer(int program, int layer) const;
    int programOf(int output) const;
    int selectedOutput() const { return m_selectedOutput; } ///< the one that the operator looks at
    int selectedProgram() const { return programOf(m_selectedOutput); }

    void put(int program, int layer, const QString &mediaId, bool play);
    void setPlaying(int program, int layer, bool playing); ///< an empty layer never plays
    void setVolume(int program, int layer, double volume);
    void showProgram(int output, int program);
    void selectOutput(int output);

Q_SIGNALS:
    void sigLayerChanged(int program, int layer);
    void sigProgramShown(int output, int program);
    void sigOutputSelected(int output);

private:
    Layer &at(int program, int layer);

    PlayoutSize m_size;
    std::vector<std::vector<Layer>> m_programs;
    std::vector<int> m_outputs; // the program that each shows
    int m_selectedOutput = 1;
};

} // namespace tavro::playout
