#include "answerlist.h"

#include "translate/translatemanager.h"

#include <QLayout>

namespace tavro::testsupport {

using namespace aiassistant;

ChatItemContext contextOf(const QString &question, const QString &message)
{
    ChatItemContext context;
    context.type = QuestionType::Text;
    context.question = question.toStdString();
    context.message = message.toStdString();
    return context;
}

ChatItemContext pictureContext()
{
    ChatItemContext context = contextOf(QStringLiteral("a harbour"));
    context.type = QuestionType::Picture;
    context.images.resize(1);
    context.images[0].pixmap = QPixmap(192, 108);
    context.images[0].pixmap.fill(Qt::blue);
    return context;
}

void loadListLanguages()
{
    TranslateManager::instance().loadLanguageFiles({QStringLiteral(":/aiassistant/language/aiassistant_en.xml"),
                                                    QStringLiteral(":/aiassistant/language/aiassistant_rus.xml")});
    useListLanguage("en");
}

void useListLanguage(const char *name)
{
    TranslateManager::instance().switchLanguage(QLatin1String(name));
}

List::List()
{
    resize(800, 600);
    show();
}

std::vector<ChatItemWidget *> List::items() const
{
    std::vector<ChatItemWidget *> found;
    for (int index = 0; index < sheet()->layout()->count(); ++index) {
        if (auto *const item = qobject_cast<ChatItemWidget *>(sheet()->layout()->itemAt(index)->widget()))
            found.push_back(item);
    }
    return found;
}

QStringList List::kinds() const
{
    QStringList names;
    for (const ChatItemWidget *item : items())
        names += QString::fromLatin1(item->metaObject()->className()).section(QStringLiteral("::"), -1);
    return names;
}

AutoResizeTextBrowser *List::lastBrowser() const
{
    return items().back()->findChild<AutoResizeTextBrowser *>();
}

void List::addHeldAnswer(const QString &message)
{
    addAnswerTextItem(contextOf(QStringLiteral("q"), message));
    holdTimers(*lastBrowser());
    settleEvents();
}

void List::typeWhole()
{
    AutoResizeTextBrowser &browser = *lastBrowser();
    while (AutoResizeTextBrowserAccess::of(browser).typingTimer.isActive())
        typeOne(browser);
}

void List::settleEvents()
{
    for (int turn = 0; turn < 4; ++turn) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

bool List::isAtBottom() const
{
    const QWidget *const last = items().back();
    const int end = last->mapTo(area()->viewport(), QPoint(0, last->height())).y();
    return bar()->value() == bar()->maximum() && end <= area()->viewport()->height();
}

} // namespace tavro::testsupport
