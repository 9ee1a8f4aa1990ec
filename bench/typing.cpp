// One tick of the typing animation, laid out and painted, beside the size rule carried out literally: the whole text
// set again, and a text edit for each of its lines.

#include "../tests/widgets/list/literalrule.h"
#include "widgets/autoresizetextbrowser_p.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>

namespace tavro::aiassistant {

namespace {

// The ticks measured run over this many characters, none of which ends a line.
constexpr int run = 36;

enum Shape { AsciiLines, ChineseLines, AsciiParagraph, ChineseParagraph };

QString textOf(int shape, int length)
{
    const bool ascii = shape == AsciiLines || shape == AsciiParagraph;
    const QString words = ascii ? QStringLiteral("The harbour clip plays on layer two at half its volume now. ")
                                : QStringLiteral("港口素材现在正在第二图层播放音量为一半其他图层保持不变");
    QString text = words.repeated(length / words.size() + 1);
    const int columns = shape == AsciiLines ? 80 : 40;
    if (shape == AsciiLines || shape == ChineseLines) {
        for (int end = columns; end < text.size(); end += columns + 1)
            text[end] = u'\n';
    }
    return text.left(length);
}

// Where that many characters near @p count lie within one line.
int startNear(const QString &text, int count)
{
    const int lineStart = text.lastIndexOf(u'\n', count) + 1;
    return text.indexOf(u'\n', lineStart) < 0 ? count : lineStart + 1;
}

QFont panelFont()
{
    QFont font(QStringLiteral("Noto Sans CJK SC"));
    font.setPixelSize(14);
    return font;
}

void paint(QWidget &window)
{
    QEvent request(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&window, &request);
}

// The text in a list that shows its end.
class Panel {
public:
    explicit Panel(QWidget *text)
    {
        text->setFont(panelFont());
        m_area.resize(800, 740);
        m_area.setWidget(text);
        m_area.show();
    }

    void settle()
    {
        QCoreApplication::processEvents();
        m_area.verticalScrollBar()->setValue(m_area.verticalScrollBar()->maximum());
        paint(m_area);
    }

private:
    QScrollArea m_area;
};

void typingTick(benchmark::State &state)
{
    const auto shape = static_cast<int>(state.range(0));
    const auto count = static_cast<int>(state.range(1));
    const QString text = textOf(shape, count + 2 * run + 100);
    const int start = startNear(text, count);
    auto *const browser = new AutoResizeTextBrowser;
    Panel panel(browser);
    auto &d = AutoResizeTextBrowserAccess::of(*browser);
    d.typingTimer.setInterval(std::chrono::hours(1));
    d.cursorTimer.setInterval(std::chrono::hours(1));
    browser->typeText(text);
    const auto begin = [&] {
        d.shownCount = start;
        d.show(start, true);
        panel.settle();
        browser->slotTypeTimeout();
        panel.settle();
    };
    begin();
    for ([[maybe_unused]] auto iteration : state) {
        if (d.shownCount >= start + run) {
            state.PauseTiming();
            begin();
            state.ResumeTiming();
        }
        browser->slotTypeTimeout();
        panel.settle();
    }
}

void literalTick(benchmark::State &state)
{
    const auto shape = static_cast<int>(state.range(0));
    const auto count = static_cast<int>(state.range(1));
    const QString text = textOf(shape, count + 2 * run + 100);
    const int start = startNear(text, count);
    auto *const browser = new testsupport::LiteralBrowser;
    Panel panel(browser);
    int shown = start;
    for ([[maybe_unused]] auto iteration : state) {
        browser->tick(text, shown, true);
        panel.settle();
        shown = shown == start + run ? start : shown + 1;
    }
}

void lines(benchmark::internal::Benchmark *bench)
{
    bench->ArgNames({"shape", "characters"});
    for (const int shape : {AsciiLines, ChineseLines})
        bench->Args({shape, 100})->Args({shape, 20000});
    bench->Args({AsciiParagraph, 5000})->Args({ChineseParagraph, 5000});
}

BENCHMARK(typingTick)->Apply(lines)->Iterations(240);
BENCHMARK(literalTick)->Apply(lines)->Iterations(12);

} // namespace

} // namespace tavro::aiassistant
