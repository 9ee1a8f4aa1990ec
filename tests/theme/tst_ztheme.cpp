#include "themefolder.h"

#include <QSettings>
#include <QtTest>

class TestZTheme : public ThemeFolderTest {
    Q_OBJECT

private Q_SLOTS:
    void objectIsNamedAndParented();
    void colorsAreResolvedThroughPalettes_data();
    void colorsAreResolvedThroughPalettes();
    void valuesThatLeaveTheirPlaceCannotBeUsed_data();
    void valuesThatLeaveTheirPlaceCannotBeUsed();
    void colorFunctionsMayHoldOthers();
    void pathsThatLeaveTheirPlaceCannotBeUsed();
    void largeFilesAreNotRead();
    void imagesAreAbsoluteFromTheFolderOfTheFile_data();
    void imagesAreAbsoluteFromTheFolderOfTheFile();
    void numbersAndFlagsAreRead();
    void keysAreListed();
    void readingReplacesAllValues();
    void missingFileLeavesTheThemeEmptyAndSilent();
};

void TestZTheme::objectIsNamedAndParented()
{
    QObject parent;
    const auto *theme = new ZT::Theme(QStringLiteral("a name"), &parent);
    QCOMPARE(theme->objectName(), QStringLiteral("a name"));
    QCOMPARE(theme->parent(), &parent);
    QVERIFY(theme->isEmpty());
}

void TestZTheme::colorsAreResolvedThroughPalettes_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("color");
    const auto row = [](const char *key, const QString &color) {
        QTest::newRow(key) << QString::fromLatin1(key) << color;
    };
    row("Color_Brand_1", QStringLiteral("#111111"));
    row("Color_Brand_10", QStringLiteral("#101010"));
    row("Padded", QStringLiteral("#E6FFFFFF"));
    row("Color_B50", QStringLiteral("#80000000"));
    row("Direct", QStringLiteral("#FF6D00"));
    row("Named", QStringLiteral("white"));
    row("Faded", QStringLiteral("rgba(1, 2, 3, 0.5)"));
    row("Function", QStringLiteral("rgba(43, 43, 43, 1)"));
    row("Unknown", QString());
    row("Empty", QString());
    row("NoHex", QString());
    row("BreaksOut", QString());
    row("direct", QString());
    row("Brand_1", QString());
}

void TestZTheme::colorsAreResolvedThroughPalettes()
{
    QFETCH(QString, key);
    QFETCH(QString, color);
    ZT::Theme theme(QStringLiteral("t"));
    read(theme, smallTheme);
    QCOMPARE(theme.color(key), color);
    QCOMPARE(theme.color(key).isNull(), color.isNull());
}

// Qt would drop the rest of the sheet, or take it for the theme's.
void TestZTheme::valuesThatLeaveTheirPlaceCannotBeUsed_data()
{
    QTest::addColumn<QByteArray>("color");
    const auto row = [](const char *name, const char *color) { QTest::newRow(name) << QByteArray(color); };
    row("rule behind a letter outside Latin-1", "\"red\u4E2D}QWidget{color:blue\"");
    row("rule behind a byte that is no letter", "\"red\xFF}QWidget{color:blue\"");
    row("open bracket", "f(()");
    row("open comment", "f(/*)");
    row("open text", "\"f(\\\"a)\"");
    row("number without digits", "f(#)");
    row("backslash", "\"f(\\\\)\"");
    row("something behind", "f(a)b");
}

void TestZTheme::valuesThatLeaveTheirPlaceCannotBeUsed()
{
    QFETCH(QByteArray, color);
    ZT::Theme theme(QStringLiteral("t"));
    read(theme, "[Colors]\na=" + color + "\nb=white\n");
    QCOMPARE(theme.color(QStringLiteral("a")), QString());
    QCOMPARE(theme.color(QStringLiteral("b")), QStringLiteral("white"));
}

void TestZTheme::colorFunctionsMayHoldOthers()
{
    const QString gradient = QStringLiteral("qlineargradient(x1:0, y1:0.5, stop:0 #FFF, stop:1 rgba(1, 2, 3, 50%))");
    ZT::Theme theme(QStringLiteral("t"));
    read(theme, "[Colors]\na=\"" + gradient.toUtf8() + "\"\n");
    QCOMPARE(theme.color(QStringLiteral("a")), gradient);
}

void TestZTheme::pathsThatLeaveTheirPlaceCannotBeUsed()
{
    ZT::Theme theme(QStringLiteral("t"));
    read(theme, "[ImageFiles]\na=\"x\\\".png\"\nb=\"x\\n.png\"\nc=\"\\x1.png\"\nd=x.png\n");
    QCOMPARE(theme.image(QStringLiteral("a")), QString());
    QCOMPARE(theme.image(QStringLiteral("b")), QString());
    QCOMPARE(theme.image(QStringLiteral("c")), QString());
    QCOMPARE(theme.image(QStringLiteral("d")), path(QStringLiteral("x.png")));
}

// Nested deeper than the stack goes: read, this one would end the program.
void TestZTheme::largeFilesAreNotRead()
{
    const QByteArray level("\0\0\0\x09\0\0\0\x01", 8);
    ZT::Theme theme(QStringLiteral("t"));
    read(theme, "[Colors]\na=white\nb=\"@Variant(" + level.repeated(200000) + ")\"\n");
    QVERIFY(theme.isEmpty());
}

void TestZTheme::imagesAreAbsoluteFromTheFolderOfTheFile_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("below"); // the folder of the theme file; null: the path as it stands
    QTest::addColumn<QString>("image");
    QTest::newRow("dotted") << "close"
                            << "images/close.png" << QString();
    QTest::newRow("cleaned") << "closeHover"
                             << "images/hover.png" << QString();
    QTest::newRow("not in ASCII") << "chinese" << QStringLiteral("图/a.png") << QString();
    QTest::newRow("absolute") << "absolute" << QString() << "/somewhere/a.png";
    QTest::newRow("resource") << "resource" << QString() << ":/some/a.png";
    QTest::newRow("empty") << "empty" << QString() << QString();
    QTest::newRow("unknown") << "other" << QString() << QString();
}

void TestZTheme::imagesAreAbsoluteFromTheFolderOfTheFile()
{
    QFETCH(QString, key);
    QFETCH(QString, below);
    QFETCH(QString, image);
    ZT::Theme theme(QStringLiteral("t"));
    read(theme, smallTheme);
    QCOMPARE(theme.image(key), below.isNull() ? image : path(below));
}

void TestZTheme::numbersAndFlagsAreRead()
{
    ZT::Theme theme(QStringLiteral("t"));
    read(theme, smallTheme);
    QCOMPARE(theme.themeName(), QStringLiteral("Small"));
    QCOMPARE(theme.integer(QStringLiteral("FontSize_XS")), 8);
    QCOMPARE(theme.integer(QStringLiteral("None"), 7), 7);
    QCOMPARE(theme.integer(QStringLiteral("Other")), 0);
    QVERIFY(theme.flag(QStringLiteral("On")));
    QVERIFY(theme.flag(QStringLiteral("One")));
    QVERIFY(!theme.flag(QStringLiteral("Off")));
    QVERIFY(!theme.flag(QStringLiteral("Other")));
}

void TestZTheme::keysAreListed()
{
    ZT::Theme theme(QStringLiteral("t"));
    read(theme, "[Colors]\nb=white\nA=nothing\n[ImageFiles]\ny=1.png\nx=\n");
    QCOMPARE(theme.colorKeys(), (QStringList{QStringLiteral("A"), QStringLiteral("b")}));
    QCOMPARE(theme.imageKeys(), (QStringList{QStringLiteral("x"), QStringLiteral("y")}));
}

void TestZTheme::readingReplacesAllValues()
{
    ZT::Theme theme(QStringLiteral("t"));
    read(theme, smallTheme);
    read(theme, "[Colors]\nOther=black\n");
    QCOMPARE(theme.colorKeys(), QStringList{QStringLiteral("Other")});
    QCOMPARE(theme.themeName(), QString());
    QCOMPARE(theme.imageKeys(), QStringList());
    QCOMPARE(theme.integer(QStringLiteral("FontSize_XS")), 0);
}

void TestZTheme::missingFileLeavesTheThemeEmptyAndSilent()
{
    ZT::Theme theme(QStringLiteral("t"));
    read(theme, smallTheme);
    QVERIFY(!theme.isEmpty());
    QSettings settings(path(QStringLiteral("absent.theme")), QSettings::IniFormat);
    theme.readSettings(settings);
    QVERIFY(theme.isEmpty());
    QVERIFY(log().lines().isEmpty());
}

QTEST_GUILESS_MAIN(TestZTheme)
#include "tst_ztheme.moc"
