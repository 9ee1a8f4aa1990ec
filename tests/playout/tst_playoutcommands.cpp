#include "model/commandexecutor.h"
#include "model/medialibrary.h"
#include "model/playoutstate.h"
#include "playout/samplefiles.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace tavro::playout;
using tavro::aiassistant::AgentCmd;
using namespace tavro::testsupport;

namespace {

AgentCmd command(int type, int layer = -1, double volume = -1.0)
{
    AgentCmd command;
    command.cmdType = type;
    command.layerId = layer;
    command.volume = volume;
    return command;
}

AgentCmd playCommand(const char *mediaId, int layer = -1, double volume = -1.0)
{
    AgentCmd play = command(AgentCmd::LibraryMedia, layer, volume);
    play.bPlay = true;
    play.mediaId = mediaId;
    return play;
}

AgentCmd at(AgentCmd command, int program, int output = -1)
{
    command.programId = program;
    command.outputId = output;
    return command;
}

AgentCmd playFile(const QString &path, int layer)
{
    AgentCmd play = playCommand("", layer);
    play.cmdType = AgentCmd::GeneratedPicture;
    play.localPath = path.toStdString();
    return play;
}

// All that can be seen of a playout, for comparing.
QString describe(const PlayoutState &state)
{
    QStringList parts;
    for (int program = 1; program <= state.size().programs; ++program) {
        for (int number = 1; number <= state.size().layers; ++number) {
            const Layer &layer = state.layer(program, number);
            if (!layer.mediaId.isEmpty() || layer.volume < 1.0)
                parts.append(QStringLiteral("%1.%2 %3 %4 %5")
                                 .arg(program)
                                 .arg(number)
                                 .arg(layer.mediaId, layer.playing ? QStringLiteral("plays") : QStringLiteral("stands"))
                                 .arg(layer.volume));
        }
    }
    for (int output = 1; output <= state.size().outputs; ++output)
        parts.append(QStringLiteral("output %1 shows %2").arg(output).arg(state.programOf(output)));
    return parts.join(QStringLiteral("; "));
}

} // namespace

Q_DECLARE_METATYPE(tavro::aiassistant::AgentCmd)

class PlayoutCommandsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void carriesOut_data();
    void carriesOut();
    void refusesAndChangesNothing_data();
    void refusesAndChangesNothing();
    void playingWithoutALayerTakesTheFirstFreeOne();
    void playingWithoutALayerTakesLayerOneWhenAllPlay();
    void commandsWithoutAProgramMeanTheSelectedOutput();
    void aGeneratedPictureJoinsTheLibraryAndPlays();
    void aRefusedGeneratedPictureDoesNotJoinTheLibrary();
    void aMissingFileIsRefused();
    void anUnreadableFileIsRefused();
    void stopEndsAllLayersOfOneProgram();

private:
    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<MediaLibrary> library;
    std::unique_ptr<PlayoutState> state;
    std::unique_ptr<CommandExecutor> executor;
};

void PlayoutCommandsTest::init()
{
    folder = std::make_unique<QTemporaryDir>();
    QVERIFY(writePicture(folder->filePath(QStringLiteral("harbour.png"))));
    QVERIFY(writePicture(folder->filePath(QStringLiteral("market.png"))));
    library = std::make_unique<MediaLibrary>();
    library->add(MediaLibrary::itemsIn(folder->path()));
    state = std::make_unique<PlayoutState>();
    executor = std::make_unique<CommandExecutor>(*state, *library);
}

void PlayoutCommandsTest::carriesOut_data()
{
    QTest::addColumn<AgentCmd>("cmd");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("after");
    const QString outputs = QStringLiteral("; output 1 shows 1; output 2 shows 2");
    const auto row = [&](const char *name, const AgentCmd &cmd, const char *text, const QString &after) {
        QTest::newRow(name) << cmd << QString::fromLatin1(text) << after;
    };
    row("on a layer at half volume", playCommand("harbour.png", 2, 0.5), "Program 1, layer 2: plays harbour at 50 %",
        QStringLiteral("1.2 harbour.png plays 0.5") + outputs);
    row("silent", playCommand("harbour.png", 4, 0.0), "Program 1, layer 4: plays harbour at 0 %",
        QStringLiteral("1.4 harbour.png plays 0") + outputs);
    row("keeps the volume", playCommand("harbour.png", 1), "Program 1, layer 1: plays harbour at 100 %",
        QStringLiteral("1.1 harbour.png plays 1") + outputs);
    row("in a program", at(playCommand("harbour.png", 1), 2), "Program 2, layer 1: plays harbour at 100 %",
        QStringLiteral("2.1 harbour.png plays 1") + outputs);
    row("on an output", at(playCommand("harbour.png", 1), -1, 2), "Program 2, layer 1: plays harbour at 100 %",
        QStringLiteral("2.1 harbour.png plays 1") + outputs);
    row("a program on an output", at(playCommand("harbour.png", 1), 1, 2), "Program 1, layer 1: plays harbour at 100 %",
        QStringLiteral("1.1 harbour.png plays 1; output 1 shows 1; output 2 shows 1"));
    AgentCmd hold = playCommand("harbour.png", 3);
    hold.bPlay = false;
    row("without playing", hold, "Program 1, layer 3: holds harbour at 100 %",
        QStringLiteral("1.3 harbour.png stands 1") + outputs);
    row("volume", command(SetVolumeCommand, 2, 0.25), "Program 1, layer 2: volume 25 %",
        QStringLiteral("1.2  stands 0.25") + outputs);
    row("volume of all layers", command(SetVolumeCommand, -1, 0.0), "Program 1, all layers: volume 0 %",
        QStringLiteral("1.1  stands 0; 1.2  stands 0; 1.3  stands 0; 1.4  stands 0") + outputs);
    row("stop an empty layer", command(StopLayerCommand, 2), "Program 1, layer 2: stopped", outputs.mid(2));
}

void PlayoutCommandsTest::carriesOut()
{
    QFETCH(AgentCmd, cmd);
    const CommandResult result = executor->execute(cmd);
    QTEST(result.text, "text");
    QVERIFY(result.done);
    QTEST(describe(*state), "after");
}

void PlayoutCommandsTest::refusesAndChangesNothing_data()
{
    QTest::addColumn<AgentCmd>("cmd");
    QTest::addColumn<QString>("why");
    const auto row = [&](const char *name, const AgentCmd &cmd, const char *why) {
        QTest::newRow(name) << cmd << QString::fromLatin1(why);
    };
    row("unknown media", playCommand("boat.png", 2, 0.5), "\"boat.png\" is not in the media library");
    row("no media", playCommand("", 2), "the command names no media");
    row("layer too high", playCommand("harbour.png", 5, 0.5), "there is no layer 5, only 1 to 4");
    row("layer 0", playCommand("harbour.png", 0), "there is no layer 0, only 1 to 4");
    row("layer below -1", playCommand("harbour.png", -2), "there is no layer -2, only 1 to 4");
    row("program too high", at(playCommand("harbour.png", 1), 3), "there is no program 3, only 1 to 2");
    row("output too high", at(playCommand("harbour.png", 1), -1, 3), "there is no output 3, only 1 to 2");
    row("volume too high", playCommand("harbour.png", 1, 1.5), "the volume goes from 0 to 1, not 1.5");
    row("volume below 0", playCommand("harbour.png", 1, -0.5), "the volume goes from 0 to 1, not -0.5");
    row("volume not a number", playCommand("harbour.png", 1, std::nan("")), "the volume goes from 0 to 1, not nan");
    row("stop a layer that is not there", command(StopLayerCommand, 7), "there is no layer 7, only 1 to 4");
    row("volume without a value", command(SetVolumeCommand, 1), "the command gives no volume");
    row("volume out of range", command(SetVolumeCommand, 1, 2.0), "the volume goes from 0 to 1, not 2");
    row("generated picture without a file", playFile({}, 1), "there is no generated picture to play yet");
    row("no type", command(AgentCmd::Unspecified, 1), "the command does not say what to do");
    row("unknown type", command(77, 1), "commands of type 77 are unknown here");
}

void PlayoutCommandsTest::refusesAndChangesNothing()
{
    QFETCH(AgentCmd, cmd);
    QVERIFY(executor->execute(playCommand("market.png", 1, 0.75)).done);
    const QString before = describe(*state);
    const CommandResult result = executor->execute(cmd);
    QTEST(result.text, "why");
    QVERIFY(!result.done);
    QCOMPARE(describe(*state), before);
}

void PlayoutCommandsTest::playingWithoutALayerTakesTheFirstFreeOne()
{
    executor->execute(playCommand("market.png", 1));
    QCOMPARE(executor->execute(playCommand("harbour.png")).text,
             QStringLiteral("Program 1, layer 2: plays harbour at 100 %"));
}

void PlayoutCommandsTest::playingWithoutALayerTakesLayerOneWhenAllPlay()
{
    for (int layer = 1; layer <= 4; ++layer)
        executor->execute(playCommand("market.png", layer));
    executor->execute(playCommand("harbour.png"));
    QCOMPARE(state->layer(1, 1).mediaId, QStringLiteral("harbour.png"));
}

void PlayoutCommandsTest::commandsWithoutAProgramMeanTheSelectedOutput()
{
    state->selectOutput(2);
    executor->execute(playCommand("harbour.png", 1));
    QVERIFY(state->layer(2, 1).playing);
    QVERIFY(!state->layer(1, 1).playing);
}

void PlayoutCommandsTest::aGeneratedPictureJoinsTheLibraryAndPlays()
{
    const QString path = folder->filePath(QStringLiteral("download_3.jpg"));
    QVERIFY(writePicture(path));
    const CommandResult result = executor->execute(playFile(path, 3));
    QCOMPARE(result.text, QStringLiteral("Program 1, layer 3: plays generated 3 at 100 %"));
    QCOMPARE(library->items().size(), std::size_t(3));
    QCOMPARE(state->layer(1, 3).mediaId, library->items().back().id);
}

void PlayoutCommandsTest::aRefusedGeneratedPictureDoesNotJoinTheLibrary()
{
    const QString path = folder->filePath(QStringLiteral("download_3.jpg"));
    QVERIFY(writePicture(path));
    QVERIFY(!executor->execute(playFile(path, 9)).done);
    QCOMPARE(library->items().size(), std::size_t(2));
}

void PlayoutCommandsTest::aMissingFileIsRefused()
{
    const QString path = folder->filePath(QStringLiteral("harbour.png"));
    QVERIFY(QFile::remove(path));
    const CommandResult result = executor->execute(playCommand("harbour.png", 2));
    QVERIFY(!result.done);
    QCOMPARE(result.text, QStringLiteral("the file of \"harbour\" is missing: %1").arg(path));
    QVERIFY(state->layer(1, 2).mediaId.isEmpty());
}

void PlayoutCommandsTest::anUnreadableFileIsRefused()
{
    QFile file(folder->filePath(QStringLiteral("harbour.png")));
    QVERIFY(file.open(QFile::WriteOnly | QFile::Truncate));
    file.write("no picture");
    file.close();
    const CommandResult result = executor->execute(playCommand("harbour.png", 2));
    QVERIFY(!result.done);
    QVERIFY2(result.text.contains(QStringLiteral("cannot be shown")), qPrintable(result.text));
}

void PlayoutCommandsTest::stopEndsAllLayersOfOneProgram()
{
    executor->execute(playCommand("harbour.png", 1));
    executor->execute(playCommand("harbour.png", 2));
    executor->execute(at(playCommand("harbour.png", 1), 2));
    const CommandResult result = executor->execute(command(StopLayerCommand));
    QCOMPARE(result.text, QStringLiteral("Program 1, all layers: stopped"));
    QVERIFY(!state->layer(1, 1).playing);
    QVERIFY(!state->layer(1, 2).playing);
    QVERIFY(state->layer(2, 1).playing);
    QCOMPARE(state->layer(1, 1).mediaId, QStringLiteral("harbour.png"));
}

QTEST_GUILESS_MAIN(PlayoutCommandsTest)
#include "tst_playoutcommands.moc"
