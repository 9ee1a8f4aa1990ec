// The answer list as the conversation grows: what one more item, one more line, and a change of all items cost.

#include "theme/stylesheetbuilder.h"
#include "theme/theme.h"
#include "translate/translatemanager.h"
#include "widgets/answerwidget.h"
#include "widgets/autoresizetextbrowser_p.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QVBoxLayout>

namespace tavro::aiassistant {

namespace {

constexpr auto english = "en";
constexpr auto russian = "rus";

void useLanguage(const char *name)
{
    TranslateManager::instance().switchLanguage(QLatin1String(name));
}

ChatItemContext question()
{
    ChatItemContext context;
    context.type = QuestionType::Text;
    context.question = "Play the harbour clip on layer 2 at half volume";
    return context;
}

// The list in the panel's style, filled with items that have been laid out and painted.
class Conversation {
public:
    explicit Conversation(int items)
    {
        TranslateManager::instance().loadLanguageFiles({QStringLiteral(":/aiassistant/language/aiassistant_en.xml"),
                                                        QStringLiteral(":/aiassistant/language/aiassistant_rus.xml")});
        useLanguage(english);
        m_panel.resize(800, 860);
        auto *const layout = new QVBoxLayout(&m_panel);
        layout->setContentsMargins(0, 0, 0, 0);
        list = new AnswerWidget(&m_panel);
        layout->addWidget(list);
        m_panel.setStyleSheet(finishedStyleSheet(*readTheme(":/aiassistant/theme/default_aiassistant.theme")));
        m_panel.show();
        fill(items);
    }

    void fill(int items)
    {
        for (int count = 0; count < items; ++count) {
            list->addQuestionItem(question());
            if (count % 20 == 0)
                settle();
        }
        settle();
    }

    // What the event loop does before it sleeps; the paint that it would delay is asked for.
    void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        QEvent request(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&m_panel, &request);
    }

    AnswerWidget *list = nullptr;

private:
    QWidget m_panel;
};

void addItem(benchmark::State &state)
{
    Conversation conversation(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto iteration : state) {
        conversation.list->addQuestionItem(question());
        conversation.settle();
    }
}

// Each tick ends a line, so that the item, the column and the list grow.
void newLineTick(benchmark::State &state)
{
    Conversation conversation(static_cast<int>(state.range(0)));
    ChatItemContext answer = question();
    answer.message = std::string(1000, '\n');
    conversation.list->addAnswerTextItem(answer);
    auto *const browser = conversation.list->findChildren<AutoResizeTextBrowser *>().back();
    AutoResizeTextBrowserAccess::of(*browser).typingTimer.setInterval(std::chrono::hours(1));
    AutoResizeTextBrowserAccess::of(*browser).cursorTimer.setInterval(std::chrono::hours(1));
    conversation.settle();
    for ([[maybe_unused]] auto iteration : state) {
        browser->slotTypeTimeout();
        conversation.settle();
    }
}

void disableAndEnable(benchmark::State &state)
{
    Conversation conversation(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto iteration : state) {
        conversation.list->setItemsEnabled(false);
        conversation.settle();
        conversation.list->setItemsEnabled(true);
        conversation.settle();
    }
}

void retranslate(benchmark::State &state)
{
    Conversation conversation(static_cast<int>(state.range(0)));
    bool first = true;
    for ([[maybe_unused]] auto iteration : state) {
        useLanguage(first ? russian : english);
        first = !first;
        conversation.list->retranslate();
        conversation.settle();
    }
}

void reset(benchmark::State &state)
{
    const auto items = static_cast<int>(state.range(0));
    Conversation conversation(items);
    bool full = true;
    for ([[maybe_unused]] auto iteration : state) {
        if (!full) {
            state.PauseTiming();
            conversation.fill(items);
            state.ResumeTiming();
        }
        full = false;
        conversation.list->reset();
        conversation.settle();
    }
}

BENCHMARK(addItem)->ArgName("items")->Arg(10)->Arg(5000)->Iterations(30)->Unit(benchmark::kMillisecond);
BENCHMARK(newLineTick)->ArgName("items")->Arg(10)->Arg(5000)->Iterations(60)->Unit(benchmark::kMillisecond);
BENCHMARK(disableAndEnable)->ArgName("items")->Arg(1000)->Arg(4000)->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(retranslate)->ArgName("items")->Arg(1000)->Arg(4000)->Iterations(6)->Unit(benchmark::kMillisecond);
BENCHMARK(reset)->ArgName("items")->Arg(1000)->Arg(4000)->Iterations(2)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace tavro::aiassistant
