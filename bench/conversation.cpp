#include "conversation.h"

#include "theme/stylesheetbuilder.h"
#include "translate/translatemanager.h"
#include "widgets/answerwidget.h"
#include "widgets/mainwidget_p.h"

#include <QApplication>

#include <map>
#include <memory>

namespace tavro::aiassistant {

namespace {

std::map<int, std::unique_ptr<Conversation>> &kept()
{
    static std::map<int, std::unique_ptr<Conversation>> conversations;
    return conversations;
}

} // namespace

Conversation &Conversation::ofAtLeast(int items)
{
    // No widget may outlive the application.
    if (kept().empty())
        qAddPostRoutine([] { kept().clear(); });
    std::unique_ptr<Conversation> &conversation = kept()[items];
    if (conversation == nullptr)
        conversation = std::make_unique<Conversation>(items);
    return *conversation;
}

Conversation::Conversation(int items)
    : list(*MainWidgetAccess::of(panel).answerWidget)
{
    TranslateManager::instance().switchLanguage(QStringLiteral("en"));
    panel.switchLanguage();
    panel.resize(800, 1000);
    panel.updateStyleSheet(sheet());
    panel.show();
    fill(items);
}

void Conversation::fill(int items)
{
    for (int count = 0; count < items; ++count) {
        list.addQuestionItem(question());
        if (count % 20 == 0)
            settle();
    }
    settle();
}

void Conversation::settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    QEvent request(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&panel, &request);
}

ChatItemContext Conversation::question()
{
    ChatItemContext context;
    context.type = QuestionType::Text;
    context.question = "Play the harbour clip on layer 2 at half volume";
    return context;
}

QString Conversation::sheet()
{
    return finishedStyleSheet(*readTheme(":/aiassistant/theme/default_aiassistant.theme"));
}

} // namespace tavro::aiassistant
