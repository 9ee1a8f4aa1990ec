#include "playout/samplefiles.h"
#include "support/waiting.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace tavro::testsupport;

// The real program, driven by a script, against the real service.
class PlayoutServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void playsTheClipOnTheLayerAtHalfVolume();
    void refusesWhatItCannotCarryOut();
    void generatedPictureIsPlayedAndJoinsTheLibrary();
    void downloadedPictureCanBePlayedByName();
    void speaksTheLanguage_data();
    void speaksTheLanguage();
    void speaksEnglishWhereTheLanguageIsUnknown();
    void wrongScriptEndsWithTwoAndItsLines();
    void scriptThatWaitsInVainEndsWithOne();
    void wrongOptionsEndWithTwo();
    void withoutDisplayOnlyAScriptIsPlayed();

private:
    int play(const QString &script, const QStringList &more = {});
    int run(const QStringList &arguments);
    QString path(const char *name) const { return folder->filePath(QLatin1String(name)); }

    QProcess service;
    QString address;
    std::unique_ptr<QTemporaryDir> folder;
    QString errors;
};

void PlayoutServiceTest::initTestCase()
{
    service.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    service.start(QStringLiteral(ASSISTANTSERVICE_PROGRAM),
                  {QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"), QStringLiteral("--token"),
                   QStringLiteral("secret"), QStringLiteral("--log-level"), QStringLiteral("warning")});
    QVERIFY(eventually([this] { return service.canReadLine(); }));
    const QString line = QString::fromUtf8(service.readLine()).trimmed();
    const QString prefix = QStringLiteral("assistantservice listening on ");
    QVERIFY2(line.startsWith(prefix), qPrintable(line));
    address = line.mid(prefix.size());
}

void PlayoutServiceTest::cleanupTestCase()
{
    service.terminate();
    QVERIFY(eventually([this] { return service.state() == QProcess::NotRunning; }));
    QCOMPARE(service.exitCode(), 0);
}

void PlayoutServiceTest::init()
{
    folder = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("media")));
    QVERIFY(!copySample(QStringLiteral("harbour clip.gif"), path("media")).isEmpty());
    QVERIFY(writePicture(path("media/night market.png")));
}

int PlayoutServiceTest::run(const QStringList &arguments)
{
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QLatin1String(name));
    for (const char *name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
        environment.insert(QLatin1String(name), folder->path());
    environment.insert(QStringLiteral("ASSISTANT_TOKEN"), QStringLiteral("secret"));
    program.setProcessEnvironment(environment);
    program.setWorkingDirectory(folder->path());
    program.start(QStringLiteral(PLAYOUT_PROGRAM), arguments);
    const bool ended =
        eventually([&] { return program.state() == QProcess::NotRunning; }, std::chrono::milliseconds(90000));
    if (!ended)
        program.kill();
    program.waitForFinished();
    errors = QString::fromUtf8(program.readAllStandardError());
    return ended && program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1;
}

int PlayoutServiceTest::play(const QString &script, const QStringList &more)
{
    QFile file(path("test.play"));
    if (!file.open(QFile::WriteOnly))
        return -1;
    file.write(script.toUtf8());
    file.close();
    return run(QStringList{QStringLiteral("--service"), address, QStringLiteral("--media"), path("media"),
                           QStringLiteral("--script"), file.fileName()}
               + more);
}

namespace {

int differentColors(const QImage &image)
{
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); y += 4) {
        for (int x = 0; x < image.width(); x += 4)
            colors.insert(image.pixel(x, y));
    }
    return colors.size();
}

} // namespace

void PlayoutServiceTest::playsTheClipOnTheLayerAtHalfVolume()
{
    const int status = play(QStringLiteral("size 1600 900\n"
                                           "wait 20 visible sendMsg\n"
                                           "click askEdit\n"
                                           "type play the harbour clip on layer 2 at half volume\n"
                                           "press Return\n"
                                           "wait 20 visible stop\n"
                                           "wait 60 visible sendMsg\n"
                                           "wait 1 text textBrowser harbour clip\n"
                                           "wait 20 text layer2Media harbour clip\n"
                                           "wait 1 text layer2State PLAYING\n"
                                           "wait 1 text layer2Volume 50 %\n"
                                           "wait 1 text layer1State EMPTY\n"
                                           "wait 1 text statusService answering\n"
                                           "screenshot playing.png\n"
                                           "quit\n"));
    QVERIFY2(status == 0, qPrintable(errors));
    const QImage picture(path("playing.png"));
    QCOMPARE(picture.size(), QSize(1600, 900));
    QVERIFY2(differentColors(picture) > 50, qPrintable(QString::number(differentColors(picture))));
}

void PlayoutServiceTest::refusesWhatItCannotCarryOut()
{
    const int status = play(QStringLiteral("type play night market on layer 8\n"
                                           "press Return\n"
                                           "wait 60 visible sendMsg\n"
                                           "wait 20 text logLines Refused: there is no layer 8, only 1 to 4\n"
                                           "wait 1 text layer4State EMPTY\n"
                                           "quit\n"));
    QVERIFY2(status == 0, qPrintable(errors));
}

void PlayoutServiceTest::generatedPictureIsPlayedAndJoinsTheLibrary()
{
    const int status = play(QStringLiteral("click generateImage\n"
                                           "click askEdit\n"
                                           "type a lighthouse in the fog, play it on layer 3\n"
                                           "press Return\n"
                                           "wait 60 visible sendMsg\n"
                                           "wait 60 text layer3State PLAYING\n"
                                           "wait 1 text layer3Media generated 1\n"
                                           "wait 1 text libraryCount 3\n"
                                           "quit\n"));
    QVERIFY2(status == 0, qPrintable(errors));
    QFile file(path("playout/imageCathe/download_1.jpg"));
    QVERIFY(file.open(QFile::ReadOnly));
    QCOMPARE(QImage::fromData(file.readAll()).size(), QSize(1920, 1080));
}

void PlayoutServiceTest::downloadedPictureCanBePlayedByName()
{
    const int status = play(QStringLiteral("click generateImage\n"
                                           "click askEdit\n"
                                           "type a lighthouse in the fog\n"
                                           "press Return\n"
                                           "wait 60 visible PixmapCellLabel\n"
                                           "hover PixmapCellLabel\n"
                                           "click downloadButton\n"
                                           "wait 60 text libraryCount 3\n"
                                           "click askAndAnwser\n"
                                           "click askEdit\n"
                                           "type play generated 1 on layer 4\n"
                                           "press Return\n"
                                           "wait 60 visible sendMsg\n"
                                           "wait 20 text layer4Media generated 1\n"
                                           "quit\n"));
    QVERIFY2(status == 0, qPrintable(errors));
}

void PlayoutServiceTest::speaksTheLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("send");
    const auto row = [](const char *language, const char *send) {
        QTest::newRow(language) << QString::fromLatin1(language) << QString::fromUtf8(send);
    };
    row("en", "Send");
    row("rus", "Отправить");
    row("zh_CN", "发送");
}

void PlayoutServiceTest::speaksTheLanguage()
{
    QFETCH(QString, language);
    QFETCH(QString, send);
    const int status =
        play(QStringLiteral("wait 20 text sendMsg %1\nquit\n").arg(send), {QStringLiteral("--language"), language});
    QVERIFY2(status == 0, qPrintable(errors));
}

void PlayoutServiceTest::speaksEnglishWhereTheLanguageIsUnknown()
{
    const int status = play(QStringLiteral("wait 20 text sendMsg Send\n"
                                           "wait 5 text logLines does not know the language \"latin\"\n"
                                           "quit\n"),
                            {QStringLiteral("--language=latin")});
    QVERIFY2(status == 0, qPrintable(errors));
}

void PlayoutServiceTest::wrongScriptEndsWithTwoAndItsLines()
{
    QCOMPARE(play(QStringLiteral("quit\n\ndance\npress Nothing\n")), 2);
    QVERIFY2(errors.contains(QStringLiteral("test.play, line 3: unknown step \"dance\"")), qPrintable(errors));
    QVERIFY2(errors.contains(QStringLiteral("test.play, line 4: not a key: \"Nothing\"")), qPrintable(errors));
}

void PlayoutServiceTest::scriptThatWaitsInVainEndsWithOne()
{
    QCOMPARE(play(QStringLiteral("wait 0.2 text layer1State PLAYING\nquit\n")), 1);
    QVERIFY2(errors.contains(QStringLiteral("test.play, line 1: waited in vain; \"layer1State\" is enabled and shows "
                                            "\"EMPTY\"")),
             qPrintable(errors));
}

void PlayoutServiceTest::wrongOptionsEndWithTwo()
{
    QCOMPARE(run({QStringLiteral("--role=boss")}), 2);
    QVERIFY2(errors.contains(QStringLiteral("playout: role is none of all, local, server and client: boss")),
             qPrintable(errors));
}

void PlayoutServiceTest::withoutDisplayOnlyAScriptIsPlayed()
{
    QCOMPARE(run({}), 2);
    QVERIFY2(errors.contains(QStringLiteral("there is no display")), qPrintable(errors));
}

QTEST_GUILESS_MAIN(PlayoutServiceTest)
#include "tst_playoutservice.moc"
