#include "support/logcatcher.h"
#include "ztheme/ztheme.h"

#include <QColor>
#include <QtTest>

#include <cmath>
#include <optional>

using namespace tavro::testsupport;

namespace {

double linear(double channel)
{
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor over(const QColor &upper, const QColor &lower)
{
    const auto mix = [&](int a, int b) { return static_cast<int>(std::lround(b + (a - b) * upper.alphaF())); };
    return QColor(mix(upper.red(), lower.red()), mix(upper.green(), lower.green()), mix(upper.blue(), lower.blue()));
}

double contrast(const QColor &text, const QColor &background)
{
    const double one = luminance(over(text, background)) + 0.05;
    const double two = luminance(background) + 0.05;
    return std::max(one, two) / std::min(one, two);
}

} // namespace

class TestReadableText : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void textIsReadable_data();
    void textIsReadable();

private:
    std::optional<LogCatcher> m_log;
    std::optional<ZT::Theme> m_theme;
};

void TestReadableText::init()
{
    m_log.emplace();
    m_theme.emplace(QStringLiteral("t"));
    QVERIFY(
        ZT::changeTheme(&*m_theme, QStringLiteral("aiassistant"), QStringLiteral("default"), QStringLiteral("theme")));
}

void TestReadableText::cleanup()
{
    const QStringList complaints = m_log->complaints();
    m_log.reset();
    QCOMPARE(complaints, QStringList());
}

void TestReadableText::textIsReadable_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("background");
    const auto row = [](const char *text, const char *background) {
        QTest::newRow(qPrintable(QStringLiteral("%1 on %2").arg(QLatin1String(text), QLatin1String(background))))
            << QString::fromLatin1(text) << QString::fromLatin1(background);
    };
    for (const char *button : {"GeneralButtonBackgroundNormal", "GeneralButtonBackgroundHover",
                               "GeneralButtonBackgroundPressed", "BackgroundColor_5", "BackgroundColor_6",
                               "BackgroundColor_7", "AskArea_Background", "MenuHighlightBackgroundColor"})
        row("white", button);
    for (const char *background : {"#2B2B2B", "AskArea_Background", "BackgroundColor_1"})
        row("Button_Text_Hover", background);
    for (const char *background :
         {"BackgroundColor_1", "BackgroundColor_2", "BackgroundColor_3", "ToolTipBackgroundColor",
          "MenuBackgroundColor", "EditBackgroundColor", "AssistButtonBackgroundHover"})
        row("DefaultForegroundColor", background);
    row("Button_Text_Normal", "BackgroundColor_3");
    row("ErrorHintForegroundColor", "BackgroundColor_5");
    row("HighlightedForegroundColor", "MenuHighlightBackgroundColor");
    row("Color_W70", "AskArea_Background");
    row("black", "Button_Text_Hover");
    row("white", "#161616");
}

void TestReadableText::textIsReadable()
{
    QFETCH(QString, text);
    QFETCH(QString, background);
    const auto color = [this](const QString &name) {
        const QString value = m_theme->color(name);
        return QColor(value.isNull() ? name : value);
    };
    QVERIFY(color(text).isValid() && color(background).isValid());
    const double ratio = contrast(color(text), color(background));
    QVERIFY2(ratio >= 4.5, qPrintable(QString::number(ratio)));
}

QTEST_GUILESS_MAIN(TestReadableText)
#include "tst_readabletext.moc"
