#include "agentcommandtext.h"
#include "mediafolder.h"
#include "step.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace tavro::consolehost;
using tavro::aiassistant::AgentCmd;
using tavro::aiassistant::PictureGenerateInfo;

Q_DECLARE_METATYPE(tavro::aiassistant::AgentCmd)

class ConsoleHostPartsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void mediaIdsAreRelativePaths();
    void readsPictureSettings_data();
    void readsPictureSettings();
    void writesGivenValuesOnly_data();
    void writesGivenValuesOnly();
};

void ConsoleHostPartsTest::mediaIdsAreRelativePaths()
{
    QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkpath(QStringLiteral("b/c")));
    for (const char *name : {"b/same.png", "b/c/same.png", "Zürich.mp4", ".hidden"})
        QVERIFY(QFile(folder.filePath(QString::fromUtf8(name))).open(QFile::WriteOnly));
    const MediaLibrary expected{{"Zürich.mp4", "Zürich.mp4"}, {"b/c/same.png", "same.png"}, {"b/same.png", "same.png"}};
    QCOMPARE(readMediaFolder(folder.path()), expected);
    QCOMPARE(readMediaFolder(folder.path() + QLatin1Char('/')), expected);
    QVERIFY(readMediaFolder(QString()).empty());
    const QString here = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder.path()));
    const MediaLibrary relative = readMediaFolder(QStringLiteral("."));
    const MediaLibrary below = readMediaFolder(QStringLiteral("b"));
    QVERIFY(QDir::setCurrent(here));
    QCOMPARE(relative, expected);
    QCOMPARE(below, (MediaLibrary{{"c/same.png", "same.png"}, {"same.png", "same.png"}}));
}

void ConsoleHostPartsTest::readsPictureSettings_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("style");
    QTest::addColumn<QString>("content");
    const auto row = [](const char *line, const char *style, const char *content) {
        QTest::newRow(line) << QString::fromLatin1(line) << QString::fromLatin1(style) << QString::fromLatin1(content);
    };
    row("/picture a quay", "preset", "a quay");
    row("/picture style=ink a quay", "ink", "a quay");
    row("/picture style=\"Ink Painting\" ratio=4:3 a quay", "Ink Painting", "a quay");
    row("/picture style=\"\" a quay", "", "a quay");
    row("/picture style=\"ink a quay", "\"ink", "a quay");
    row("/picture a \"quay\" style=ink", "preset", "a \"quay\" style=ink");
}

void ConsoleHostPartsTest::readsPictureSettings()
{
    QFETCH(QString, line);
    PictureGenerateInfo preset;
    preset.style = "preset";
    const Step step = readStep(line, preset);
    QCOMPARE(step.kind, Step::Kind::Picture);
    QTEST(QString::fromStdString(step.picture.style), "style");
    QTEST(QString::fromStdString(step.picture.content), "content");
}

void ConsoleHostPartsTest::writesGivenValuesOnly_data()
{
    QTest::addColumn<AgentCmd>("command");
    QTest::addColumn<QString>("text");

    AgentCmd command;
    QTest::newRow("nothing given") << command << QStringLiteral("1000 (unknown to this host)");
    command.cmdType = 1002;
    command.volume = 0.0;
    command.layerId = 0;
    QTest::newRow("zeros are given") << command << QStringLiteral("1002 (set volume): layer 0, volume 0");
    command = {};
    command.cmdType = AgentCmd::LibraryMedia;
    command.bPlay = true;
    command.playWay = 2;
    command.programId = 1;
    command.layerId = 2;
    command.outputId = 3;
    command.mediaId = "clips/harbour.mp4";
    command.volume = 0.25;
    QTest::newRow("all") << command
                         << QStringLiteral("999 (library media): play, play way 2, media \"clips/harbour.mp4\", "
                                           "program 1, layer 2, output 3, volume 0.25");
    command = {};
    command.cmdType = AgentCmd::GeneratedPicture;
    command.localPath = "/tmp/a b.jpg";
    QTest::newRow("picture") << command << QStringLiteral("0 (generated picture): file \"/tmp/a b.jpg\"");
    command = {};
    command.cmdType = 1001;
    QTest::newRow("stop") << command << QStringLiteral("1001 (stop layer)");
}

void ConsoleHostPartsTest::writesGivenValuesOnly()
{
    QFETCH(AgentCmd, command);
    QTEST(agentCommandText(command), "text");
}

QTEST_GUILESS_MAIN(ConsoleHostPartsTest)
#include "tst_consolehostparts.moc"
