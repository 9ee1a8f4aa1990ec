#include "panelstates.h"

#include "support/waiting.h"
#include "widgets/answerwidget.h"
#include "widgets/askwidget.h"
#include "widgets/autoresizetextbrowser_p.h"
#include "widgets/mainwidget.h"

#include <QComboBox>
#include <QFrame>
#include <QPushButton>
#include <QTextEdit>

namespace tavro::testsupport {

using namespace tavro::aiassistant;

namespace {

constexpr QSize screen(1920, 1080);
constexpr QSize laptopScreen(1366, 768);

void write(const SamplePanel &panel, const QString &text)
{
    panel.child<QTextEdit>("askEdit")->setPlainText(text);
    panel.child<QTextEdit>("askEdit")->moveCursor(QTextCursor::End);
    panel.ask().focusEdit();
}

void writeQuestion(SamplePanel &panel)
{
    write(panel, QString::fromUtf8(panel.texts.question));
    panel.child<QPushButton>("modelBtn")->setChecked(true);
    panel.child<QPushButton>("onlineSearch")->setChecked(true);
}

void writeTooMuch(SamplePanel &panel)
{
    write(panel, QString::fromUtf8(panel.texts.longAnswer).repeated(2));
}

void think(SamplePanel &panel)
{
    panel.askQuestion(panel.texts.question);
}

void type(SamplePanel &panel)
{
    panel.askQuestion(panel.texts.question);
    ChatItemContext context = panel.textQuestion(panel.texts.question);
    context.message = panel.texts.answer;
    panel.answers().addAnswerTextItem(context);
    auto *const browser = panel.lastChild<AutoResizeTextBrowser>("textBrowser");
    if (!eventually([browser] { return browser->toPlainText().size() > 20; }))
        qFatal("the answer is not typed");
    // A further character would come between the picture of this state and what is said of it.
    AutoResizeTextBrowserAccess::of(*browser).typingTimer.stop();
    AutoResizeTextBrowserAccess::of(*browser).cursorTimer.stop();
}

void answer(SamplePanel &panel)
{
    panel.askQuestion(panel.texts.question);
    panel.showAnswer(panel.texts.answer);
}

void converse(SamplePanel &panel)
{
    answer(panel);
    panel.askQuestion(panel.texts.otherQuestion);
    panel.showAnswer(panel.texts.longAnswer);
}

void converseAtLength(SamplePanel &panel)
{
    converse(panel);
    panel.askQuestion(panel.texts.otherQuestion);
    panel.showAnswer(panel.texts.longAnswer);
}

void fail(SamplePanel &panel, void (MainWidget::*report)(const ChatItemBasic &))
{
    panel.askQuestion(panel.texts.question);
    ChatItemBasic error = panel.textQuestion(panel.texts.question);
    error.message = panel.texts.serviceError;
    (panel.panel().*report)(error);
    panel.finishTyping();
}

void failByRequest(SamplePanel &panel)
{
    fail(panel, &MainWidget::slotRequestFailed);
}

void failByTime(SamplePanel &panel)
{
    fail(panel, &MainWidget::slotRequestTimeout);
}

void failByService(SamplePanel &panel)
{
    fail(panel, &MainWidget::slotDealRequestError);
}

void choosePictureMode(SamplePanel &panel)
{
    panel.ask().setQuestion(QString(), QuestionType::Picture, {}, false);
}

template <int list>
void openList(SamplePanel &panel)
{
    choosePictureMode(panel);
    panel.child<QComboBox>(list == 0 ? "ratioSelect" : "styleSelect")->showPopup();
}

void drawPicture(SamplePanel &panel)
{
    panel.askForPicture();
}

void showPicture(SamplePanel &panel)
{
    panel.askForPicture();
    panel.showPictures(1);
}

void showManyPictures(SamplePanel &panel)
{
    for (const int count : {1, 2, 4}) {
        panel.askForPicture();
        panel.showPictures(count);
    }
    panel.lastChild<QFrame>("imageButtonFrame")->show();
}

void showNoPicture(SamplePanel &panel)
{
    panel.askForPicture();
    ChatItemContext context = panel.pictureQuestion();
    context.images.emplace_back();
    panel.panel().setAskAndAnswerAreaEnable(true);
    panel.answers().addAnswerImageItem(context);
}

void view(SamplePanel &panel)
{
    panel.openViewer(samplePicture(QColor(240, 120, 70)), screen);
}

void viewOnSmallScreen(SamplePanel &panel)
{
    panel.openViewer(samplePicture(QColor(240, 120, 70)), laptopScreen);
}

void viewNothing(SamplePanel &panel)
{
    panel.openViewer(AIImage(), screen);
}

void focus(QWidget *control)
{
    control->setFocus(Qt::TabFocusReason);
}

void focusModes(SamplePanel &panel)
{
    focus(panel.child("askAndAnwser"));
}

void focusOtherMode(SamplePanel &panel)
{
    focus(panel.child("generateImage"));
}

void focusModel(SamplePanel &panel)
{
    focus(panel.child("modelBtn"));
}

void focusCheckedSearch(SamplePanel &panel)
{
    panel.child<QPushButton>("onlineSearch")->setChecked(true);
    focus(panel.child("onlineSearch"));
}

void focusSend(SamplePanel &panel)
{
    writeQuestion(panel);
    focus(panel.child("sendMsg"));
}

void focusStop(SamplePanel &panel)
{
    think(panel);
    focus(panel.child("stop"));
}

void focusRatio(SamplePanel &panel)
{
    choosePictureMode(panel);
    focus(panel.child("ratioSelect"));
}

void focusClear(SamplePanel &panel)
{
    focus(panel.child("clearButton"));
}

void focusList(SamplePanel &panel)
{
    converseAtLength(panel);
    focus(panel.child("scrollArea"));
}

void focusText(SamplePanel &panel)
{
    answer(panel);
    focus(panel.lastChild("textBrowser"));
}

void focusCopy(SamplePanel &panel)
{
    answer(panel);
    focus(panel.lastChild("copyButton"));
}

void focusPicture(SamplePanel &panel)
{
    showManyPictures(panel);
    QCoreApplication::processEvents();
    focus(panel.lastChild("imageButtonFrame")->parentWidget());
}

void focusPictureButton(SamplePanel &panel)
{
    showManyPictures(panel);
    QCoreApplication::processEvents();
    focus(panel.lastChild("magnifierButton"));
}

} // namespace

const std::vector<PanelState> &panelStates()
{
    static const std::vector<PanelState> all{
        {"welcome", [](SamplePanel &) {}},
        {"written", writeQuestion},
        {"limit", writeTooMuch},
        {"thinking", think},
        {"typing", type},
        {"answered", answer},
        {"conversation", converse},
        {"longconversation", converseAtLength},
        {"requesterror", failByRequest},
        {"timeout", failByTime},
        {"serviceerror", failByService},
        {"picturemode", choosePictureMode},
        {"ratiolist", openList<0>, true},
        {"stylelist", openList<1>},
        {"drawing", drawPicture},
        {"picture", showPicture},
        {"manypictures", showManyPictures},
        {"nopicture", showNoPicture},
        {"viewer", view},
        {"viewersmall", viewOnSmallScreen},
        {"viewernothing", viewNothing, true},
        {"focus-mode", focusModes, true},
        {"focus-othermode", focusOtherMode, true},
        {"focus-model", focusModel, true},
        {"focus-search", focusCheckedSearch, true},
        {"focus-send", focusSend, true},
        {"focus-stop", focusStop, true},
        {"focus-ratio", focusRatio, true},
        {"focus-clear", focusClear, true},
        {"focus-list", focusList, true},
        {"focus-text", focusText, true},
        {"focus-copy", focusCopy, true},
        {"focus-picture", focusPicture, true},
        {"focus-picturebutton", focusPictureButton, true},
    };
    return all;
}

} // namespace tavro::testsupport
