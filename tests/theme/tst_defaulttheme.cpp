#include "support/logcatcher.h"
#include "themevocabulary.h"
#include "ztheme/ztheme.h"

#include <QColor>
#include <QRegularExpression>
#include <QtTest>

#include <optional>

using namespace tavro::testsupport;
using namespace themevocabulary;

class TestDefaultTheme : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void sectionsHoldTheirKeys_data();
    void sectionsHoldTheirKeys();
    void fixedValuesAreAsWritten_data();
    void fixedValuesAreAsWritten();
    void paletteEntriesAreHexadecimalColors();
    void everyColorResolves();
    void exportedNamesNameTheirPaletteEntries();
    void everyImageIsAFileBesideTheTheme();
    void fontSizesAreReadable();
    void commentsAreInChinese();

private:
    std::optional<LogCatcher> m_log;
    std::optional<ZT::Theme> m_theme;
};

void TestDefaultTheme::init()
{
    m_log.emplace();
    m_theme.emplace(QStringLiteral("t"));
    QVERIFY(
        ZT::changeTheme(&*m_theme, QStringLiteral("aiassistant"), QStringLiteral("default"), QStringLiteral("theme")));
}

void TestDefaultTheme::cleanup()
{
    const QStringList complaints = m_log->complaints();
    m_log.reset();
    QCOMPARE(complaints, QStringList());
}

void TestDefaultTheme::sectionsHoldTheirKeys_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<QStringList>("keys");
    QTest::newRow("General") << "General" << words("ThemeName");
    QTest::newRow("Palettes") << "Palettes" << paletteKeys();
    QTest::newRow("Colors") << "Colors" << colorKeys();
    QTest::newRow("Flags") << "Flags" << QStringList();
    QTest::newRow("Integers") << "Integers"
                              << words("FontSize_XS FontSize_S FontSize_M FontSize_L FontSize_XL FontSize_XXL");
    QTest::newRow("ImageFiles") << "ImageFiles" << imageKeys();
}

void TestDefaultTheme::sectionsHoldTheirKeys()
{
    QFETCH(QString, section);
    QFETCH(QStringList, keys);
    const auto sections = rawSections();
    QCOMPARE(sections.size(), 6);
    QVERIFY(sections.contains(section));
    QCOMPARE(QStringList(sections[section].keys()), sorted(keys));
}

void TestDefaultTheme::fixedValuesAreAsWritten_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    const auto row = [](const char *section, const char *key, const char *value) {
        QTest::newRow(key) << QString::fromLatin1(section) << QString::fromLatin1(key) << QString::fromLatin1(value);
    };
    row("General", "ThemeName", "Default");
    row("Palettes", "Brand_6", "#458CEE");
    row("Palettes", "Bg_1", "#151517");
    row("Palettes", "W80", "#CDFFFFFF");
    row("Palettes", "W90", "#E6FFFFFF ");
    row("Palettes", "Red_6", "#DB5847 ");
    row("Palettes", "B50_", "#80000000");
    row("Colors", "DefaultForegroundColor", "W80");
    row("Colors", "BackgroundColor_1", "Bg_1");
    row("Colors", "GeneralButtonBackgroundNormal", "Brand_7");
    row("Colors", "SliderAcrossBackgroundColor", "Bg_6 ");
    row("Colors", "Button_Text_Normal", "#B6B6B6");
    row("Colors", "Button_Text_Hover", "#FF6D00");
    row("Colors", "Button_Text_Pressed", "#DB4712");
    row("Colors", "AskArea_Background", "#181818");
    row("Integers", "FontSize_XS", "8");
    row("Integers", "FontSize_S", "10");
    row("Integers", "FontSize_M", "12");
    row("Integers", "FontSize_L", "14");
    row("Integers", "FontSize_XL", "16");
    row("Integers", "FontSize_XXL", "20");
    row("ImageFiles", "answerChecked", "./aiassistanttheme/images/answer_checked.png");
    row("ImageFiles", "downloadBig", "./aiassistanttheme/images/download_bigger.png");
    row("ImageFiles", "last", "./aiassistanttheme/images/lastPicture.png");
    row("ImageFiles", "loading", "./aiassistanttheme/images/loading.gif");
}

void TestDefaultTheme::fixedValuesAreAsWritten()
{
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QCOMPARE(rawSections()[section][key], value);
}

void TestDefaultTheme::paletteEntriesAreHexadecimalColors()
{
    const QRegularExpression color(QStringLiteral("^#([0-9A-F]{6}|[0-9A-F]{8}) ?$"));
    const auto palette = rawSections()[QStringLiteral("Palettes")];
    for (auto entry = palette.begin(); entry != palette.end(); ++entry)
        QVERIFY2(color.match(entry.value()).hasMatch(), qPrintable(entry.key()));
}

void TestDefaultTheme::everyColorResolves()
{
    QCOMPARE(m_theme->colorKeys(), sorted(colorKeys()));
    const QStringList keys = m_theme->colorKeys();
    for (const QString &key : keys)
        QVERIFY2(QColor(m_theme->color(key)).isValid(), qPrintable(key));
}

void TestDefaultTheme::exportedNamesNameTheirPaletteEntries()
{
    const auto palette = rawSections()[QStringLiteral("Palettes")];
    const QStringList keys = paletteKeys();
    for (const QString &key : keys)
        QCOMPARE(m_theme->color(exportedName(key)), palette[key].trimmed());
}

void TestDefaultTheme::everyImageIsAFileBesideTheTheme()
{
    const QRegularExpression file(
        QStringLiteral("^:/aiassistant/theme/aiassistanttheme/images/[A-Za-z_]+\\.(png|gif)$"));
    QCOMPARE(m_theme->imageKeys(), sorted(imageKeys()));
    const QStringList keys = m_theme->imageKeys();
    QStringList paths;
    for (const QString &key : keys) {
        paths << m_theme->image(key);
        QVERIFY2(file.match(paths.last()).hasMatch(), qPrintable(paths.last()));
    }
    QCOMPARE(paths.removeDuplicates(), 0);
}

void TestDefaultTheme::fontSizesAreReadable()
{
    QCOMPARE(m_theme->integer(QStringLiteral("FontSize_XS")), 8);
    QCOMPARE(m_theme->integer(QStringLiteral("FontSize_XXL")), 20);
}

void TestDefaultTheme::commentsAreInChinese()
{
    const QRegularExpression han(QStringLiteral("\\p{Han}"));
    const QStringList comments = contents(QStringLiteral(":/aiassistant/theme/default_aiassistant.theme"))
                                     .split(QLatin1Char('\n'))
                                     .filter(QRegularExpression(QStringLiteral("^;")));
    QVERIFY(!comments.isEmpty());
    for (const QString &comment : comments)
        QVERIFY2(han.match(comment).hasMatch(), qPrintable(comment));
}

QTEST_GUILESS_MAIN(TestDefaultTheme)
#include "tst_defaulttheme.moc"
