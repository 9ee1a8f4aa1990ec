#include "optionreader.h"
#include "settings/initext.h"
#include "settings/settingswriter.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace tavro::playout;

class PlayoutSettingsFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void valuesComeBackAsTheyWere_data();
    void valuesComeBackAsTheyWere();
    void onlyTheChangedLineChanges_data();
    void onlyTheChangedLineChanges();
    void theHostReadsWhatWasSaved();
    void presetsLeaveTheFile();
    void anEmptyMediaFolderIsNoPreset();
    void nothingChangedWritesNothing();
    void onlyTheOwnerCanReadTheFile_data();
    void onlyTheOwnerCanReadTheFile();
    void theFoldersAreMade();
    void aFileThatCannotBeWrittenIsTold();
    void whatAnEditorMustChangeIsLeftAlone_data();
    void whatAnEditorMustChangeIsLeftAlone();
    void nothingBehindANulIsLost();

private:
    Options read();
    void write(const QByteArray &content);
    QByteArray content();

    std::unique_ptr<QTemporaryDir> folder;
    QString path;
};

void PlayoutSettingsFileTest::init()
{
    folder = std::make_unique<QTemporaryDir>();
    QVERIFY(folder->isValid());
    path = folder->filePath(QStringLiteral("playout.ini"));
}

Options PlayoutSettingsFileTest::read()
{
    OptionReader reader([](const QString &) { return std::nullopt; }, path);
    const auto options = reader.read({QStringLiteral("playout")});
    if (!options)
        qFatal("%s", qPrintable(reader.text()));
    return *options;
}

void PlayoutSettingsFileTest::write(const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QFile::WriteOnly));
    file.write(content);
}

QByteArray PlayoutSettingsFileTest::content()
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

void PlayoutSettingsFileTest::valuesComeBackAsTheyWere_data()
{
    QTest::addColumn<QString>("value");
    const auto row = [](const char *name, const char *value) { QTest::newRow(name) << QString::fromUtf8(value); };
    row("plain", "http://127.0.0.1:8080");
    row("blanks around", "  a b  ");
    row("quotation marks", "say \"yes\"");
    row("backslashes", "C:\\new\\table\\x41");
    row("a backslash at the end", "end\\");
    row("comma", "a, b");
    row("semicolon", "a;b");
    row("equals sign", "a=b==");
    row("brackets", "[nats]");
    row("at sign", "@Invalid()");
    row("two at signs", "@@x");
    row("percent", "%20%u0041");
    row("hash", "#1");
    row("other letters", "студия 1 演播室");
    row("beyond the first plane", "\xF0\x9F\x8E\xAC clip");
    row("hex digits behind a special letter", "é0af");
}

void PlayoutSettingsFileTest::valuesComeBackAsTheyWere()
{
    QFETCH(QString, value);
    write("tick=2\n[nats]\ngroup=a\n");
    const Options before = read();
    Options after = before;
    after.node = value;
    QCOMPARE(saveSettings(before, after), QString());
    const Options again = read();
    QCOMPARE(again.node, value);
    QCOMPARE(again.tick.count(), 2);
    QCOMPARE(again.nats.group, QStringLiteral("a"));
}

void PlayoutSettingsFileTest::onlyTheChangedLineChanges_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    const auto row = [](const char *name, const char *before, const char *after) {
        QTest::newRow(name) << QString::fromUtf8(before) << QString::fromUtf8(after);
    };
    row("empty", "", "node=b\n");
    row("the line is there", "; ours\nnode = a\ntick=2\n", "; ours\nnode=b\ntick=2\n");
    row("another line is there", "tick=2\n", "tick=2\nnode=b\n");
    row("no line feed at the end", "tick=2", "tick=2\nnode=b\n");
    row("a group follows", "tick=2\n\n[nats]\nnode=x\n", "tick=2\nnode=b\n\n[nats]\nnode=x\n");
    row("a group only", "[nats]\ngroup=x\n", "node=b\n[nats]\ngroup=x\n");
    row("general group", "[nats]\ngroup=x\n[General]\ntick=2\n", "[nats]\ngroup=x\n[General]\ntick=2\nnode=b\n");
    row("twice", "node=a\ntick=2\nnode=c\n", "node=b\ntick=2\n");
    row("commented out", ";node=a\n", ";node=a\nnode=b\n");
}

void PlayoutSettingsFileTest::onlyTheChangedLineChanges()
{
    QFETCH(QString, before);
    IniText text(before);
    text.set(QStringLiteral("node"), QStringLiteral("b"));
    QTEST(text.text(), "after");
}

void PlayoutSettingsFileTest::theHostReadsWhatWasSaved()
{
    write("; the studio's own\nservice=http://old:1\n");
    const Options before = read();
    Options after = before;
    after.service = QStringLiteral("https://new.example/base");
    after.token = QStringLiteral("p\"4;ss");
    after.userId = QStringLiteral("u");
    after.timeout = std::chrono::seconds(90);
    after.tick = std::chrono::seconds(3);
    after.language = QStringLiteral("rus");
    after.mediaFolder = folder->path();
    QCOMPARE(saveSettings(before, after), QString());
    QCOMPARE(settingValues(read()), settingValues(after));
    QVERIFY(content().startsWith("; the studio's own\nservice=https://new.example/base\n"));
}

void PlayoutSettingsFileTest::presetsLeaveTheFile()
{
    write("service=http://old:1\ntoken=t\nlanguage=rus\n");
    const Options before = read();
    Options after = before;
    after.service = QStringLiteral("http://127.0.0.1:8080");
    after.token.clear();
    QCOMPARE(saveSettings(before, after), QString());
    QCOMPARE(content(), QByteArray("language=rus\n"));
}

void PlayoutSettingsFileTest::anEmptyMediaFolderIsNoPreset()
{
    const Options before = read();
    QVERIFY(!before.mediaFolder.isEmpty());
    Options after = before;
    after.mediaFolder = QString();
    QCOMPARE(saveSettings(before, after), QString());
    QCOMPARE(content(), QByteArray("media=\"\"\n"));
    QCOMPARE(read().mediaFolder, QString());
}

void PlayoutSettingsFileTest::nothingChangedWritesNothing()
{
    const Options options = read();
    QCOMPARE(saveSettings(options, options), QString());
    QVERIFY(!QFile::exists(path));
}

void PlayoutSettingsFileTest::onlyTheOwnerCanReadTheFile_data()
{
    QTest::addColumn<bool>("isThere");
    QTest::newRow("new") << false;
    QTest::newRow("open to all before") << true;
}

void PlayoutSettingsFileTest::onlyTheOwnerCanReadTheFile()
{
    QFETCH(bool, isThere);
    if (isThere) {
        write("tick=2\n");
        QVERIFY(QFile::setPermissions(path, QFile::Permissions(0x6644)));
    }
    const Options before = read();
    Options after = before;
    after.token = QStringLiteral("secret");
    QCOMPARE(saveSettings(before, after), QString());
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther
        | QFile::WriteOther | QFile::ExeOther | QFile::ExeOwner;
    QVERIFY(QFile::permissions(path).testFlag(QFile::ReadOwner));
    QVERIFY(QFile::permissions(path).testFlag(QFile::WriteOwner));
    QCOMPARE(int(QFile::permissions(path) & others), 0);
}

void PlayoutSettingsFileTest::theFoldersAreMade()
{
    path = folder->filePath(QStringLiteral("a/b/playout.ini"));
    const Options before = read();
    Options after = before;
    after.node = QStringLiteral("n");
    QCOMPARE(saveSettings(before, after), QString());
    QCOMPARE(read().node, QStringLiteral("n"));
}

void PlayoutSettingsFileTest::aFileThatCannotBeWrittenIsTold()
{
    const Options before = read();
    Options after = before;
    after.node = QStringLiteral("n");
    after.settingsFile = QStringLiteral("/proc/playout.ini");
    const QString problem = saveSettings(before, after);
    QVERIFY2(problem.startsWith(QStringLiteral("/proc/playout.ini cannot be written: ")), qPrintable(problem));
    QVERIFY(problem.endsWith(QLatin1Char('.')));
}

// The value goes on in the next line.
void PlayoutSettingsFileTest::whatAnEditorMustChangeIsLeftAlone_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::newRow("value of two lines") << QByteArray("node=\"a\n b\"\n");
    QTest::newRow("quotation mark that stays open") << QByteArray("user-id=\"a\n");
    QTest::newRow("comment that is no UTF-8") << QByteArray("; caf\xe9\nuser-id=u\n");
}

void PlayoutSettingsFileTest::whatAnEditorMustChangeIsLeftAlone()
{
    QFETCH(QByteArray, before);
    write(before);
    Options old;
    old.settingsFile = path;
    old.timeout = old.tick = std::chrono::seconds(1);
    Options changed = old;
    changed.node = QStringLiteral("n");
    const QString problem = saveSettings(old, changed);
    QVERIFY2(problem.contains(QStringLiteral("only an editor can change")), qPrintable(problem));
    QCOMPARE(content(), before);
}

void PlayoutSettingsFileTest::nothingBehindANulIsLost()
{
    write(QByteArray("; a\0b\nnode=a\ntick=2\n", 20));
    const Options before = read();
    Options after = before;
    after.node = QStringLiteral("n");
    QCOMPARE(saveSettings(before, after), QString());
    QCOMPARE(content(), QByteArray("; a\0b\nnode=n\ntick=2\n", 20));
}

QTEST_GUILESS_MAIN(PlayoutSettingsFileTest)
#include "tst_playoutsettingsfile.moc"
