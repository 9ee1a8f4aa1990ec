#include "script/scriptparser.h"

#include <QTest>

using namespace tavro::playout;

class PlayoutScriptParserTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsEveryStep();
    void commentsAndEmptyLinesCount();
    void refuses_data();
    void refuses();
    void tellsAllWrongLines();
};

void PlayoutScriptParserTest::readsEveryStep()
{
    const Script script = parseScript(QStringLiteral("type  a b  \n"
                                                     "press Ctrl+Shift+A\n"
                                                     "click send\n"
                                                     "wait 2.5 visible send\n"
                                                     "wait 1 hidden a\n"
                                                     "wait 1 enabled a\n"
                                                     "wait 1 disabled a\n"
                                                     "wait 1 text label some words\n"
                                                     "size 1600 900\n"
                                                     "screenshot a b.png\n"
                                                     "wait 1 focused a\n"
                                                     "tell label\n"
                                                     "quit\r\n"));
    QCOMPARE(script.errors, QStringList());
    QCOMPARE(script.steps.size(), std::size_t(13));
    QCOMPARE(script.steps[0].text, QStringLiteral("a b"));
    QCOMPARE(script.steps[1].key, int(Qt::CTRL) + int(Qt::SHIFT) + int(Qt::Key_A));
    QCOMPARE(script.steps[2].widget, QStringLiteral("send"));
    QCOMPARE(script.steps[3].limit.count(), std::chrono::milliseconds::rep(2500));
    QVERIFY(script.steps[4].condition == ScriptStep::Condition::Hidden);
    QVERIFY(script.steps[5].condition == ScriptStep::Condition::Enabled);
    QVERIFY(script.steps[6].condition == ScriptStep::Condition::Disabled);
    QCOMPARE(script.steps[7].widget, QStringLiteral("label"));
    QCOMPARE(script.steps[7].text, QStringLiteral("some words"));
    QCOMPARE(script.steps[8].size, QSize(1600, 900));
    QCOMPARE(script.steps[9].text, QStringLiteral("a b.png"));
    QVERIFY(script.steps[10].condition == ScriptStep::Condition::Focused);
    QVERIFY(script.steps[11].kind == ScriptStep::Kind::Tell);
    QCOMPARE(script.steps[11].widget, QStringLiteral("label"));
    QVERIFY(script.steps[12].kind == ScriptStep::Kind::Quit);
}

void PlayoutScriptParserTest::commentsAndEmptyLinesCount()
{
    const Script script = parseScript(QStringLiteral("# a comment\n\n  # another\nquit\n"));
    QCOMPARE(script.steps.size(), std::size_t(1));
    QCOMPARE(script.steps[0].line, 4);
}

void PlayoutScriptParserTest::refuses_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("why");
    const auto row = [](const char *line, const char *why) {
        QTest::newRow(line) << QString::fromUtf8(line) << QStringLiteral("line 1: ") + QString::fromUtf8(why);
    };
    row("dance", "unknown step \"dance\"");
    row("Type a", "unknown step \"Type\"");
    row("type", "there is nothing to type");
    row("press", "not a key: \"\"");
    row("press Nonsense", "not a key: \"Nonsense\"");
    row("press A, B", "not a key: \"A, B\"");
    row("click", "the control's name is missing");
    row("hover", "the control's name is missing");
    row("click a b", "too much: \"b\"");
    row("wait", "wait takes a number of seconds up to 3600, not \"\"");
    row("wait visible a", "wait takes a number of seconds up to 3600, not \"visible\"");
    row("wait -1 visible a", "wait takes a number of seconds up to 3600, not \"-1\"");
    row("wait nan visible a", "wait takes a number of seconds up to 3600, not \"nan\"");
    row("wait 9999 visible a", "wait takes a number of seconds up to 3600, not \"9999\"");
    row("wait 1 green a", "wait knows visible, hidden, enabled, disabled, focused and text, not \"green\"");
    row("wait 1 visible", "the control's name is missing");
    row("wait 1 text a", "wait for text takes the control's name and the text");
    row("size 100", "size takes width and height, from 1 to 16384");
    row("size 0 5", "size takes width and height, from 1 to 16384");
    row("size 5 5 5", "size takes width and height, from 1 to 16384");
    row("tell", "the control's name is missing");
    row("screenshot", "the file's name is missing");
    row("quit now", "too much: \"now\"");
}

void PlayoutScriptParserTest::refuses()
{
    QFETCH(QString, line);
    QFETCH(QString, why);
    QCOMPARE(parseScript(line).errors, QStringList(why));
}

void PlayoutScriptParserTest::tellsAllWrongLines()
{
    QCOMPARE(parseScript(QStringLiteral("type\nquit\n\ndance\n")).errors,
             QStringList({QStringLiteral("line 1: there is nothing to type"),
                          QStringLiteral("line 4: unknown step \"dance\"")}));
}

QTEST_GUILESS_MAIN(PlayoutScriptParserTest)
#include "tst_playoutscriptparser.moc"
