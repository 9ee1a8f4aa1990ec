#include "page.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

/// What all pages have in common, and the log lines that they quote.
class PagesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void linksLeadSomewhere_data();
    void linksLeadSomewhere();
    void foldersAndScriptsAreThere();
    void everyLogCategoryIsInTheReadme();
    void quotedLogLinesAreInTheSources_data();
    void quotedLogLinesAreInTheSources();
};

namespace {

QStringList pages()
{
    QStringList names{QStringLiteral("README.md"), QStringLiteral("CONTRIBUTING.md"), QStringLiteral("CHANGELOG.md"),
                      QStringLiteral("playout/README.md"), QStringLiteral("runtime/README.md")};
    const QStringList found = QDir(page::path(QStringLiteral("docs"))).entryList({QStringLiteral("*.md")});
    for (const QString &name : found)
        names += QStringLiteral("docs/") + name;
    return names;
}

// As the usual hosts of such pages make it.
QString anchorOf(const QString &heading)
{
    QString anchor;
    for (const QChar letter : heading.toLower()) {
        if (letter.isLetterOrNumber() || letter == QLatin1Char('-') || letter == QLatin1Char('_'))
            anchor += letter;
        else if (letter == QLatin1Char(' '))
            anchor += QLatin1Char('-');
    }
    return anchor;
}

bool hasAnchor(const QString &text, const QString &anchor)
{
    const QStringList headings = page::found(text, QStringLiteral("(?m)^#+ (.*)$"));
    return std::any_of(headings.cbegin(), headings.cend(),
                       [&](const QString &heading) { return anchorOf(heading) == anchor; });
}

// The parts of a quoted line that do not differ from case to case.
QStringList fixedParts(const QString &line)
{
    QStringList parts;
    const QStringList pieces = line.split(QRegularExpression(QStringLiteral("\\.\\.\\.|\"[^\"]*\"|GenerateText")));
    for (const QString &piece : pieces) {
        if (piece.trimmed().size() > 3)
            parts += piece.trimmed();
    }
    return parts;
}

} // namespace

void PagesTest::linksLeadSomewhere_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : pages())
        QTest::newRow(qPrintable(name)) << name;
}

void PagesTest::linksLeadSomewhere()
{
    QFETCH(QString, name);
    const QString text = page::contents(name);
    QVERIFY(!text.isEmpty());
    const QStringList links = page::found(page::prose(text), QStringLiteral("\\]\\((?!http)([^)]+)\\)"));
    for (const QString &link : links) {
        const QString file = link.section(QLatin1Char('#'), 0, 0);
        const QString target = file.isEmpty() ? name : QDir::cleanPath(name + QStringLiteral("/../") + file);
        QVERIFY2(QFileInfo::exists(page::path(target)), qPrintable(link));
        if (link.contains(QLatin1Char('#')))
            QVERIFY2(hasAnchor(page::contents(target), link.section(QLatin1Char('#'), 1)), qPrintable(link));
    }
}

void PagesTest::foldersAndScriptsAreThere()
{
    int count = 0;
    for (const QString &name : pages()) {
        const QStringList named = page::found(
            page::contents(name),
            QStringLiteral("(?<![\\w/.])(?:\\./)?((?:scripts|examples|zvaiassistant|platform|cmake)/[\\w./-]+)"));
        for (const QString &path : named) {
            QVERIFY2(QFileInfo::exists(page::path(path)), qPrintable(name + QStringLiteral(": ") + path));
            ++count;
        }
    }
    QVERIFY(count > 20);
}

void PagesTest::everyLogCategoryIsInTheReadme()
{
    QStringList documented;
    const auto rows = page::table(page::contents(QStringLiteral("README.md")), QStringLiteral("Category"));
    for (const QStringList &row : rows) {
        documented += page::codeIn(row.first());
        QVERIFY(row.value(2).contains(row.first().mid(1, row.first().size() - 2)));
    }
    documented.sort();
    QCOMPARE(documented, page::found(page::sources(), QStringLiteral("Q_LOGGING_CATEGORY\\(\\w+, \"([^\"]+)\"")));
}

void PagesTest::quotedLogLinesAreInTheSources_data()
{
    QTest::addColumn<QString>("line");
    const QString text = page::contents(QStringLiteral("docs/troubleshooting.md"));
    // The first table of questions, of pictures and of machines; that of appearance quotes no lines.
    const QStringList chapters = text.split(QStringLiteral("\n## "));
    for (const QString &chapter : chapters) {
        const auto rows = page::table(chapter, QStringLiteral("Symptom"));
        for (const QStringList &row : rows) {
            if (row.size() < 4)
                continue;
            for (const QString &line : page::codeIn(row.value(1)))
                QTest::newRow(qPrintable(line)) << line;
        }
    }
}

void PagesTest::quotedLogLinesAreInTheSources()
{
    QFETCH(QString, line);
    static const QString sources = page::sources();
    const QStringList parts = fixedParts(line);
    QVERIFY(!parts.isEmpty());
    for (const QString &part : parts)
        QVERIFY2(sources.contains(part), qPrintable(part));
}

QTEST_GUILESS_MAIN(PagesTest)
#include "tst_pages.moc"
