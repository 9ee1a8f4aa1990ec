#include "playout/samplefiles.h"
#include "script/scriptparser.h"
#include "script/scriptplayer.h"
#include "support/waiting.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>

using namespace tavro::playout;
using namespace tavro::testsupport;

namespace {

// A window with what a script can be tried on.
class Window : public QWidget {
public:
    Window()
    {
        auto *const row = new QHBoxLayout(this);
        for (QWidget *const widget : {static_cast<QWidget *>(line), static_cast<QWidget *>(edit),
                                      static_cast<QWidget *>(button), static_cast<QWidget *>(off)})
            row->addWidget(widget);
        line->setObjectName(QStringLiteral("line"));
        edit->setObjectName(QStringLiteral("edit"));
        button->setObjectName(QStringLiteral("button"));
        off->setObjectName(QStringLiteral("off"));
        off->setEnabled(false);
        hidden->setObjectName(QStringLiteral("hidden"));
        hidden->hide();
        line->setFocus();
    }

    QLineEdit *line = new QLineEdit;
    QTextEdit *edit = new QTextEdit;
    QPushButton *button = new QPushButton(QStringLiteral("Go"));
    QPushButton *off = new QPushButton(QStringLiteral("Off"));
    QPushButton *hidden = new QPushButton(QStringLiteral("Hidden"), this);
};

class EnterCounter : public QObject {
public:
    int count = 0;

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        count += event->type() == QEvent::Enter ? 1 : 0;
        return QObject::eventFilter(object, event);
    }
};

} // namespace

class PlayoutScriptTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void typesIntoTheFocus();
    void pressesKeysAndShortcuts();
    void clickMovesFocusAndPushes();
    void hoverEntersAControlNamedByItsClass();
    void waitsUntilItHolds();
    void failsAtRun_data();
    void failsAtRun();
    void aCoveredControlCannotBeClicked();
    void tellsOfControls();
    void takesScreenshots();
    void resizes();
    void quitEndsTheScript();
    void aWindowWithoutTheKeyboardGetsTheKeysAllTheSame();

private:
    bool play(const QString &script);

    std::unique_ptr<Window> window;
    std::unique_ptr<ScriptPlayer> player;
    QStringList told;
    QString failure;
};

void PlayoutScriptTest::init()
{
    QApplication::setCursorFlashTime(0); // two pictures would differ where it blinks between them
    window = std::make_unique<Window>();
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    failure.clear();
}

// Plays to the end; true where it reached the step quit, which is added.
bool PlayoutScriptTest::play(const QString &script)
{
    const Script parsed = parseScript(script + QStringLiteral("\nquit\n"));
    if (!parsed.errors.isEmpty()) {
        failure = parsed.errors.first();
        return false;
    }
    player = std::make_unique<ScriptPlayer>(parsed.steps, *window);
    QSignalSpy ended(player.get(), &ScriptPlayer::sigQuit);
    told.clear();
    connect(player.get(), &ScriptPlayer::sigTold, this, [this](const QString &line) { told << line; });
    connect(player.get(), &ScriptPlayer::sigFailed, this, [this](const QString &why) { failure = why; });
    player->start();
    return eventually([&] { return ended.count() > 0 || !failure.isEmpty(); }) && failure.isEmpty();
}

void PlayoutScriptTest::typesIntoTheFocus()
{
    const QString text = QStringLiteral("Play \"A-1\" на слое 2, 半音量 🎬 at 50 %!");
    QVERIFY2(play(QStringLiteral("type ") + text), qPrintable(failure));
    QCOMPARE(window->line->text(), text);
}

void PlayoutScriptTest::pressesKeysAndShortcuts()
{
    QShortcut shortcut(Qt::CTRL + Qt::Key_K, window.get());
    QSignalSpy activated(&shortcut, &QShortcut::activated);
    QVERIFY2(play(QStringLiteral("type abc\npress Backspace\npress Ctrl+K\npress Tab\npress Shift+Return\ntype x")),
             qPrintable(failure));
    QCOMPARE(activated.count(), 1);
    QCOMPARE(window->line->text(), QStringLiteral("ab"));
    QVERIFY(window->edit->toPlainText().endsWith(QLatin1Char('x')));
}

void PlayoutScriptTest::clickMovesFocusAndPushes()
{
    QSignalSpy clicked(window->button, &QPushButton::clicked);
    QVERIFY2(play(QStringLiteral("click button\nclick edit\ntype here")), qPrintable(failure));
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(window->edit->toPlainText(), QStringLiteral("here"));
}

void PlayoutScriptTest::hoverEntersAControlNamedByItsClass()
{
    window->button->setObjectName({});
    EnterCounter entered;
    window->button->installEventFilter(&entered);
    QVERIFY2(play(QStringLiteral("hover QPushButton")), qPrintable(failure));
    QVERIFY(entered.count > 0);
}

void PlayoutScriptTest::waitsUntilItHolds()
{
    connect(window->button, &QPushButton::clicked, this, [this] {
        QTimer::singleShot(100, window.get(), [this] {
            window->hidden->show();
            window->off->setEnabled(true);
            window->edit->setPlainText(QStringLiteral("it plays now"));
            window->line->hide();
        });
    });
    QVERIFY2(play(QStringLiteral("wait 1 disabled off\nclick button\nwait 20 visible hidden\nwait 20 enabled off\n"
                                 "wait 20 text edit plays\nwait 20 hidden line")),
             qPrintable(failure));
}

void PlayoutScriptTest::failsAtRun_data()
{
    QTest::addColumn<QString>("step");
    QTest::addColumn<QString>("why");
    const auto row = [](const char *step, const char *why) {
        QTest::newRow(step) << QString::fromUtf8(step) << QStringLiteral("line 2: ") + QString::fromUtf8(why);
    };
    row("click nobody", "no \"nobody\" is to be seen");
    row("click hidden", "no \"hidden\" is to be seen");
    row("click off", "\"off\" is disabled");
    row("wait 0.1 visible nobody", "waited in vain; there is no \"nobody\"");
    row("wait 0.1 visible hidden", "waited in vain; \"hidden\" is hidden");
    row("wait 0.1 enabled off", "waited in vain; \"off\" is disabled and shows \"Off\"");
    row("wait 0.1 text button Stop", "waited in vain; \"button\" is enabled and shows \"Go\"");
    row("wait 0.1 focused button", "waited in vain; \"button\" is enabled and shows \"Go\"");
    row("tell hidden", "no \"hidden\" is to be seen");
    row("screenshot /nowhere/a.png", "cannot write /nowhere/a.png");
}

void PlayoutScriptTest::failsAtRun()
{
    QFETCH(QString, step);
    QFETCH(QString, why);
    QVERIFY(!play(QStringLiteral("# first\n") + step));
    QCOMPARE(failure, why);
}

void PlayoutScriptTest::aCoveredControlCannotBeClicked()
{
    QWidget cover(window.get());
    cover.setGeometry(window->rect());
    cover.show();
    QVERIFY(!play(QStringLiteral("click button")));
    QCOMPARE(failure, QStringLiteral("line 1: something lies over \"button\""));
}

void PlayoutScriptTest::tellsOfControls()
{
    QVERIFY2(play(QStringLiteral("click edit\nwait 5 focused edit\ntype two words\ntell edit\ntell off")),
             qPrintable(failure));
    QCOMPARE(told.size(), 2);
    const QPoint place = window->edit->mapToGlobal(QPoint());
    QCOMPARE(told.at(0),
             QStringLiteral("{\"enabled\":true,\"height\":%1,\"name\":\"edit\",\"text\":\"two words\",\"width\":%2,"
                            "\"x\":%3,\"y\":%4}")
                 .arg(window->edit->height())
                 .arg(window->edit->width())
                 .arg(place.x())
                 .arg(place.y()));
    QVERIFY(told.at(1).startsWith(QStringLiteral("{\"enabled\":false,")));
}

void PlayoutScriptTest::takesScreenshots()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("a picture.png"));
    QVERIFY2(play(QStringLiteral("screenshot ") + file), qPrintable(failure));
    const QImage image(file);
    QCOMPARE(image.size(), window->size() * window->devicePixelRatioF());
    QCOMPARE(image.convertToFormat(QImage::Format_RGB32),
             window->grab().toImage().convertToFormat(QImage::Format_RGB32));
}

void PlayoutScriptTest::resizes()
{
    QVERIFY2(play(QStringLiteral("size 700 300")), qPrintable(failure));
    QCOMPARE(window->size(), QSize(700, 300));
}

void PlayoutScriptTest::quitEndsTheScript()
{
    QVERIFY(play(QStringLiteral("quit\ntype never")));
    settle();
    QCOMPARE(window->line->text(), QString());
}

void PlayoutScriptTest::aWindowWithoutTheKeyboardGetsTheKeysAllTheSame()
{
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    other.hide();
    QVERIFY2(play(QStringLiteral("type abc")), qPrintable(failure));
    QCOMPARE(window->line->text(), QStringLiteral("abc"));
}

QTEST_MAIN(PlayoutScriptTest)
#include "tst_playoutscript.moc"
