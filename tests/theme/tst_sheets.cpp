#include "themevocabulary.h"

#include <QDir>
#include <QRegularExpression>
#include <QtTest>

using namespace themevocabulary;

class TestSheets : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sheetsBeginWithTheSameUniversalRule_data() { addSheets(); }
    void sheetsBeginWithTheSameUniversalRule();
    void placeholdersAreKeysOfTheTheme_data() { addSheets(); }
    void placeholdersAreKeysOfTheTheme();
    void bracesAreBalanced_data() { addSheets(); }
    void bracesAreBalanced();

private:
    static void addSheets();
};

void TestSheets::sheetsBeginWithTheSameUniversalRule()
{
    QFETCH(QString, sheet);
    const QString rule = QStringLiteral("* { font-family: 'Microsoft YaHei', 'Source Han Sans', 'Alibaba PuHuiTi'; "
                                        "font-weight: 400; font-size: 14px; outline:0px; } ");
    QVERIFY(sheet.simplified().startsWith(rule));
}

void TestSheets::placeholdersAreKeysOfTheTheme()
{
    QFETCH(QString, sheet);
    const auto sections = rawSections();
    const QRegularExpression placeholder(QStringLiteral("aiassistant\\.theme\\.(\\w+)\\.(\\w+)"));
    int found = 0;
    for (auto matches = placeholder.globalMatch(sheet); matches.hasNext(); ++found) {
        const QRegularExpressionMatch match = matches.next();
        const bool isColor = match.captured(1) == QLatin1String("color");
        QVERIFY(isColor || match.captured(1) == QLatin1String("image"));
        const auto keys = sections[isColor ? QStringLiteral("Colors") : QStringLiteral("ImageFiles")];
        QVERIFY2(keys.contains(match.captured(2)), qPrintable(match.captured()));
    }
    QCOMPARE(sheet.count(QStringLiteral("aiassistant.theme")), found);
    QVERIFY(found > 0);
}

void TestSheets::bracesAreBalanced()
{
    QFETCH(QString, sheet);
    int depth = 0;
    for (const QChar c : qAsConst(sheet)) {
        depth += c == QLatin1Char('{') ? 1 : c == QLatin1Char('}') ? -1 : 0;
        QVERIFY(depth == 0 || depth == 1);
    }
    QCOMPARE(depth, 0);
}

void TestSheets::addSheets()
{
    QTest::addColumn<QString>("sheet");
    const QStringList names = QDir(QStringLiteral(":/aiassistant/theme/stylesheet")).entryList();
    QCOMPARE(names, words("answerwidget.qss askwidget.qss pictureviewerwidget.qss"));
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << contents(QStringLiteral(":/aiassistant/theme/stylesheet/") + name);
}

QTEST_GUILESS_MAIN(TestSheets)
#include "tst_sheets.moc"
