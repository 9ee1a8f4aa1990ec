#include "samplepanel.h"

#include "support/waiting.h"
#include "widgets/answerwidget.h"
#include "widgets/askwidget.h"
#include "widgets/autoresizetextbrowser.h"
#include "widgets/chatitemwidget.h"
#include "widgets/mainwidget.h"

#include <QApplication>
#include <QLayout>
#include <QPainter>

namespace tavro::testsupport {

using namespace tavro::aiassistant;

namespace {

constexpr QSize panelSize(800, 900);

} // namespace

AIImage samplePicture(const QColor &sky)
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

SamplePanel::SamplePanel(const SampleTexts &sampleTexts)
    : texts(sampleTexts)
    , m_panel(new MainWidget)
{
    m_host.setStyleSheet(QStringLiteral("QWidget#host{background:#1B1B1D;}"));
    m_host.setObjectName(QStringLiteral("host"));
    m_panel->setParent(&m_host);
    m_panel->resize(panelSize);
    m_host.resize(panelSize);
    m_panel->setAIController(&m_controller);
    m_controller.loadTheme(":/aiassistant/theme/default_aiassistant.theme");
    useLanguage(QLatin1String(texts.language));
    m_panel->switchLanguage();
    m_panel->resetMainWidget();
    m_host.show();
    m_host.activateWindow();
    if (!eventually([this] { return m_host.isActiveWindow(); }))
        qFatal("the panel's window does not become active");
}

SamplePanel::~SamplePanel() = default;

AskWidget &SamplePanel::ask() const
{
    return *m_panel->findChild<AskWidget *>();
}

AnswerWidget &SamplePanel::answers() const
{
    return *m_panel->findChild<AnswerWidget *>();
}

ChatItemContext SamplePanel::textQuestion(const char *question) const
{
    ChatItemContext context;
    context.type = QuestionType::Text;
    context.question = question;
    return context;
}

ChatItemContext SamplePanel::pictureQuestion() const
{
    ChatItemContext context;
    context.type = QuestionType::Picture;
    context.question = texts.picture;
    return context;
}

void SamplePanel::askQuestion(const char *question)
{
    answers().addQuestionItem(textQuestion(question));
    panel().setAskAndAnswerAreaEnable(false);
    answers().addTextGeneratingItem();
}

void SamplePanel::askForPicture()
{
    ask().setQuestion(QString(), QuestionType::Picture, {}, false);
    answers().addQuestionItem(pictureQuestion());
    panel().setAskAndAnswerAreaEnable(false);
    answers().addImageGeneratingItem();
}

void SamplePanel::showAnswer(const char *answer)
{
    ChatItemContext context = textQuestion(texts.question);
    context.message = answer;
    answers().addAnswerTextItem(context);
    finishTyping();
}

void SamplePanel::finishTyping()
{
    QCoreApplication::processEvents(); // the list follows what was added
    auto *const browser = lastChild<AutoResizeTextBrowser>("textBrowser");
    auto *const item = lastChild<ChatItemWidget>("chatItemWidget");
    browser->showText(QString::fromStdString(item->context().message));
    Q_EMIT item->sigTypingFinished();
}

void SamplePanel::showPictures(int count)
{
    static const QVector<QColor> skies{QColor(240, 120, 70), QColor(90, 140, 200), QColor(120, 180, 120),
                                       QColor(170, 130, 190)};
    ChatItemContext context = pictureQuestion();
    for (int number = 0; number < count; ++number)
        context.images.push_back(samplePicture(skies.at(number % skies.size())));
    panel().setAskAndAnswerAreaEnable(true);
    answers().addAnswerImageItem(context);
}

void SamplePanel::openViewer(const AIImage &image, const QSize &size)
{
    m_viewer = std::make_unique<PictureViewerWidget>();
    m_viewer->setStyleSheet(m_panel->styleSheet());
    m_viewer->retranslate();
    m_viewer->resize(size);
    m_viewer->showImage(image);
    m_viewer->show();
    m_viewer->activateWindow();
    if (!eventually([this] { return m_viewer->isActiveWindow(); }))
        qFatal("the viewer does not become active");
}

QImage SamplePanel::picture()
{
    // The list scrolls to its end, and texts get their size, by calls that wait in the event loop.
    QCoreApplication::processEvents();
    settle();
    QCoreApplication::processEvents();
    QPixmap seen = window().grab();
    if (QWidget *const list = QApplication::activePopupWidget()) {
        QPainter painter(&seen);
        painter.drawPixmap(window().mapFromGlobal(list->mapToGlobal(QPoint())), list->grab());
    }
    return seen.toImage();
}

} // namespace tavro::testsupport
