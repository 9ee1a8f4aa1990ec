#include "themefolder.h"

#include <QDir>
#include <QtTest>

using namespace tavro::testsupport;

class TestThemeFinding : public ThemeFolderTest {
    Q_OBJECT

private Q_SLOTS:
    void sheetsAreJoinedInListOrder();
    void unreadableSheetIsLeftOut();
    void themeIsChangedFromAResource();
    void themeIsChangedFromAFolder();
    void unknownThemeChangesNothing_data();
    void unknownThemeChangesNothing();
    void applicationSheetsAreFound();
    void moduleSheetsStandInForTheApplications();
    void noSheetsAtAllGiveNull();
};

void TestThemeFinding::sheetsAreJoinedInListOrder()
{
    write(QStringLiteral("a.qss"),
          "\xEF\xBB\xBF"
          "a{font-family:'思源'}");
    write(QStringLiteral("b.qss"), "b{}\n");
    QString sheet = QStringLiteral("gone");
    QVERIFY(ZT::readStyleSheet({path(QStringLiteral("b.qss")), path(QStringLiteral("a.qss"))}, sheet));
    QCOMPARE(sheet, QStringLiteral("b{}\n\na{font-family:'思源'}\n"));
    QVERIFY(ZT::readStyleSheet({}, sheet));
    QCOMPARE(sheet, QString());
}

void TestThemeFinding::unreadableSheetIsLeftOut()
{
    write(QStringLiteral("a.qss"), "a{}");
    const ExpectedLog warning(log(), path(QStringLiteral("none.qss")));
    QString sheet;
    QVERIFY(!ZT::readStyleSheet({path(QStringLiteral("none.qss")), path(QStringLiteral("a.qss"))}, sheet));
    QCOMPARE(sheet, QStringLiteral("a{}\n"));
}

void TestThemeFinding::themeIsChangedFromAResource()
{
    ZT::Theme theme(QStringLiteral("t"));
    QVERIFY(ZT::changeTheme(&theme, QStringLiteral("testmodule"), QStringLiteral("dark"), QStringLiteral("theme")));
    QCOMPARE(theme.themeName(), QStringLiteral("Dark"));
    QCOMPARE(theme.color(QStringLiteral("Text")), QStringLiteral("#ABCDEF"));
    QCOMPARE(theme.image(QStringLiteral("close")), QStringLiteral(":/testmodule/theme/images/close.png"));
}

void TestThemeFinding::themeIsChangedFromAFolder()
{
    write(QStringLiteral("skins/light.theme"), "[General]\nThemeName=亮\n[ImageFiles]\nclose=./图.png\n");
    ZT::Theme theme(QStringLiteral("t"));
    QVERIFY(ZT::changeTheme(&theme, path(), QStringLiteral("light"), QStringLiteral("skins")));
    QCOMPARE(theme.themeName(), QStringLiteral("亮"));
    QCOMPARE(theme.image(QStringLiteral("close")), path(QStringLiteral("skins/图.png")));
}

void TestThemeFinding::unknownThemeChangesNothing_data()
{
    QTest::addColumn<QString>("module");
    QTest::addColumn<QString>("name");
    QTest::newRow("module") << "nomodule"
                            << "dark";
    QTest::newRow("name") << "testmodule"
                          << "light";
    QTest::newRow("empty module") << ""
                                  << "dark";
    QTest::newRow("folder without it") << QDir::tempPath() << "absent";
}

void TestThemeFinding::unknownThemeChangesNothing()
{
    QFETCH(QString, module);
    QFETCH(QString, name);
    const ExpectedLog warning(log(), QStringLiteral("cannot change to theme"), 2);
    ZT::Theme theme(QStringLiteral("t"));
    read(theme, smallTheme);
    QVERIFY(!ZT::changeTheme(&theme, module, name, QStringLiteral("theme")));
    QCOMPARE(theme.themeName(), QStringLiteral("Small"));
    QVERIFY(!ZT::changeTheme(nullptr, module, name, QStringLiteral("theme")));
}

void TestThemeFinding::applicationSheetsAreFound()
{
    ZT::Theme theme(QStringLiteral("t"));
    QVERIFY(ZT::changeTheme(&theme, QStringLiteral("testmodule"), QStringLiteral("dark"), QStringLiteral("theme")));
    const QString sheet = ZT::findStyleSheet(&theme, QStringLiteral(":/appsheets"), QStringLiteral("testmodule"));
    QCOMPARE(sheet.simplified(),
             QStringLiteral("a { color: #ABCDEF; } b { image: url(:/testmodule/theme/images/close.png); }"));
}

void TestThemeFinding::moduleSheetsStandInForTheApplications()
{
    ZT::Theme theme(QStringLiteral("t"));
    QVERIFY(ZT::changeTheme(&theme, QStringLiteral("testmodule"), QStringLiteral("dark"), QStringLiteral("theme")));
    const QString sheet = ZT::findStyleSheet(&theme, QStringLiteral(":/sheets"), QStringLiteral("testmodule"));
    QCOMPARE(sheet.simplified(), QStringLiteral("module { color: #ABCDEF; }"));
}

void TestThemeFinding::noSheetsAtAllGiveNull()
{
    ZT::Theme theme(QStringLiteral("t"));
    QVERIFY(ZT::findStyleSheet(&theme, QStringLiteral(":/nosheets"), QStringLiteral("testmodule")).isNull());
}

QTEST_GUILESS_MAIN(TestThemeFinding)
#include "tst_themefinding.moc"
