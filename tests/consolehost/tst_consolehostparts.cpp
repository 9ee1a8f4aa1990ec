#include "agentcommandtext.h"
#include "mediafolder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace tavro::consolehost;
using tavro::aiassistant::AgentCmd;

Q_DECLARE_METATYPE(tavro::aiassistant::AgentCmd)

class ConsoleHostPartsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void mediaIdsAreRelativePaths();
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
