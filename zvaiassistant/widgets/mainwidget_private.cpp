#include "common/loggingcategories.h"
#include "widgets/answerwidget.h"
#include "widgets/askwidget.h"
#include "widgets/mainwidget_p.h"
#include "widgets/pictureviewerwidget.h"

#include <QFrame>
#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

namespace tavro::aiassistant {

namespace {

constexpr int panelWidth = 800;

QFrame *makeLine(QWidget *parent)
{
    auto *const line = new QFrame(parent);
    line->setObjectName(QStringLiteral("line"));
    line->setFixedSize(panelWidth, 1);
    line->setFrameShadow(QFrame::Plain);
    line->setFrameShape(QFrame::HLine);
    line->setLineWidth(1);
    return line;
}

void registerRecords()
{
    qRegisterMetaType<ChatItemContext>("ChatItemContext");
    qRegisterMetaType<TextGeneratedPack>("TextGeneratedPack");
    qRegisterMetaType<PictureGenerateInfo>("PictureGenerateInfo");
    qRegisterMetaType<AIImage>("AIImage");
}

ChatItemContext textQuestion(const QString &question)
{
    ChatItemContext context;
    context.type = QuestionType::Text;
    context.question = question.toStdString();
    return context;
}

ChatItemContext pictureQuestion(const std::string &question, const PictureGenerateInfo &info)
{
    ChatItemContext context;
    context.type = QuestionType::Picture;
    context.question = question;
    context.picInfo = info;
    return context;
}

} // namespace

MainWidget::Private::Private(MainWidget *owner)
    : q(owner)
{
    build();
    pictureViewer = std::make_unique<PictureViewerWidget>();
    registerRecords();
    connectAskWidget();
    connectAnswerWidget();
    connect(pictureViewer.get(), &PictureViewerWidget::sigDownloadPicture, this, &Private::slotDownloadPicture);
}

MainWidget::Private::~Private() = default;

void MainWidget::Private::build()
{
    q->setFixedWidth(panelWidth);
    auto *const column = new QVBoxLayout(q);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    answerWidget = new AnswerWidget(q);
    QFrame *const line = makeLine(q);
    askWidget = new AskWidget(q);
    // The stretch below the line must not take half of the conversation's room.
    column->addWidget(answerWidget, 1);
    column->addWidget(line);
    column->addStretch();
    column->addWidget(askWidget);
}

void MainWidget::Private::connectAskWidget()
{
    connect(askWidget, &AskWidget::sigSendToGenerateText, this, &Private::slotSendToGenerateText);
    connect(askWidget, &AskWidget::sigSendToGenrateImage, this, &Private::slotSendToGeneratePiture);
    connect(askWidget, &AskWidget::sigStopToGenerate, this, &Private::slotStopToGenerate);
    connect(askWidget, &AskWidget::sigActiveDeepSeekModel, this, &Private::slotActiveDeepSeekModel);
    connect(askWidget, &AskWidget::sigActiverOnlineSearch, this, &Private::slotActiverOnlineSearch);
}

void MainWidget::Private::connectAnswerWidget()
{
    connect(answerWidget, &AnswerWidget::sigModifyButtonClicked, this, &Private::slotModifyBtnClicked);
    connect(answerWidget, &AnswerWidget::sigDownloadButtonClicked, this, &Private::slotDownloadBtnClicked);
    connect(answerWidget, &AnswerWidget::sigLookImageButtonClicked, this, &Private::slotLookImageBtnClicked);
    connect(answerWidget, &AnswerWidget::sigTryAgainImageButtonClicked, this, &Private::slotTryAgainImageBtnClicked);
    connect(answerWidget, &AnswerWidget::sigTryAgainQuestionButtonClicked, this, &Private::slotTryAgainTextBtnClicked);
    connect(answerWidget, &AnswerWidget::sigClearAllAnswers, this, &Private::slotClearAnswersAndQuestionsRecord);
    connect(answerWidget, &AnswerWidget::sigTypingFinished, this, [this] { q->setAskAndAnswerAreaEnable(true); });
    connect(answerWidget, &AnswerWidget::sigNeedSetFocus, this, [this] { askWidget->focusEdit(); });
}

bool MainWidget::Private::hasController(const char *wish)
{
    if (controller)
        return true;
    qCWarning(lcPanel) << "no controller is set, so this is not carried out:" << wish;
    // Nobody will answer and end the waiting.
    q->setAskAndAnswerAreaEnable(true);
    return false;
}

void MainWidget::Private::beginWaiting()
{
    q->setAskAndAnswerAreaEnable(false);
    // A question that was stopped may have left its placeholder, and only one is removed with an answer.
    answerWidget->deleteGeneratingItem();
}

void MainWidget::Private::later(void (AnswerWidget::*operation)())
{
    // So that the question is laid out first. Posted, because posted calls keep their order: an outcome that another
    // thread reports cannot come before the placeholder, which would then stay for ever.
    QMetaObject::invokeMethod(answerWidget, operation, Qt::QueuedConnection);
}

void MainWidget::Private::slotModifyBtnClicked(const QString &question, QuestionType type,
                                               const PictureGenerateInfo &picInfo)
{
    askWidget->setQuestion(question, type, picInfo, true);
}

void MainWidget::Private::slotLookImageBtnClicked(const AIImage &image)
{
    pictureViewer->showImage(image);
    if (const QScreen *const screen = QGuiApplication::screenAt(q->mapToGlobal(QPoint(0, 0)))) {
        pictureViewer->move(screen->geometry().topLeft());
        // Without a window manager nobody else makes a full-screen window as large as the screen.
        pictureViewer->resize(screen->geometry().size());
    }
    pictureViewer->raise();
    pictureViewer->showFullScreen();
    pictureViewer->activateWindow();
}

void MainWidget::Private::slotDownloadBtnClicked(const AIImage &image)
{
    slotDownloadPicture(QString::fromStdString(image.url));
}

void MainWidget::Private::slotTryAgainTextBtnClicked(const ChatItemContext &context)
{
    const bool isText = context.type == QuestionType::Text;
    const bool isPicture = context.type == QuestionType::Picture;
    if ((!isText && !isPicture) || !hasController("try again"))
        return;
    beginWaiting();
    later(isText ? &AnswerWidget::addTextGeneratingItem : &AnswerWidget::addImageGeneratingItem);
    const QString question = QString::fromStdString(context.question);
    askWidget->setQuestion(question, context.type, isText ? PictureGenerateInfo() : context.picInfo, false);
    if (isText)
        controller->textToGenerateText(question);
    else
        controller->textToGeneratePicture(context.picInfo);
}

void MainWidget::Private::slotTryAgainImageBtnClicked(const QString &question, const PictureGenerateInfo &picInfo)
{
    askWidget->tryAgainPicture(question, picInfo);
}

void MainWidget::Private::slotSendToGenerateText(const QString &strText)
{
    if (!hasController("text question"))
        return;
    beginWaiting();
    answerWidget->addQuestionItem(textQuestion(strText));
    later(&AnswerWidget::addTextGeneratingItem);
    controller->textToGenerateText(strText);
}

void MainWidget::Private::slotSendToGeneratePiture(const PictureGenerateInfo &info)
{
    if (!hasController("picture"))
        return;
    beginWaiting();
    answerWidget->addQuestionItem(pictureQuestion(info.content, info));
    later(&AnswerWidget::addImageGeneratingItem);
    controller->textToGeneratePicture(info);
}

void MainWidget::Private::slotStopToGenerate()
{
    if (controller)
        controller->toStopGenerate();
    answerWidget->stop();
}

void MainWidget::Private::slotActiveDeepSeekModel(bool bActive)
{
    if (hasController("deep model"))
        controller->toActiveDeepSeekModel(bActive);
}

void MainWidget::Private::slotActiverOnlineSearch(bool bActive)
{
    if (hasController("online search"))
        controller->toActiveOnlineSearch(bActive);
}

void MainWidget::Private::slotDownloadPicture(const QString &strUrl)
{
    if (hasController("download"))
        controller->toDownloadPicture(strUrl);
}

void MainWidget::Private::slotClearAnswersAndQuestionsRecord()
{
    if (controller)
        controller->toClearHistoryRecord();
}

void MainWidget::Private::dealRequestError(const ChatItemContext &context)
{
    q->setAskAndAnswerAreaEnable(true);
    answerWidget->addErrorItem(context);
    q->deleteGeneratingItem();
}

void MainWidget::Private::onUpdateStyleSheet(const QString &strQSSContent)
{
    // In a host's window with a sheet of its own, Qt would pass over the controls that were shown before the panel was.
    q->ensurePolished();
    for (QWidget *const widget : std::initializer_list<QWidget *>{q, pictureViewer.get()}) {
        // Setting an equal sheet costs as much as a new one.
        if (widget->styleSheet() != strQSSContent)
            widget->setStyleSheet(strQSSContent);
    }
}

void MainWidget::Private::onResetMainWidget()
{
    askWidget->reset();
    answerWidget->reset();
    if (controller)
        controller->clearCathe();
}

void MainWidget::Private::onTextGeneratedFinished(const TextGeneratedPack &pack)
{
    ChatItemContext context;
    context.type = QuestionType::Text;
    context.question = pack.question;
    context.message = pack.answer;
    answerWidget->addAnswerTextItem(context);
}

void MainWidget::Private::onPictureGeneratedFinished(const QString &strQuestion, const PictureGenerateInfo &info,
                                                     const AIImage &image)
{
    q->setAskAndAnswerAreaEnable(true);
    ChatItemContext context = pictureQuestion(strQuestion.toStdString(), info);
    context.images.push_back(image);
    answerWidget->addAnswerImageItem(context);
}

void MainWidget::Private::onRequestFailed(const ChatItemContext &context)
{
    dealRequestError(context);
}

void MainWidget::Private::onDeleteGeneratingItem()
{
    q->deleteGeneratingItem();
    q->setAskAndAnswerAreaEnable(true);
}

} // namespace tavro::aiassistant
