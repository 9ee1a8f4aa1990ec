// The shown text and its size beside the rule that both must follow, at every character.

#include "corpus.h"
#include "heldbrowser.h"
#include "literalrule.h"
#include "widgets/harmlesstext.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QtTest>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

namespace {

QFont pixelFont(const QString &family, int pixels)
{
    QFont font(family);
    font.setPixelSize(pixels);
    return font;
}

QString plain(const QString &text)
{
    QTextDocument document;
    document.setPlainText(text);
    return document.toPlainText();
}

// Whether the browser shows @p count characters as the rule has it.
void compare(const AutoResizeTextBrowser &browser, const QString &text, int count, bool cursor)
{
    const qreal drawnHeight = browser.document()->documentLayout()->documentSize().height();
    const QString expected = plain(literalShown(harmlessText(text), count, cursor));
    QCOMPARE(browser.toPlainText(), expected);
    QCOMPARE(browser.size(), literalSize(browser.font(), expected));
    QVERIFY2(drawnHeight <= browser.height(),
             qPrintable(QStringLiteral("%1 px are drawn in %2").arg(drawnHeight).arg(browser.height())));
}

} // namespace

class TestSizeRule : public QuietTest {
    Q_OBJECT

private Q_SLOTS:
    void everyTickIsAsTheRuleHasIt_data();
    void everyTickIsAsTheRuleHasIt();
    void textAtOnceIsAsTheRuleHasIt_data() { everyTickIsAsTheRuleHasIt_data(); }
    void textAtOnceIsAsTheRuleHasIt();
    void thousandLinesAreAsTheRuleHasThem();
    void widthsAtTheEdgeOfARow_data();
    void widthsAtTheEdgeOfARow();
    void fewerCharactersAreAsIfTypedSoFar();
    void sizeFollowsTheFont();
    void nothingDrawnIsCut_data() { everyTickIsAsTheRuleHasIt_data(); }
    void nothingDrawnIsCut();
};

void TestSizeRule::everyTickIsAsTheRuleHasIt_data()
{
    QTest::addColumn<QFont>("font");
    QTest::addColumn<QString>("text");
    const QFont latin = pixelFont(QStringLiteral("DejaVu Sans"), 14);
    const QFont chinese = pixelFont(QStringLiteral("Noto Sans CJK SC"), 14);
    for (const CorpusText &row : corpus()) {
        QTest::addRow("latin-%s", row.name) << latin << row.text;
        QTest::addRow("chinese-%s", row.name) << chinese << row.text;
    }
    QTest::addRow("points-english") << QFont(QStringLiteral("DejaVu Sans"), 10) << englishAnswer();
}

void TestSizeRule::everyTickIsAsTheRuleHasIt()
{
    QFETCH(QFont, font);
    QFETCH(QString, text);
    AutoResizeTextBrowser browser;
    browser.setFont(font);
    holdTimers(browser);
    browser.typeText(text);
    bool cursor = true;
    for (int count = 1; count <= text.size(); ++count) {
        typeOne(browser);
        compare(browser, text, count, cursor);
        if (QTest::currentTestFailed())
            return qWarning("at character %d", count);
        if (count % 7 == 3) {
            blink(browser);
            cursor = !cursor;
            compare(browser, text, count, cursor);
            if (QTest::currentTestFailed())
                return qWarning("blinking at character %d", count);
        }
    }
    typeOne(browser);
    compare(browser, text, text.size(), false);
}

void TestSizeRule::textAtOnceIsAsTheRuleHasIt()
{
    QFETCH(QFont, font);
    QFETCH(QString, text);
    AutoResizeTextBrowser browser;
    browser.setFont(font);
    holdTimers(browser);
    browser.showText(text);
    QCoreApplication::processEvents();
    compare(browser, text, text.size(), false);
}

// Compared at every 499th character only: the rule takes the whole text anew each time.
void TestSizeRule::thousandLinesAreAsTheRuleHasThem()
{
    const QString text = thousandLines();
    AutoResizeTextBrowser browser;
    browser.setFont(pixelFont(QStringLiteral("DejaVu Sans"), 14));
    holdTimers(browser);
    browser.typeText(text);
    for (int count = 1; count <= text.size(); ++count) {
        QVERIFY(QMetaObject::invokeMethod(&browser, "slotTypeTimeout"));
        if (count % 499 != 0)
            continue;
        QCoreApplication::processEvents();
        compare(browser, text, count, true);
        if (QTest::currentTestFailed())
            return qWarning("at character %d", count);
    }
}

void TestSizeRule::widthsAtTheEdgeOfARow_data()
{
    QTest::addColumn<int>("letters");
    QTest::addColumn<int>("rows");
    // Each letter is an eighth of the row less its margins.
    QTest::newRow("one letter short") << 7 << 1;
    QTest::newRow("exactly a row") << 8 << 1;
    QTest::newRow("one letter more") << 9 << 2;
    QTest::newRow("exactly two rows less the margins") << 16 << 2;
}

// Letters as wide as one likes make a line of 690 px sharp: 682 of its own and 8 of the margins.
void TestSizeRule::widthsAtTheEdgeOfARow()
{
    QFETCH(int, letters);
    QFETCH(int, rows);
    QFont font = pixelFont(QStringLiteral("Noto Sans Mono CJK SC"), 77);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 85.25 - QFontMetricsF(font).horizontalAdvance(u'港'));
    TypedText text;
    text.setFont(font);
    text.setText(QString(letters, u'港'));
    text.showFirst(letters);
    QCOMPARE(QFontMetricsF(font).horizontalAdvance(QString(letters, u'港')), letters * 85.25);
    QCOMPARE(text.size().height(), rows * text.rowHeight());
    QCOMPARE(text.size(), literalSize(font, QString(letters, u'港')));
}

void TestSizeRule::fewerCharactersAreAsIfTypedSoFar()
{
    const QFont font = pixelFont(QStringLiteral("DejaVu Sans"), 14);
    TypedText text;
    text.setFont(font);
    text.setText(englishAnswer());
    for (const int count : {englishAnswer().size(), 30, 10}) {
        text.showFirst(count);
        QCOMPARE(text.shown(), englishAnswer().left(count));
        QCOMPARE(text.size(), literalSize(font, englishAnswer().left(count)));
    }
}

void TestSizeRule::sizeFollowsTheFont()
{
    AutoResizeTextBrowser browser;
    browser.setFont(pixelFont(QStringLiteral("DejaVu Sans"), 14));
    browser.showText(englishAnswer());
    QCoreApplication::processEvents();
    const QSize before = browser.size();
    browser.setFont(pixelFont(QStringLiteral("DejaVu Sans"), 20));
    compare(browser, englishAnswer(), englishAnswer().size(), false);
    QVERIFY(browser.height() > before.height());
}

// Drawn with room on all sides, nothing lies outside the size.
void TestSizeRule::nothingDrawnIsCut()
{
    QFETCH(QFont, font);
    QFETCH(QString, text);
    AutoResizeTextBrowser browser;
    browser.setFont(font);
    browser.showText(text);
    QCoreApplication::processEvents();
    constexpr int room = 30;
    QImage image(browser.size() + QSize(2 * room, 2 * room), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(room, room);
    browser.document()->drawContents(&painter);
    painter.fillRect(browser.rect(), Qt::white);
    painter.end();
    QRect outside;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != QColor(Qt::white))
                outside |= QRect(x - room, y - room, 1, 1);
        }
    }
    // The soft edge of a glyph may reach a pixel over its font's own ascent, descent or origin, here as in any label.
    const QRect edged = browser.rect().adjusted(-1, -1, 1, 1);
    QCOMPARE(outside | edged, edged);
}

QTEST_MAIN(TestSizeRule)
#include "tst_sizerule.moc"
