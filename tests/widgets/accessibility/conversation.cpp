#include "conversation.h"

#include "panelsupport.h"
#include "widgets/mainwidget.h"

#include <QTest>
#include <QWidget>

using namespace tavro::testsupport;

namespace {

QString plainName(const QWidget &widget)
{
    return widget.objectName().isEmpty()
        ? QString::fromLatin1(widget.metaObject()->className()).section(QStringLiteral("::"), -1)
        : widget.objectName();
}

} // namespace

void ConversationTest::init()
{
    m_log.emplace();
    makePanel(0);
}

void ConversationTest::cleanup()
{
    panel.reset();
    const QString complaints = complaintsOf(*m_log);
    m_log.reset();
    QCOMPARE(complaints, QString());
}

void ConversationTest::makePanel(std::size_t language)
{
    panel.reset();
    panel = std::make_unique<SamplePanel>(sampleTexts()[language]);
    panel->askQuestion(panel->texts.question);
    panel->showAnswer(panel->texts.answer);
    panel->askForPicture();
    panel->showPictures(2);
    panel->panel().setAskAndAnswerAreaEnable(true);
    panel->picture(); // all is laid out and what was posted is done
}

QString ConversationTest::nameOf(const QWidget *widget) const
{
    if (!widget)
        return QStringLiteral("nothing");
    const QString name = plainName(*widget);
    int number = 0;
    int place = 0;
    const QList<QWidget *> all = panel->window().findChildren<QWidget *>();
    for (const QWidget *const other : all) {
        // Buttons that their item's kind has no use for stay hidden.
        if (plainName(*other) != name || other->isHidden())
            continue;
        ++number;
        if (other == widget)
            place = number;
    }
    return number > 1 ? QStringLiteral("%1 %2").arg(name).arg(place) : name;
}
