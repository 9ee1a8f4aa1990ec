#include "paneltest.h"
#include "widgets/autoresizetextbrowser_p.h"
#include "widgets/chatitems.h"

#include <QApplication>
#include <QLayout>
#include <QMovie>
#include <QPushButton>
#include <QSet>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

namespace {

constexpr int questions = 500;
constexpr int questionsInAConversation = 50; // of the controller: each request carries the conversation so far

/// What must be as before when the panel is reset.
struct Inventory {
    int widgets = 0;
    int timers = 0;
    int movies = 0;
    int objectsOfPanel = 0;
    int objectsOfController = 0;
};

/// Notes whose timers fire again and again. One shot is none of ours: Qt clears its caches and puts off its work so.
class TimerWitness : public QObject {
public:
    TimerWitness() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Timer && m_seenOnce.contains(watched))
            m_repeating.insert(describe(watched));
        if (event->type() == QEvent::Timer)
            m_seenOnce.insert(watched);
        return false;
    }

    QString repeating() const { return m_repeating.values().join(u','); }

private:
    // "class and name of its parent's class and name ..."; a timer's interval besides.
    static QString describe(const QObject *object)
    {
        QString own = QLatin1String(object->metaObject()->className()) + QLatin1Char(' ') + object->objectName();
        if (const auto *const timer = qobject_cast<const QTimer *>(object))
            own += QString::number(timer->interval());
        return object->parent() == nullptr ? own : own + QStringLiteral(" of ") + describe(object->parent());
    }

    QSet<const QObject *> m_seenOnce;
    QSet<QString> m_repeating;
};

// The timers that run in this thread, whoever they belong to. Each with at most the interval of a cursor fires three
// times meanwhile.
QString runningTimers()
{
    QTimer end;
    end.setSingleShot(true);
    TimerWitness witness;
    end.start(std::chrono::milliseconds(1750));
    runUntil([&] { return !end.isActive(); });
    return witness.repeating();
}

} // namespace

/// A long conversation in the panel, with all that can come of a question.
class TestPanelSoak : public PanelTest {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void resetLeavesNothingOfALongConversation();

private:
    void findParts();
    QWidget *lastItem() const;
    bool isIdle() const { return m_edit->isEnabled(); } ///< the user can ask
    void expect(const QByteArray &method, const QByteArray &target, const ScriptedAnswer &answer);
    bool waitForReplies();
    bool send(const QByteArray &path);
    bool poll(const ScriptedAnswer &answer);
    bool typeOut();

    bool askText(int number);
    bool askPicture(int number);
    bool askInVain();
    bool tryAgain(int number);
    bool askAll(int count);
    bool reset();
    Inventory inventory() const;

    // Found once: they are looked for among all items.
    QLayout *m_column = nullptr;
    QTextEdit *m_edit = nullptr;
    QPushButton *m_textMode = nullptr;
    QPushButton *m_pictureMode = nullptr;
    int m_pictures = 0;
};

void TestPanelSoak::initTestCase()
{
    // The edit's cursor would be one more timer.
    QApplication::setCursorFlashTime(0);
}

void TestPanelSoak::findParts()
{
    m_column = child("itemsWidget")->layout();
    m_edit = edit();
    m_textMode = button("askAndAnwser");
    m_pictureMode = button("generateImage");
}

QWidget *TestPanelSoak::lastItem() const
{
    return m_column->itemAt(m_column->count() - 2)->widget();
}

// One connection for each request: on an old one, a POST would wait for an acknowledgement.
void TestPanelSoak::expect(const QByteArray &method, const QByteArray &target, const ScriptedAnswer &answer)
{
    f->server.expect(method, target, answer.withHeader("Connection", "close").thenClose());
}

bool TestPanelSoak::waitForReplies()
{
    return runUntil([this] { return f->openReplies() == 0; });
}

// What the edit holds.
bool TestPanelSoak::send(const QByteArray &path)
{
    expect("POST", path, ControllerFixture::accepted());
    QTest::keyClick(m_edit, Qt::Key_Return);
    return !isIdle() && waitForReplies();
}

bool TestPanelSoak::poll(const ScriptedAnswer &answer)
{
    expect("POST", ControllerFixture::resultPath(), answer);
    f->tick();
    return waitForReplies();
}

// Without waiting for the timer.
bool TestPanelSoak::typeOut()
{
    if (!runUntil([this] { return qobject_cast<AnswerTextItemWidget *>(lastItem()) != nullptr; }))
        return false;
    auto *const browser = lastItem()->findChild<AutoResizeTextBrowser *>();
    while (AutoResizeTextBrowserAccess::of(*browser).typingTimer.isActive())
        browser->slotTypeTimeout();
    return isIdle();
}

bool TestPanelSoak::askText(int number)
{
    m_edit->setPlainText(QStringLiteral("question %1").arg(number));
    return send(ControllerFixture::textPath())
        && poll(ControllerFixture::readyText(QStringLiteral("answer %1\nin two lines").arg(number))) && typeOut();
}

bool TestPanelSoak::askPicture(int number)
{
    // The address differs each time, or the picture would count as the one before.
    const QByteArray path = "/" + QByteArray::number(++m_pictures) + ".png";
    QTest::mouseClick(m_pictureMode, Qt::LeftButton);
    m_edit->setPlainText(QStringLiteral("picture %1").arg(number));
    if (!send(ControllerFixture::picturePath()))
        return false;
    expect("GET", path, ScriptedAnswer::bytes(pngBytes(Qt::red), "image/png"));
    if (!poll(ControllerFixture::readyPicture(f->server.url() + QString::fromLatin1(path))))
        return false;
    const bool shown = runUntil([this] { return qobject_cast<AnswerImageItemWidget *>(lastItem()) != nullptr; });
    QTest::mouseClick(m_textMode, Qt::LeftButton);
    return shown && isIdle();
}

bool TestPanelSoak::askInVain()
{
    m_edit->setPlainText(QStringLiteral("in vain"));
    return send(ControllerFixture::textPath()) && poll(ControllerFixture::failed(QStringLiteral("busy"))) && typeOut();
}

bool TestPanelSoak::tryAgain(int number)
{
    expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
    lastItem()->findChild<QPushButton *>(QStringLiteral("tryAgainButton"))->click();
    return !isIdle() && waitForReplies() && poll(ControllerFixture::readyText(QStringLiteral("again %1").arg(number)))
        && typeOut();
}

bool TestPanelSoak::askAll(int count)
{
    for (int number = 1; number <= count; ++number) {
        bool done = false;
        switch (number % 10) {
        case 3:
            done = askPicture(number);
            break;
        case 6:
            done = askInVain();
            break;
        case 7:
            done = tryAgain(number);
            break;
        default:
            done = askText(number);
            break;
        }
        if (!done)
            return qWarning("no answer to question %d", number), false;
        if (number % questionsInAConversation == 0) {
            f->controller.clearHistoryRecord();
            f->log.forget();
        }
    }
    return true;
}

bool TestPanelSoak::reset()
{
    panel->resetMainWidget();
    settle();
    return runUntil([this] { return qobject_cast<HelloItemWidget *>(lastItem()) != nullptr; });
}

Inventory TestPanelSoak::inventory() const
{
    settle();
    Inventory now;
    const QWidgetList all = QApplication::allWidgets();
    now.widgets = all.size();
    for (const QWidget *const widget : all) {
        now.timers += widget->findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly).size();
        now.movies += widget->findChildren<QMovie *>(QString(), Qt::FindDirectChildrenOnly).size();
    }
    now.objectsOfPanel = panel->findChildren<QObject *>().size();
    now.objectsOfController = f->controller.findChildren<QObject *>().size() + f->d.findChildren<QObject *>().size();
    return now;
}

void TestPanelSoak::resetLeavesNothingOfALongConversation()
{
    findParts();
    // The ticks are counted on from question to question.
    f->controller.setTimeout(1'000'000'000);
    // What is made once stays.
    QVERIFY(askAll(10) && reset());
    const Inventory before = inventory();
    QCOMPARE(runningTimers(), QString());

    QVERIFY(askAll(questions));
    QCOMPARE(conversation().size(), 1 + 2 * questions - questions / 10);
    const Inventory full = inventory();
    QVERIFY(full.widgets > before.widgets + 10 * questions);
    QCOMPARE(full.movies, before.movies);
    QCOMPARE(runningTimers(), QString());

    QVERIFY(reset());
    QCOMPARE(conversation().size(), 1);
    const Inventory after = inventory();
    QCOMPARE(after.widgets, before.widgets);
    QCOMPARE(after.timers, before.timers);
    QCOMPARE(after.movies, before.movies);
    QCOMPARE(after.objectsOfPanel, before.objectsOfPanel);
    QCOMPARE(after.objectsOfController, before.objectsOfController);
    QCOMPARE(runningTimers(), QString());
}

QTEST_MAIN(TestPanelSoak)
#include "tst_panelsoak.moc"
