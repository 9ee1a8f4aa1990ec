#include "optionreader.h"
#include "script/scriptparser.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace tavro::playout;

/// What --help prints: all that a newcomer needs, and nothing that is not so.
class PlayoutHelpTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void helpTellsEachOption_data();
    void helpTellsEachOption();
    void helpHasNoOtherOption();
    void examplesOfTheHelpWork();
    void scriptOfTheHelpWorks();

private:
    std::optional<Options> read(const QStringList &arguments);
    QString helpOn(const QString &option);

    QTemporaryDir folder;
    const QString config = folder.filePath(QStringLiteral("playout.ini"));
    QString text;
    bool wrong = false;
};

std::optional<Options> PlayoutHelpTest::read(const QStringList &arguments)
{
    OptionReader reader([](const QString &) { return std::nullopt; }, config);
    const auto options = reader.read(QStringList(QStringLiteral("playout")) + arguments);
    text = reader.text();
    wrong = reader.isWrong();
    return options;
}

QString PlayoutHelpTest::helpOn(const QString &option)
{
    read({QStringLiteral("--help")});
    const QStringList lines = text.split(QLatin1Char('\n'));
    QString found;
    for (const QString &line : lines) {
        const bool begins = line.startsWith(QStringLiteral("  ")) && line.at(2) == QLatin1Char('-');
        const bool isOurs = line.startsWith(QStringLiteral("  --%1 ").arg(option));
        if (isOurs || (!found.isEmpty() && !begins && line.startsWith(QStringLiteral("    "))))
            found += line + QLatin1Char(' ');
        else if (!found.isEmpty())
            break;
    }
    return found.simplified();
}

void PlayoutHelpTest::helpTellsEachOption_data()
{
    QTest::addColumn<QString>("preset");
    QTest::addColumn<QString>("places");
    const auto row = [](const char *name, const char *preset, const char *places) {
        QTest::newRow(name) << QString::fromUtf8(preset) << QString::fromUtf8(places);
    };
    row("service", "http://127.0.0.1:8080", "INI: service.");
    row("token", "none", "Environment: ASSISTANT_TOKEN. INI: token.");
    row("user-id", "none", "INI: user-id.");
    row("node", "none", "INI: node.");
    row("timeout", "60", "INI: timeout.");
    row("tick", "1", "INI: tick.");
    row("media", "the samples beside the program", "INI: media.");
    row("language", "en", "INI: language.");
    row("theme", "the assistant's own theme", "INI: theme.");
    row("role", "all", "INI: role.");
    row("nats-servers", "nats://127.0.0.1:4222", "INI: servers in [nats].");
    row("nats-prefix", "zvaiassistant", "INI: prefix in [nats].");
    row("nats-group", "default", "INI: group in [nats].");
    row("nats-machine", "the host's name", "INI: machine in [nats].");
    row("nats-tls", "no", "INI: tls in [nats].");
    row("nats-ca-file", "the system's", "INI: ca-file in [nats].");
    row("config", "%1", "");
    row("script", "none", "");
}

void PlayoutHelpTest::helpTellsEachOption()
{
    QFETCH(QString, preset);
    QFETCH(QString, places);
    const QString name = QString::fromUtf8(QTest::currentDataTag());
    // A long path may be wrapped anywhere.
    const QString help = helpOn(name).remove(QLatin1Char(' '));
    const QString wanted = (preset == QLatin1String("%1") ? QString(config) : preset).remove(QLatin1Char(' '));
    QVERIFY2(help.startsWith(QStringLiteral("--%1<").arg(name)), qPrintable(text));
    QVERIFY2(help.contains(QStringLiteral("(default:%1)").arg(wanted)), qPrintable(help));
    QVERIFY2(help.endsWith(places.remove(QLatin1Char(' '))) || places.isEmpty(), qPrintable(help));
}

// Where an option is added, the help and its test are to follow.
void PlayoutHelpTest::helpHasNoOtherOption()
{
    QVERIFY(!read({QStringLiteral("--help")}));
    QVERIFY(!wrong);
    const QStringList lines = text.split(QLatin1Char('\n'));
    QCOMPARE(lines.filter(QRegularExpression(QStringLiteral("^  --[a-z-]+ <"))).size(), 18);
    for (const char *name : {"ASSISTANT_NATS_USER", "ASSISTANT_NATS_PASSWORD", "ASSISTANT_NATS_TOKEN"})
        QVERIFY2(text.contains(QLatin1String(name)), name);
    QVERIFY(text.contains(QStringLiteral("INI: password in [nats].")));
    for (const QString &line : lines)
        QVERIFY2(line.size() <= 80, qPrintable(line));
}

// What a newcomer types from the help must be understood.
void PlayoutHelpTest::examplesOfTheHelpWork()
{
    read({QStringLiteral("--help")});
    const QStringList examples =
        text.split(QLatin1Char('\n')).filter(QRegularExpression(QStringLiteral("^ {10}playout --")));
    QCOMPARE(examples.size(), 4);
    QStringList roles;
    for (const QString &example : examples) {
        const auto options = read(example.simplified().split(QLatin1Char(' ')).mid(1));
        QVERIFY2(options, qPrintable(text));
        roles.append(nameOf(options->role));
    }
    QCOMPARE(roles,
             QStringList(
                 {QStringLiteral("all"), QStringLiteral("local"), QStringLiteral("server"), QStringLiteral("client")}));
}

void PlayoutHelpTest::scriptOfTheHelpWorks()
{
    read({QStringLiteral("--help")});
    const QString example =
        text.mid(text.indexOf(QStringLiteral("  type play"))).section(QStringLiteral("quit\n"), 0, 0);
    const Script script = parseScript(example + QStringLiteral("quit\n"));
    QCOMPARE(script.errors, QStringList());
    QCOMPARE(script.steps.size(), std::size_t{5});
}

QTEST_GUILESS_MAIN(PlayoutHelpTest)
#include "tst_playouthelp.moc"
