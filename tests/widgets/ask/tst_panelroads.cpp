#include "panelsupport.h"
#include "paneltest.h"

#include <QComboBox>
#include <QJsonArray>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextEdit>

namespace {

// At 50 ms a character it types for half a minute: whatever happens in the middle of it does so on a slow machine too.
const QString longAnswer =
    QStringLiteral("This answer is far too long to type itself out while anybody watches. ").repeated(9);

} // namespace

/// What a user does with the panel, from the key press to the answer on the screen.
class TestPanelRoads : public PanelTest {
    Q_OBJECT

private Q_SLOTS:
    void questionIsAnswered();
    void pictureIsAnswered();
    void answerIsAskedForAgain();
    void failedPictureIsAskedForAgain();
    void thumbnailIsAskedForAgain();
    void questionIsModified();
    void waitingIsStopped();
    void stoppedPlaceholderGoesWithTheNextQuestion();
    void typingIsStopped();
    void serviceErrorIsShown();
    void failedRequestIsShown();
    void unreachableServiceIsShown();
    void timeOutIsShown();
    void resetInTheMiddle();
    void resetWhileTyping();
    void clearBeginsANewConversation();
    void languageSwitchInTheMiddle();
    void themeSwitchInTheMiddle();
    void pictureIsEnlargedAndDownloaded();
    void togglesReachTheService();

private:
    bool startTyping(const QString &answer);
};

bool TestPanelRoads::startTyping(const QString &answer)
{
    ask(QStringLiteral("tell me"));
    return acceptText() && answerText(answer) && eventually([this] { return conversation().last().size() > 20; });
}

void TestPanelRoads::questionIsAnswered()
{
    ask(QStringLiteral("who are you?"));
    QVERIFY(isGenerating());
    QCOMPARE(edit()->toPlainText(), QString());
    QTRY_COMPARE(conversation().mid(1),
                 QStringList({QStringLiteral("Question: who are you?"), QStringLiteral("TextGenerating: Thinking:")}));
    QVERIFY(acceptText());
    QVERIFY(f->poll(ControllerFixture::working()));
    QVERIFY(isGenerating());
    QVERIFY(answerText(QStringLiteral("I am")));
    QCOMPARE(conversation().size(), 3);
    QTRY_COMPARE(conversation().last(), QStringLiteral("AnswerText: I am"));
    QTRY_VERIFY(!isGenerating());
    QVERIFY(edit()->isEnabled() && edit()->hasFocus());
    QVERIFY(itemButton(1, "copyButton")->isEnabled() && itemButton(2, "tryAgainButton")->isEnabled());
    QCOMPARE(f->server.requestCountTo(ControllerFixture::textPath()), 1);
    QCOMPARE(f->server.requestCountTo(ControllerFixture::resultPath()), 2);
}

void TestPanelRoads::pictureIsAnswered()
{
    askForPicture(QStringLiteral("a harbour"));
    QVERIFY(isGenerating());
    QTRY_COMPARE(
        conversation().mid(1),
        QStringList({QStringLiteral("Question: a harbour"), QStringLiteral("ImageGenerating: Generating image...")}));
    QVERIFY(acceptPicture());
    const QJsonObject sent = f->server.requestsTo(ControllerFixture::picturePath()).first().json();
    QCOMPARE(sent.value(QStringLiteral("width")).toInt(), 1920);
    QCOMPARE(sent.value(QStringLiteral("style")).toString(), QStringLiteral("Portrait Photography"));
    QVERIFY(answerPicture("/p.png", Qt::red));
    QTRY_COMPARE(conversation().mid(1),
                 QStringList({QStringLiteral("Question: a harbour"), QStringLiteral("AnswerImage: ")}));
    QVERIFY(!isGenerating());
    auto *const thumbnail = item(2)->findChild<QWidget *>(QStringLiteral("imageButtonFrame"))->parentWidget();
    QCOMPARE(thumbnail->size(), QSize(163, 102));
    QCOMPARE(thumbnail->grab().toImage().pixelColor(80, 50), QColor(Qt::red));
}

void TestPanelRoads::answerIsAskedForAgain()
{
    ask(QStringLiteral("again?"));
    QVERIFY(acceptText() && answerText(QStringLiteral("yes")));
    QTRY_VERIFY(!isGenerating());
    edit()->setPlainText(QStringLiteral("draft"));
    QTest::mouseClick(itemButton(2, "tryAgainButton"), Qt::LeftButton);
    QVERIFY(isGenerating());
    QVERIFY(!itemButton(1, "copyButton")->isEnabled() && !itemButton(2, "tryAgainButton")->isEnabled());
    QTRY_COMPARE(conversation().mid(1),
                 QStringList({QStringLiteral("Question: again?"), QStringLiteral("AnswerText: yes"),
                              QStringLiteral("TextGenerating: Thinking:")}));
    QCOMPARE(edit()->toPlainText(), QStringLiteral("draft"));
    QVERIFY(acceptText(QStringLiteral("r2")) && answerText(QStringLiteral("no")));
    QTRY_COMPARE(conversation().last(), QStringLiteral("AnswerText: no"));
    QTRY_VERIFY(!isGenerating());
    const QJsonArray messages =
        f->server.requestsTo(ControllerFixture::textPath()).last().json().value(QStringLiteral("messages")).toArray();
    QCOMPARE(messages.last().toObject().value(QStringLiteral("content")).toString(), QStringLiteral("again?"));
}

void TestPanelRoads::failedPictureIsAskedForAgain()
{
    askForPicture(QStringLiteral("a boat"));
    f->server.expect("POST", ControllerFixture::picturePath(), ControllerFixture::failed(QStringLiteral("busy")));
    QTRY_COMPARE(conversation().last(), QStringLiteral("AnswerText: busy"));
    QTest::mouseClick(button("askAndAnwser"), Qt::LeftButton);
    QTest::mouseClick(itemButton(2, "tryAgainButton"), Qt::LeftButton);
    QVERIFY(isGenerating());
    QVERIFY(button("generateImage")->isChecked());
    QTRY_COMPARE(conversation().last(), QStringLiteral("ImageGenerating: Generating image..."));
    QCOMPARE(conversation().size(), 4);
    QVERIFY(acceptPicture());
    const auto requests = f->server.requestsTo(ControllerFixture::picturePath());
    QCOMPARE(requests.size(), 2);
    QCOMPARE(requests.last().json(), requests.first().json());
    QVERIFY(answerPicture("/p.png", Qt::red));
    QTRY_COMPARE(conversation().last(), QStringLiteral("AnswerImage: "));
    QVERIFY(!isGenerating());
}

void TestPanelRoads::thumbnailIsAskedForAgain()
{
    askForPicture(QStringLiteral("a boat"));
    QVERIFY(acceptPicture() && answerPicture("/p.png", Qt::red));
    QTRY_COMPARE(conversation().last(), QStringLiteral("AnswerImage: "));
    QTest::mouseClick(button("askAndAnwser"), Qt::LeftButton);
    itemButton(2, "modifyButton")->click();
    QVERIFY(button("generateImage")->isChecked());
    QVERIFY(child("styleSelect")->isVisible());
    QCOMPARE(edit()->toPlainText(), QStringLiteral("a boat"));
    QVERIFY(!isGenerating());
    QCOMPARE(f->server.requestCountTo(ControllerFixture::picturePath()), 1);
}

void TestPanelRoads::questionIsModified()
{
    ask(QStringLiteral("who are yuo?"));
    QVERIFY(acceptText() && answerText(QStringLiteral("me")));
    QTRY_VERIFY(!isGenerating());
    QTest::mouseClick(itemButton(1, "modifyButton"), Qt::LeftButton);
    QCOMPARE(edit()->toPlainText(), QStringLiteral("who are yuo?"));
    QVERIFY(button("askAndAnwser")->isChecked());
    QCOMPARE(f->server.requestCountTo(ControllerFixture::textPath()), 1);
    QVERIFY(button("sendMsg")->isEnabled());
}

void TestPanelRoads::waitingIsStopped()
{
    ask(QStringLiteral("are you there?"));
    QVERIFY(acceptText());
    QTest::mouseClick(button("stop"), Qt::LeftButton);
    QVERIFY(!isGenerating());
    QVERIFY(edit()->isEnabled() && edit()->hasFocus());
    f->tick();
    QVERIFY(!f->isTimerActive());
    QCOMPARE(f->server.requestCountTo(ControllerFixture::resultPath()), 0);
    QCOMPARE(f->signalled.summary(), QString());
    // What a serving machine sends to the machine that shows the panel.
    f->controller.deleteGeneratingItem();
    QTRY_COMPARE(conversation().last(), QStringLiteral("Question: are you there?"));
}

void TestPanelRoads::stoppedPlaceholderGoesWithTheNextQuestion()
{
    ask(QStringLiteral("one"));
    QVERIFY(acceptText());
    QTest::mouseClick(button("stop"), Qt::LeftButton);
    ask(QStringLiteral("two"));
    QVERIFY(acceptText(QStringLiteral("r2")) && answerText(QStringLiteral("2")));
    QTRY_VERIFY(!isGenerating());
    QCOMPARE(conversation().mid(1),
             QStringList(
                 {QStringLiteral("Question: one"), QStringLiteral("Question: two"), QStringLiteral("AnswerText: 2")}));
}

void TestPanelRoads::typingIsStopped()
{
    QVERIFY(startTyping(longAnswer));
    QTest::mouseClick(button("stop"), Qt::LeftButton);
    QVERIFY(!isGenerating());
    QVERIFY(edit()->hasFocus());
    const QString typed = conversation().last().section(QStringLiteral(": "), 1);
    QVERIFY(!typed.contains(QLatin1Char('|')));
    QVERIFY2(longAnswer.startsWith(typed) && typed.size() < longAnswer.size(), qPrintable(typed));
    // The next question is typed and answered; the stopped answer stays as it is.
    ask(QStringLiteral("next"));
    QVERIFY(acceptText(QStringLiteral("r2")) && answerText(QStringLiteral("ok")));
    QTRY_VERIFY(!isGenerating());
    QCOMPARE(conversation().at(2), QStringLiteral("AnswerText: ") + typed);
    QCOMPARE(conversation().last(), QStringLiteral("AnswerText: ok"));
}

void TestPanelRoads::serviceErrorIsShown()
{
    ask(QStringLiteral("what?"));
    QVERIFY(acceptText());
    QVERIFY(f->poll(ControllerFixture::failed(QStringLiteral("too busy"))));
    QCOMPARE(conversation().size(), 3);
    QVERIFY(!isGenerating());
    QTRY_COMPARE(conversation().last(), QStringLiteral("AnswerText: too busy"));
}

void TestPanelRoads::failedRequestIsShown()
{
    f->server.expect("POST", ControllerFixture::textPath(), ScriptedAnswer::status(500));
    ask(QStringLiteral("what?"));
    QTRY_COMPARE(conversation().mid(1),
                 QStringList({QStringLiteral("Question: what?"), QStringLiteral("AnswerText: Request Error")}));
    QVERIFY(!isGenerating());
}

// The failure is posted at once: it must not overtake the placeholder.
void TestPanelRoads::unreachableServiceIsShown()
{
    const ExpectedLog refusal(f->log, QStringLiteral("only http and https"), 1);
    f->controller.setDomain(QString());
    ask(QStringLiteral("what?"));
    QTRY_COMPARE(conversation().last(), QStringLiteral("AnswerText: Request Error"));
    settle();
    QCOMPARE(conversation().size(), 3);
    QVERIFY(!isGenerating());
}

void TestPanelRoads::timeOutIsShown()
{
    f->controller.setTimeout(0);
    ask(QStringLiteral("what?"));
    QVERIFY(acceptText());
    f->tick();
    QVERIFY(!isGenerating());
    QTRY_COMPARE(conversation().mid(1),
                 QStringList({QStringLiteral("Question: what?"), QStringLiteral("AnswerText: Timeout")}));
}

void TestPanelRoads::resetInTheMiddle()
{
    QTest::mouseClick(button("modelBtn"), Qt::LeftButton);
    ask(QStringLiteral("what?"));
    QVERIFY(acceptText());
    QTRY_COMPARE(conversation().size(), 3);
    f->controller.resetMainWidget();
    QVERIFY(!isGenerating());
    QVERIFY(!button("modelBtn")->isChecked());
    settle();
    QCOMPARE(conversation(), QStringList{QStringLiteral("Hello: Hello, I’m your AI Assistant.\nNice to meet you! ")});
    QVERIFY(f->d.strReqId.isEmpty());
    QVERIFY(f->d.historyArray.isEmpty());
    f->tick();
    QCOMPARE(f->server.requestCountTo(ControllerFixture::resultPath()), 0);
}

void TestPanelRoads::resetWhileTyping()
{
    QVERIFY(startTyping(longAnswer));
    f->controller.resetMainWidget();
    settle();
    QCOMPARE(conversation().size(), 1);
    QVERIFY(!isGenerating());
    ask(QStringLiteral("next"));
    QVERIFY(isGenerating());
    QVERIFY(acceptText(QStringLiteral("r2")) && answerText(QStringLiteral("ok")));
    QTRY_VERIFY(!isGenerating());
}

void TestPanelRoads::clearBeginsANewConversation()
{
    ask(QStringLiteral("one"));
    QVERIFY(acceptText() && answerText(QStringLiteral("1")));
    QTRY_VERIFY(!isGenerating());
    QVERIFY(!f->d.historyArray.isEmpty());
    QTest::mouseClick(button("clearButton"), Qt::LeftButton);
    settle();
    QCOMPARE(conversation(), QStringList());
    QVERIFY(f->d.historyArray.isEmpty());
}

void TestPanelRoads::languageSwitchInTheMiddle()
{
    QVERIFY(startTyping(longAnswer));
    f->controller.switchLanguage("zh_CN");
    QVERIFY(isGenerating());
    QCOMPARE(button("stop")->text(), QStringLiteral("停止"));
    QCOMPARE(itemButton(1, "copyButton")->text(), QStringLiteral("复制"));
    QVERIFY(conversation().first().startsWith(QStringLiteral("Hello: 你好")));
    QTest::mouseClick(button("stop"), Qt::LeftButton);
    // An error that comes now is worded in the new language.
    f->server.expect("POST", ControllerFixture::textPath(), ScriptedAnswer::status(500));
    ask(QStringLiteral("next"));
    QTRY_COMPARE(conversation().last(), QStringLiteral("AnswerText: 请求出错"));
}

void TestPanelRoads::themeSwitchInTheMiddle()
{
    QVERIFY(startTyping(longAnswer));
    f->controller.loadTheme(":/aiassistant/theme/default_aiassistant.theme");
    QVERIFY(panel->styleSheet().contains(QStringLiteral("#FF6D00")));
    QVERIFY(isGenerating());
    const int typed = conversation().last().size();
    QTRY_VERIFY(conversation().last().size() > typed);
    QTest::mouseClick(button("stop"), Qt::LeftButton);
    QVERIFY(edit()->hasFocus());
}

void TestPanelRoads::pictureIsEnlargedAndDownloaded()
{
    askForPicture(QStringLiteral("a boat"));
    QVERIFY(acceptPicture() && answerPicture("/p.png", Qt::red));
    QTRY_COMPARE(conversation().last(), QStringLiteral("AnswerImage: "));
    itemButton(2, "magnifierButton")->click();
    QWidget *const shown = viewer();
    QVERIFY(shown && shown->isVisible());
    f->server.expect("GET", "/p.png", ScriptedAnswer::bytes(pngBytes(Qt::red), "image/png"));
    QTest::mouseClick(shown->findChild<QPushButton *>(QStringLiteral("download")), Qt::LeftButton);
    QVERIFY(f->signalled.downloadPictureFinished.waitFor(1));
    f->server.expect("GET", "/p.png", ScriptedAnswer::bytes(pngBytes(Qt::red), "image/png"));
    itemButton(2, "downloadButton")->click();
    QVERIFY(f->signalled.downloadPictureFinished.waitFor(2));
    QTest::keyClick(shown, Qt::Key_Escape);
    QVERIFY(!shown->isVisible());
}

void TestPanelRoads::togglesReachTheService()
{
    QTest::mouseClick(button("modelBtn"), Qt::LeftButton);
    QTest::mouseClick(button("onlineSearch"), Qt::LeftButton);
    ask(QStringLiteral("deep"));
    QVERIFY(acceptText());
    const QJsonObject sent = f->server.requestsTo(ControllerFixture::textPath()).last().json();
    QCOMPARE(sent.value(QStringLiteral("enableDS")).toBool(), true);
    QCOMPARE(sent.value(QStringLiteral("enableNet")).toBool(), true);
}

QTEST_MAIN(TestPanelRoads)
#include "tst_panelroads.moc"
