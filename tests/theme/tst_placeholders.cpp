#include "themefolder.h"

#include <QSettings>
#include <QtTest>

using namespace tavro::testsupport;

class TestPlaceholders : public ThemeFolderTest {
    Q_OBJECT

private Q_SLOTS:
    void placeholdersAreReplacedAsWholeWords_data();
    void placeholdersAreReplacedAsWholeWords();
    void pathWithSpecialCharactersIsQuoted_data();
    void pathWithSpecialCharactersIsQuoted();
    void missingKeysAreLoggedOnceForEachReading();
    void emptyThemeIsReplacedSilently();
    void nullThemeCountsAsEmpty();
};

void TestPlaceholders::placeholdersAreReplacedAsWholeWords_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::addColumn<QString>("expected"); // "@" stands for the folder of the theme file
    const auto row = [](const char *name, const char *sheet, const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(sheet) << QString::fromLatin1(expected);
    };
    row("nothing to do", "a { color: red; }", "a { color: red; }");
    row("empty", "", "");
    row("colour", "a{color: m.theme.color.Direct;}", "a{color: #FF6D00;}");
    row("at both ends", "m.theme.color.Direct", "#FF6D00");
    row("neighbours", "m.theme.color.Direct m.theme.color.Named", "#FF6D00 white");
    row("shorter key", "m.theme.color.Color_Brand_1;", "#111111;");
    row("longer key", "m.theme.color.Color_Brand_10;", "#101010;");
    row("both keys", "m.theme.color.Color_Brand_10,m.theme.color.Color_Brand_1", "#101010,#111111");
    row("image", "url(m.theme.image.close)", "url(@/images/close.png)");
    row("longer image key", "url(m.theme.image.closeHover)", "url(@/images/hover.png)");
    row("image in quotes", "url(\"m.theme.image.close\")", "url(\"@/images/close.png\")");
    row("another prefix", "other.theme.color.Direct", "other.theme.color.Direct");
    row("prefix within a word", "am.theme.color.Direct", "am.theme.color.Direct");
    row("another kind", "m.theme.sound.Direct", "m.theme.sound.Direct");
    row("nothing behind the prefix", "m.theme.", "m.theme.");
}

void TestPlaceholders::placeholdersAreReplacedAsWholeWords()
{
    QFETCH(QString, sheet);
    QFETCH(QString, expected);
    ZT::Theme theme(QStringLiteral("t"));
    read(theme, smallTheme);
    ZT::replaceStyleSheet(&theme, QStringLiteral("m"), sheet);
    QCOMPARE(sheet, expected.replace(QLatin1Char('@'), path()));
}

void TestPlaceholders::pathWithSpecialCharactersIsQuoted_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("brackets") << QStringLiteral("Program Files (x86)");
    QTest::newRow("hash") << QStringLiteral("a#b");
    QTest::newRow("semicolon") << QStringLiteral("a;b");
    QTest::newRow("curly brackets") << QStringLiteral("{a}");
    QTest::newRow("less than") << QStringLiteral("a<<b");
    QTest::newRow("apostrophe") << QStringLiteral("o'clock");
}

void TestPlaceholders::pathWithSpecialCharactersIsQuoted()
{
    QFETCH(QString, folder);
    const QString file = folder + QStringLiteral("/a.theme");
    write(file, "[ImageFiles]\nclose=close.png\n");
    QSettings settings(path(file), QSettings::IniFormat);
    ZT::Theme theme(QStringLiteral("t"));
    theme.readSettings(settings);
    QString sheet = QStringLiteral("url(m.theme.image.close)");
    ZT::replaceStyleSheet(&theme, QStringLiteral("m"), sheet);
    QCOMPARE(sheet, QStringLiteral("url(\"%1/%2/close.png\")").arg(path(), folder));
}

void TestPlaceholders::missingKeysAreLoggedOnceForEachReading()
{
    const QString sheet = QStringLiteral("a{color:m.theme.color.Gone;image:url(m.theme.image.gone);}"
                                         "b{color:m.theme.color.Gone;color:m.theme.color.Unknown;}");
    const QString expected = QStringLiteral("a{color:transparent;image:url();}b{color:transparent;color:transparent;}");
    ZT::Theme theme(QStringLiteral("t"));
    for (int reading = 1; reading <= 2; ++reading) {
        const ExpectedLog lacks(log(), QStringLiteral("lacks"), 3);
        read(theme, smallTheme);
        for (int time = 0; time < 2; ++time) {
            QString text = sheet;
            ZT::replaceStyleSheet(&theme, QStringLiteral("m"), text);
            QCOMPARE(text, expected);
        }
        QCOMPARE(lacks.seen(), 3);
        QCOMPARE(log().count(QStringLiteral("theme Small lacks colour Gone")), reading);
        QCOMPARE(log().count(QStringLiteral("theme Small lacks colour Unknown")), reading);
        QCOMPARE(log().count(QStringLiteral("theme Small lacks image gone")), reading);
    }
}

void TestPlaceholders::emptyThemeIsReplacedSilently()
{
    ZT::Theme theme(QStringLiteral("t"));
    QString sheet = QStringLiteral("a{color:m.theme.color.Direct;image:url(m.theme.image.close);}");
    ZT::replaceStyleSheet(&theme, QStringLiteral("m"), sheet);
    QCOMPARE(sheet, QStringLiteral("a{color:transparent;image:url();}"));
    QVERIFY(log().lines().isEmpty());
}

void TestPlaceholders::nullThemeCountsAsEmpty()
{
    QString sheet = QStringLiteral("a{color:m.theme.color.Direct;}");
    ZT::replaceStyleSheet(nullptr, QStringLiteral("m"), sheet);
    QCOMPARE(sheet, QStringLiteral("a{color:transparent;}"));
}

QTEST_GUILESS_MAIN(TestPlaceholders)
#include "tst_placeholders.moc"
