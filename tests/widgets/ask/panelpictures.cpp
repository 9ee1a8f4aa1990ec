#include "aicontroller/aicontroller.h"
#include "panelsupport.h"
#include "support/waiting.h"
#include "widgets/answerwidget.h"
#include "widgets/askwidget.h"
#include "widgets/mainwidget.h"
#include "widgets/pictureviewerwidget.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QEventLoop>
#include <QPainter>
#include <QPushButton>
#include <QTextEdit>
#include <QTimer>

#include <memory>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

// Draws the panel in each state and language: panelpictures <folder>. The scale comes from QT_SCALE_FACTOR.
namespace {

struct Language {
    const char *name;
    const char *question;
    const char *answer;
};

const Language languages[] = {
    {"en", "Play the harbour clip on layer 2 at half volume.",
     "The harbour clip now plays on layer 2 at 50 % volume.\nYou can say \"stop layer 2\" at any time. If the clip "
     "shall "
     "come back after the news block, tell me the program and the output, and I will put it there as well."},
    {"zh_CN", "在图层2上以一半音量播放海港片段。",
     "海港片段现在在图层2上以50%"
     "的音量播放。\n您可以随时说“停止图层2”。如果新闻之后还要再次播放这个片段，请告诉我节目和输出，我也会把它放到那里，"
     "并且保持同样的音量。"},
    {"zh_TW", "在圖層2上以一半音量播放海港片段。",
     "海港片段現在在圖層2上以50%"
     "的音量播放。\n您可以隨時說「停止圖層2」。如果新聞之後還要再次播放這個片段，請告訴我節目和輸出，我也會把它放到那裡"
     "。"},
    {"korean", "레이어 2에서 항구 클립을 절반 볼륨으로 재생해 줘.",
     "항구 클립이 지금 레이어 2에서 50% 볼륨으로 재생됩니다.\n언제든지 \"레이어 2 중지\"라고 말씀하세요. 뉴스 뒤에 "
     "다시 재생하려면 프로그램과 출력을 알려 주세요."},
    {"rus", "Запусти клип с гаванью на слое 2 с половинной громкостью.",
     "Клип с гаванью сейчас воспроизводится на слое 2 с громкостью 50 %.\nВ любой момент скажите «останови слой 2». "
     "Если "
     "клип нужен снова после новостей, назовите программу и выход."},
};

AIImage landscape(QColor sky)
{
    QPixmap pixmap(1920, 1080);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient light(0, 0, 0, 700);
    light.setColorAt(0, sky.darker(250));
    light.setColorAt(1, sky);
    painter.fillRect(pixmap.rect(), light);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 214, 140));
    painter.drawEllipse(QPoint(1350, 420), 130, 130);
    painter.setBrush(QColor(30, 45, 66));
    painter.drawPolygon(
        QPolygon({{0, 760}, {420, 420}, {760, 700}, {1100, 500}, {1920, 780}, {1920, 1080}, {0, 1080}}));
    AIImage image;
    image.pixmap = pixmap;
    image.description = "hills at sunset";
    image.url = "http://pictures/1";
    return image;
}

/// Lets the animations go on for a while, for a picture of their middle.
void pass(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

class Panel {
public:
    Panel(const Language &language, const QDir &folder)
        : m_language(language)
        , m_folder(folder)
    {
        m_host.setStyleSheet(QStringLiteral("QWidget#host{background:#1B1B1D;}"));
        m_host.setObjectName(QStringLiteral("host"));
        m_panel = new MainWidget;
        m_panel->setParent(&m_host);
        m_panel->resize(800, 900);
        m_panel->move(0, 0);
        m_host.resize(800, 900);
        m_panel->setAIController(&m_controller);
        m_controller.loadTheme(":/aiassistant/theme/default_aiassistant.theme");
        useLanguage(QLatin1String(language.name));
        m_panel->switchLanguage();
        m_panel->resetMainWidget();
        m_host.show();
        m_host.activateWindow();
    }

    void draw(const char *state)
    {
        settle();
        pass(60);
        save(m_host, state);
    }

    void save(QWidget &window, const char *state)
    {
        const QString name = QStringLiteral("%1-%2-%3.png")
                                 .arg(QLatin1String(state), QLatin1String(m_language.name))
                                 .arg(window.devicePixelRatioF());
        window.grab().save(m_folder.filePath(name));
    }

    ChatItemContext question() const
    {
        ChatItemContext context;
        context.type = QuestionType::Text;
        context.question = m_language.question;
        context.message = m_language.answer;
        return context;
    }

    template <typename Widget>
    Widget *child(const char *name) const
    {
        return m_panel->findChild<Widget *>(QLatin1String(name));
    }
    AskWidget &ask() const { return *m_panel->findChild<AskWidget *>(); }
    AnswerWidget &answers() const { return *m_panel->findChild<AnswerWidget *>(); }
    MainWidget &panel() const { return *m_panel; }
    QWidget &host() { return m_host; }

private:
    const Language &m_language;
    const QDir m_folder;
    AiController m_controller;
    QWidget m_host;
    MainWidget *m_panel;
};

void drawConversation(Panel &panel)
{
    panel.draw("1-welcome");
    panel.child<QTextEdit>("askEdit")->setPlainText(QString::fromStdString(panel.question().question));
    panel.child<QTextEdit>("askEdit")->moveCursor(QTextCursor::End);
    panel.ask().focusEdit();
    panel.child<QPushButton>("modelBtn")->setChecked(true);
    panel.draw("2-written");
    panel.child<QTextEdit>("askEdit")->clear();
    panel.answers().addQuestionItem(panel.question());
    panel.panel().setAskAndAnswerAreaEnable(false);
    panel.answers().addTextGeneratingItem();
    panel.draw("3-thinking");
    panel.answers().addAnswerTextItem(panel.question());
    pass(2000);
    panel.draw("4-typing");
    if (!eventually([&] { return panel.child<QTextEdit>("askEdit")->isEnabled(); }))
        qFatal("the answer was not typed to its end");
    panel.draw("5-answered");
}

void drawPictures(Panel &panel)
{
    panel.answers().reset();
    panel.ask().setQuestion(QString(), QuestionType::Picture, {}, false);
    panel.draw("6-picturemode");
    panel.answers().addQuestionItem(panel.question());
    panel.answers().addImageGeneratingItem();
    panel.panel().setAskAndAnswerAreaEnable(false);
    panel.draw("7-drawing");
    panel.panel().setAskAndAnswerAreaEnable(true);
    ChatItemContext context = panel.question();
    context.images = {landscape(QColor(240, 120, 70)), landscape(QColor(90, 140, 200)),
                      landscape(QColor(120, 180, 120))};
    panel.answers().addAnswerImageItem(context);
    settle();
    pass(60);
    const auto bars = panel.answers().findChildren<QFrame *>(QStringLiteral("imageButtonFrame"));
    bars.at(1)->show();
    panel.draw("8-pictures");
    bars.at(2)->parentWidget()->setFocus(Qt::TabFocusReason);
    panel.draw("9-picturefocus");
    PictureViewerWidget viewer;
    viewer.setStyleSheet(defaultStyleSheet());
    viewer.retranslate();
    viewer.resize(1920, 1080);
    viewer.showImage(context.images.front());
    viewer.show();
    panel.save(viewer, "viewer");
}

void drawFocus(Panel &panel)
{
    // The viewer had the keyboard.
    panel.host().raise();
    panel.host().activateWindow();
    if (!eventually([&] { return panel.host().isActiveWindow(); }))
        qFatal("the panel's window does not become active");
    panel.answers().reset();
    panel.answers().addQuestionItem(panel.question());
    panel.ask().reset();
    panel.child<QTextEdit>("askEdit")->setPlainText(QStringLiteral("x"));
    for (const char *name : {"askAndAnwser", "modelBtn", "onlineSearch", "sendMsg", "clearButton"}) {
        panel.child<QWidget>(name)->setFocus(Qt::TabFocusReason);
        panel.draw((QByteArray("focus-") + name).constData());
    }
    panel.ask().setQuestion(QString(), QuestionType::Picture, {}, false);
    panel.child<QComboBox>("ratioSelect")->setFocus(Qt::TabFocusReason);
    panel.draw("focus-ratioSelect");
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    const QDir folder(application.arguments().value(1, QStringLiteral(".")));
    folder.mkpath(QStringLiteral("."));
    for (const Language &language : languages) {
        Panel panel(language, folder);
        drawConversation(panel);
        drawPictures(panel);
        if (qstrcmp(language.name, "en") == 0)
            drawFocus(panel);
    }
    return 0;
}
