#include "heldbrowser.h"
#include "widgets/harmlesstext.h"

#include <QTest>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

/// Texts of an answer that are to look like something else.
class TestHarmlessText : public QuietTest {
    Q_OBJECT

private Q_SLOTS:
    void marksAndControls_data();
    void marksAndControls();
    void shownAtOnce();
    void typed();
};

void TestHarmlessText::marksAndControls_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("line breaks and tabs")
        << QStringLiteral("a\tb\nc\r\nd\u2028e") << QStringLiteral("a\tb\nc\r\nd\u2028e");
    QTest::newRow("override") << QStringLiteral("play \u202egnp.exe\u202c!") << QStringLiteral("play gnp.exe!");
    QTest::newRow("embeddings") << QStringLiteral("\u202aa\u202bb\u202dc") << QStringLiteral("abc");
    QTest::newRow("isolates") << QStringLiteral("\u2066a\u2067b\u2068c\u2069d") << QStringLiteral("abcd");
    QTest::newRow("controls") << QStringLiteral("a\bb\u001b[2K\u007f\u009b")
                              << QStringLiteral("a\ufffdb\ufffd[2K\ufffd\ufffd");
    QTest::newRow("NUL") << QString(QChar(QChar::Null)) << QString(QChar(QChar::ReplacementCharacter));
    QTest::newRow("Hebrew with a mark") << QStringLiteral("\u05e9\u05dc\u05d5\u05dd\u200f!")
                                        << QStringLiteral("\u05e9\u05dc\u05d5\u05dd\u200f!");
    QTest::newRow("Persian, not joined") << QStringLiteral("\u0645\u06cc\u200c\u0631\u0648\u0645")
                                         << QStringLiteral("\u0645\u06cc\u200c\u0631\u0648\u0645");
    QTest::newRow("family, joined") << QStringLiteral("\U0001F468\u200d\U0001F469")
                                    << QStringLiteral("\U0001F468\u200d\U0001F469");
}

void TestHarmlessText::marksAndControls()
{
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QCOMPARE(harmlessText(text), shown);
}

void TestHarmlessText::shownAtOnce()
{
    AutoResizeTextBrowser browser;
    browser.showText(QStringLiteral("play \u202egnp\u001b"));
    QCOMPARE(browser.toPlainText(), QStringLiteral("play gnp\ufffd"));
}

void TestHarmlessText::typed()
{
    AutoResizeTextBrowser browser;
    browser.typeText(QStringLiteral("\u202ea\u2066b"));
    holdTimers(browser);
    for (int tick = 0; tick < 3; ++tick)
        typeOne(browser);
    QCOMPARE(browser.toPlainText(), QStringLiteral("ab"));
    QVERIFY(!AutoResizeTextBrowserAccess::of(browser).cursorTimer.isActive());
}

QTEST_MAIN(TestHarmlessText)

#include "tst_harmlesstext.moc"
