#include "playout/playoutprocess.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace tavro::testsupport;

/// What the program makes of the files in the user's settings folder.
class PlayoutStartTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { playout.reset(); }
    void aScriptLeavesTheLayoutAlone();
    void settingsFromAScriptAreKept();

private:
    QString settingsFile(const char *name) const
    {
        return playout->path(QStringLiteral("playout/") + QLatin1String(name));
    }
    QByteArray content(const char *name) const;

    std::unique_ptr<PlayoutProcess> playout;
};

void PlayoutStartTest::init()
{
    playout = std::make_unique<PlayoutProcess>();
    // A screen that was asked for counts as one that is there.
    playout->setEnvironment(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    QVERIFY(QDir(playout->path(QString())).mkpath(QStringLiteral("playout")));
}

QByteArray PlayoutStartTest::content(const char *name) const
{
    QFile file(settingsFile(name));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

void PlayoutStartTest::aScriptLeavesTheLayoutAlone()
{
    const QByteArray layout = "[General]\nassistant=0\nheight=950\nlog=0\nlogHeight=0\nmaximized=0\nversion=1\n"
                              "width=1700\nx=0\ny=0\n";
    QFile file(settingsFile("layout.ini"));
    QVERIFY(file.open(QFile::WriteOnly));
    file.write(layout);
    file.close();
    playout->start({QStringLiteral("--role"), QStringLiteral("local")},
                   QStringLiteral("wait 60 visible askEdit\nwait 60 visible logLines\nquit\n"));
    QCOMPARE(playout->failure(), QString());
    QCOMPARE(content("layout.ini"), layout);
}

void PlayoutStartTest::settingsFromAScriptAreKept()
{
    playout->start({QStringLiteral("--role"), QStringLiteral("local"), QStringLiteral("--tick"), QStringLiteral("2")},
                   QStringLiteral("wait 60 visible askEdit\npress Ctrl+,\nwait 60 focused settingsService\n"
                                  "wait 60 disabled settingsTick\nclick settingsNode\ntype studio 1\n"
                                  "click settingsLanguage\npress Down\npress Down\npress Return\n"
                                  "click settingsOk\nwait 60 hidden settings\nwait 60 text sendMsg Отправить\nquit\n"));
    QCOMPARE(playout->failure(), QString());
    QCOMPARE(content("playout.ini"), QByteArray("language=rus\nnode=\"studio 1\"\n"));
    QVERIFY(!QFile::exists(settingsFile("layout.ini")));
}

QTEST_GUILESS_MAIN(PlayoutStartTest)
#include "tst_playoutstart.moc"
