#include "page.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

/// docs/theming.md beside the theme and the sheets of the panel.
class ThemingDocumentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void sectionsAreThoseOfTheTheme();
    void colorsAreThoseOfTheSheets();
    void imagesAreThoseOfTheSheets();
    void selectorsAreThoseOfTheSheet_data();
    void selectorsAreThoseOfTheSheet();
    void keysForHostsAreInTheTheme();
    void iconFilesAreThere();

private:
    QStringList firstColumn(const char *heading) const;

    QString document;
    QString theme;
    QString sheets;
};

namespace {

const char *const sheetNames[] = {"askwidget.qss", "answerwidget.qss", "pictureviewerwidget.qss"};

QString sheet(const QString &name)
{
    return page::contents(QStringLiteral("zvaiassistant/resources/theme/stylesheet/") + name);
}

} // namespace

void ThemingDocumentTest::initTestCase()
{
    document = page::contents(QStringLiteral("docs/theming.md"));
    theme = page::contents(QStringLiteral("zvaiassistant/resources/theme/default_aiassistant.theme"));
    for (const char *const name : sheetNames)
        sheets += sheet(QLatin1String(name));
    QVERIFY(!document.isEmpty() && !theme.isEmpty() && !sheets.isEmpty());
}

QStringList ThemingDocumentTest::firstColumn(const char *heading) const
{
    QStringList code;
    const auto rows = page::table(document, QLatin1String(heading));
    for (const QStringList &row : rows)
        code += page::codeIn(row.first());
    code.sort();
    return code;
}

void ThemingDocumentTest::sectionsAreThoseOfTheTheme()
{
    const QStringList sections = page::found(theme, QStringLiteral("(?m)^(\\[\\w+\\])$"));
    QCOMPARE(firstColumn("Section"), sections);
}

void ThemingDocumentTest::colorsAreThoseOfTheSheets()
{
    QCOMPARE(firstColumn("`[Colors]`"), page::found(sheets, QStringLiteral("aiassistant\\.theme\\.color\\.(\\w+)")));
}

// "copy_*" in the page stands for all states of the button.
void ThemingDocumentTest::imagesAreThoseOfTheSheets()
{
    QStringList images = page::found(sheets, QStringLiteral("aiassistant\\.theme\\.image\\.(\\w+)"));
    const QStringList patterns = firstColumn("`[ImageFiles]`");
    for (const QString &pattern : patterns) {
        const int before = images.size();
        const QRegularExpression whole(QRegularExpression::wildcardToRegularExpression(pattern));
        for (const QString &image : images.filter(whole))
            images.removeOne(image);
        QVERIFY2(images.size() < before, qPrintable(QStringLiteral("no sheet names %1").arg(pattern)));
    }
    QCOMPARE(images, QStringList());
}

void ThemingDocumentTest::selectorsAreThoseOfTheSheet_data()
{
    QTest::addColumn<QString>("name");
    for (const char *const name : sheetNames)
        QTest::newRow(name) << QString::fromLatin1(name);
}

void ThemingDocumentTest::selectorsAreThoseOfTheSheet()
{
    QFETCH(QString, name);
    QString documented;
    const auto rows = page::table(document, QStringLiteral("Sheet"));
    for (const QStringList &row : rows) {
        if (page::codeIn(row.first()).contains(name))
            documented = row.value(1);
    }
    const QStringList objects = page::found(documented, QStringLiteral("`#(\\w+)`"));
    // A colour has a blank before its number sign, a selector its class.
    QCOMPARE(objects, page::found(sheet(name), QStringLiteral("[A-Za-z]#(\\w+)")));
    const QStringList types = page::found(documented, QStringLiteral("type=\\w+"));
    QCOMPARE(types, page::found(sheet(name), QStringLiteral("type=\\w+")));
}

void ThemingDocumentTest::keysForHostsAreInTheTheme()
{
    const QString sentence = page::found(document, QStringLiteral("The keys [^;]*are for hosts")).join(QString());
    const QStringList keys = page::codeIn(sentence);
    QVERIFY(keys.size() > 4);
    for (const QString &key : keys) {
        if (!key.startsWith(QLatin1Char('.')))
            QVERIFY2(theme.contains(QLatin1Char('\n') + key + QLatin1Char('=')), qPrintable(key));
    }
}

void ThemingDocumentTest::iconFilesAreThere()
{
    const QStringList documented = page::found(document, QStringLiteral("`(\\w+\\.png)`"));
    const QString used = page::contents(QStringLiteral("zvaiassistant/widgets/askwidget_layout.cpp"));
    QCOMPARE(documented, page::found(used, QStringLiteral("/(\\w+\\.png)")));
    for (const QString &name : documented)
        QVERIFY2(
            QFile::exists(page::path(QStringLiteral("zvaiassistant/resources/theme/aiassistanttheme/images/") + name)),
            qPrintable(name));
}

QTEST_GUILESS_MAIN(ThemingDocumentTest)
#include "tst_themingdocument.moc"
