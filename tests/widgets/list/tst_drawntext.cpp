// What is drawn beside the size that it is given, where the font has no letters of its own for the text.

#include "heldbrowser.h"

#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QPainter>
#include <QTextBlock>
#include <QTextLayout>
#include <QtTest>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

class TestDrawnText : public QuietTest {
    Q_OBJECT

private Q_SLOTS:
    void rowsAreAsHighAsTheRuleHasThem_data();
    void rowsAreAsHighAsTheRuleHasThem();
    void everyRowIsWrittenIn();
    void rowThatIsFullIsNotWrapped_data();
    void rowThatIsFullIsNotWrapped();
};

namespace {

const QString latin = QStringLiteral("The clip plays");
const QString chinese = QString::fromUtf8("片段正在播放");
const QString korean = QString::fromUtf8("클립을 재생합니다");

QFont latinFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(14);
    return font;
}

void show(AutoResizeTextBrowser &browser, const QString &text)
{
    browser.setFont(latinFont());
    browser.showText(text);
    QCoreApplication::processEvents();
}

void addScripts()
{
    QTest::addColumn<QString>("words");
    QTest::newRow("latin") << latin;
    QTest::newRow("chinese") << chinese;
    QTest::newRow("korean") << korean;
    QTest::newRow("mixed") << latin + chinese + korean;
}

// The lowest and the highest place of any colour but white.
QPair<int, int> inkIn(const QImage &image, int top, int bottom)
{
    QPair<int, int> ink(-1, -1);
    for (int y = top; y < bottom; ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == QColor(Qt::white))
                continue;
            ink = {ink.first < 0 ? y : ink.first, y};
        }
    }
    return ink;
}

} // namespace

void TestDrawnText::rowsAreAsHighAsTheRuleHasThem_data()
{
    addScripts();
}

void TestDrawnText::rowsAreAsHighAsTheRuleHasThem()
{
    QFETCH(QString, words);
    const int row = QFontMetrics(latinFont()).lineSpacing();
    QStringList lines;
    for (int count = 1; count <= 40; ++count) {
        lines << words;
        AutoResizeTextBrowser browser;
        show(browser, lines.join(QLatin1Char('\n')));
        QCOMPARE(browser.height(), count * row);
        const qreal drawn = browser.document()->documentLayout()->documentSize().height();
        QVERIFY2(drawn <= count * row && drawn > count * row - 1, qPrintable(QString::number(drawn)));
    }
}

void TestDrawnText::everyRowIsWrittenIn()
{
    AutoResizeTextBrowser browser;
    show(browser, QStringList({chinese, korean, chinese, latin}).join(QLatin1Char('\n')));
    QImage image(browser.size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    browser.document()->drawContents(&painter);
    painter.end();
    const int row = browser.height() / 4;
    for (int number = 0; number < 4; ++number) {
        const auto [top, bottom] = inkIn(image, number * row, (number + 1) * row);
        QVERIFY2(bottom - top > row / 2, qPrintable(QStringLiteral("row %1").arg(number)));
    }
}

void TestDrawnText::rowThatIsFullIsNotWrapped_data()
{
    addScripts();
}

// The line grows by a narrow letter at a time, over the edge of the row.
void TestDrawnText::rowThatIsFullIsNotWrapped()
{
    QFETCH(QString, words);
    const int row = QFontMetrics(latinFont()).lineSpacing();
    const QString line = words.repeated(100).remove(QLatin1Char(' '));
    int fullest = 0;
    bool isOver = false;
    for (int count = 1; count < line.size() && !isOver; ++count) {
        AutoResizeTextBrowser browser;
        show(browser, line.left(count) + QStringLiteral("il"));
        isOver = browser.height() > row;
        const QTextLayout &drawn = *browser.document()->firstBlock().layout();
        if (isOver)
            continue;
        QCOMPARE(drawn.lineCount(), 1);
        QVERIFY2(drawn.lineAt(0).naturalTextWidth() <= browser.width(), qPrintable(QString::number(count)));
        fullest = browser.width();
    }
    QVERIFY(isOver);
    QVERIFY2(fullest > 670, qPrintable(QString::number(fullest)));
}

QTEST_MAIN(TestDrawnText)
#include "tst_drawntext.moc"
