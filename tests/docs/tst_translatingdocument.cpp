#include "page.h"

#include <QMap>
#include <QRegularExpression>
#include <QTest>

/// docs/translating.md beside the English file.
class TranslatingDocumentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyKeyIsInTheTable();
    void textsAreTheEnglishOnes();

private:
    QMap<QString, QString> english;
    QVector<QStringList> rows;
    QString document;
};

namespace {

// "`Style1` to `Style10`" stands for ten.
QStringList keysIn(const QString &cell)
{
    QStringList keys = page::codeIn(cell);
    const QRegularExpressionMatch range =
        QRegularExpression(QStringLiteral("`([A-Za-z]+)(\\d+)` to `\\1(\\d+)`")).match(cell);
    for (int number = range.captured(2).toInt() + 1; number < range.captured(3).toInt(); ++number)
        keys += range.captured(1) + QString::number(number);
    return keys;
}

} // namespace

void TranslatingDocumentTest::initTestCase()
{
    document = page::contents(QStringLiteral("docs/translating.md"));
    rows = page::table(document, QStringLiteral("Key"));
    const QString file = page::contents(QStringLiteral("zvaiassistant/resources/language/aiassistant_en.xml"));
    const QRegularExpression message(QStringLiteral("<source>([^<]*)</source>\\s*<translation>([^<]*)</translation>"));
    for (auto matches = message.globalMatch(file); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        english.insert(match.captured(1), match.captured(2));
    }
    QVERIFY(!rows.isEmpty() && !english.isEmpty());
}

void TranslatingDocumentTest::everyKeyIsInTheTable()
{
    QStringList keys;
    for (const QStringList &row : qAsConst(rows))
        keys += keysIn(row.first());
    keys.sort();
    QCOMPARE(keys, QStringList(english.keys()));
    QVERIFY(document.contains(QStringLiteral("and %1 keys").arg(keys.size())));
}

void TranslatingDocumentTest::textsAreTheEnglishOnes()
{
    int compared = 0;
    for (const QStringList &row : qAsConst(rows)) {
        if (row.value(1).startsWith(QLatin1String("the ")))
            continue;
        QStringList texts;
        const QStringList keys = keysIn(row.first());
        for (const QString &key : keys)
            texts += english.value(key);
        QCOMPARE(row.value(1), texts.join(QStringLiteral(", ")));
        compared += keys.size();
    }
    QCOMPARE(compared, 17);
}

QTEST_GUILESS_MAIN(TranslatingDocumentTest)
#include "tst_translatingdocument.moc"
