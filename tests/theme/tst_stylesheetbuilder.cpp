#include "support/logcatcher.h"
#include "theme/stylesheetbuilder.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <optional>
#include <string>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

namespace {

const std::string defaultTheme = ":/aiassistant/theme/default_aiassistant.theme";

// The declarations of the rule that has exactly this selector list.
QString ruleOf(const QString &sheet, const QString &selectors)
{
    static const QRegularExpression rule(QStringLiteral("([^{}]*)\\{([^{}]*)\\}"));
    static const QRegularExpression comment(QStringLiteral("/\\*.*?\\*/"));
    const QString bare = QString(sheet).remove(comment);
    for (auto matches = rule.globalMatch(bare); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        if (match.captured(1).simplified().split(QStringLiteral(", ")).contains(selectors))
            return match.captured(2).simplified();
    }
    return QString();
}

} // namespace

class TestStyleSheetBuilder : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_log.emplace(); }
    void cleanup();

    void themeIsNamedAndFree();
    void everyCallMakesANewTheme();
    void noPlaceholderIsLeft();
    void allThreeSheetsAreJoined();
    void checkedModeButtonsAreOrange_data();
    void checkedModeButtonsAreOrange();
    void missingFileGivesASheetWithoutPlaceholdersSilently_data();
    void missingFileGivesASheetWithoutPlaceholdersSilently();
    void keyThatTheThemeLacksLeavesTheRestAlone();
    void pathIsLatin1();
    void sheetMayBeMadeTwice();

private:
    std::optional<LogCatcher> m_log;
};

void TestStyleSheetBuilder::cleanup()
{
    const QStringList complaints = m_log->complaints();
    m_log.reset();
    QCOMPARE(complaints, QStringList());
}

void TestStyleSheetBuilder::themeIsNamedAndFree()
{
    const std::unique_ptr<Theme> theme = readTheme(defaultTheme);
    QCOMPARE(theme->objectName(), QStringLiteral("plumo.global.theme"));
    QCOMPARE(theme->parent(), nullptr);
    QCOMPARE(theme->metaObject()->className(), "tavro::aiassistant::Theme");
    QCOMPARE(theme->themeName(), QStringLiteral("Default"));
}

void TestStyleSheetBuilder::everyCallMakesANewTheme()
{
    const std::unique_ptr<Theme> one = readTheme(defaultTheme);
    const std::unique_ptr<Theme> two = readTheme(defaultTheme);
    QVERIFY(one != two);
    QCOMPARE(finishedStyleSheet(*one), finishedStyleSheet(*two));
}

void TestStyleSheetBuilder::noPlaceholderIsLeft()
{
    const QString sheet = finishedStyleSheet(*readTheme(defaultTheme));
    QVERIFY(sheet.size() > 2000);
    QVERIFY(!sheet.contains(QStringLiteral("aiassistant.theme.")));
    QVERIFY(!sheet.contains(QStringLiteral("url()")));
}

void TestStyleSheetBuilder::allThreeSheetsAreJoined()
{
    const QString sheet = finishedStyleSheet(*readTheme(defaultTheme));
    QCOMPARE(sheet.count(QStringLiteral("'Microsoft YaHei'")), 3);
    const int answer = sheet.indexOf(QStringLiteral("QWidget#rightWidget"));
    const int ask = sheet.indexOf(QStringLiteral("QWidget#askArea"));
    const int viewer = sheet.indexOf(QStringLiteral("QWidget#pictureViewer"));
    QVERIFY(0 < answer && answer < ask && ask < viewer);
}

void TestStyleSheetBuilder::checkedModeButtonsAreOrange_data()
{
    QTest::addColumn<QString>("selector");
    for (const char *name : {"askAndAnwser", "generateImage", "onlineSearch", "modelBtn"}) {
        for (const char *state : {":checked", ":checked:disabled"}) {
            const QString selector = QStringLiteral("QPushButton#%1%2").arg(QLatin1String(name), QLatin1String(state));
            QTest::newRow(qPrintable(selector)) << selector;
        }
    }
}

void TestStyleSheetBuilder::checkedModeButtonsAreOrange()
{
    QFETCH(QString, selector);
    const QString rule = ruleOf(finishedStyleSheet(*readTheme(defaultTheme)), selector);
    QCOMPARE(rule, QStringLiteral("border: 1px solid #FF6D00; color: #FF6D00;"));
}

void TestStyleSheetBuilder::missingFileGivesASheetWithoutPlaceholdersSilently_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("absent") << QByteArray("/nowhere/at/all.theme");
    QTest::newRow("a folder") << QDir::tempPath().toLatin1();
    QTest::newRow("absent resource") << QByteArray(":/aiassistant/theme/other.theme");
    QTest::newRow("empty") << QByteArray();
}

void TestStyleSheetBuilder::missingFileGivesASheetWithoutPlaceholdersSilently()
{
    QFETCH(QByteArray, path);
    const std::unique_ptr<Theme> theme = readTheme(path.toStdString());
    QVERIFY(theme);
    QVERIFY(theme->isEmpty());
    const QString sheet = finishedStyleSheet(*theme);
    QVERIFY(!sheet.contains(QStringLiteral("aiassistant.theme.")));
    QCOMPARE(ruleOf(sheet, QStringLiteral("QPushButton#modelBtn:checked")),
             QStringLiteral("border: 1px solid transparent; color: transparent;"));
    QCOMPARE(m_log->texts(), QStringList());
}

void TestStyleSheetBuilder::keyThatTheThemeLacksLeavesTheRestAlone()
{
    QTemporaryDir folder;
    QFile source(QString::fromStdString(defaultTheme));
    QVERIFY(source.open(QIODevice::ReadOnly));
    QFile file(folder.filePath(QStringLiteral("without.theme")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(source.readAll().replace("Button_Text_Normal=", "Button_Text_Other=").replace("\nclose=", "\nshut="));
    file.close();

    const ExpectedLog warnings(*m_log, QStringLiteral("lacks"), 2);
    const QString sheet = finishedStyleSheet(*readTheme(file.fileName().toStdString()));
    QCOMPARE(warnings.seen(), 2);
    QCOMPARE(m_log->count(QStringLiteral("lacks colour Button_Text_Normal")), 1);
    QCOMPARE(m_log->count(QStringLiteral("lacks image close")), 1);

    const QString images = folder.filePath(QStringLiteral("aiassistanttheme/images/"));
    QString expected = finishedStyleSheet(*readTheme(defaultTheme));
    expected.replace(QStringLiteral("#B6B6B6"), QStringLiteral("transparent"));
    expected.replace(QStringLiteral(":/aiassistant/theme/aiassistanttheme/images/"), images);
    expected.replace(QStringLiteral("url(%1close.png)").arg(images), QStringLiteral("url()"));
    QCOMPARE(sheet, expected);
}

void TestStyleSheetBuilder::pathIsLatin1()
{
    QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("thème.theme"));
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[General]\nThemeName=Found\n");
    file.close();
    QCOMPARE(readTheme(name.toLatin1().toStdString())->themeName(), QStringLiteral("Found"));
    QCOMPARE(readTheme(name.toStdString())->themeName(), QString());
}

void TestStyleSheetBuilder::sheetMayBeMadeTwice()
{
    const std::unique_ptr<Theme> theme = readTheme(defaultTheme);
    QCOMPARE(finishedStyleSheet(*theme), finishedStyleSheet(*theme));
}

QTEST_GUILESS_MAIN(TestStyleSheetBuilder)
#include "tst_stylesheetbuilder.moc"
