#include "themefolder.h"

#include <QSettings>
#include <QtTest>

class TestZTheme : public ThemeFolderTest {
    Q_OBJECT

private Q_SLOTS:
    void objectIsNamedAndParented();
    void colorsAreResolvedThroughPalettes_data();
    void colorsAreResolvedThroughPalettes();
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
