#pragma once

#include "aicontroller/aicontroller.h"
#include "widgets/mainwidget.h"

#include <QPointer>

#include <memory>

namespace tavro::aiassistant {

class AnswerWidget;
class AskWidget;
class PictureViewerWidget;

/// Joins the panel's widgets with each other and with the controller. What other threads report reaches its slots by
/// their names.
class Q_DECL_HIDDEN MainWidget::Private : public QObject {
    Q_OBJECT

public:
    explicit Private(MainWidget *owner);
    ~Private() override;

    QPointer<AiController> controller;
    MainWidget *const q;
    AnswerWidget *answerWidget = nullptr;
    AskWidget *askWidget = nullptr;
    std::unique_ptr<PictureViewerWidget> pictureViewer;

public Q_SLOTS:
    void slotModifyBtnClicked(const QString &question, QuestionType type, const PictureGenerateInfo &picInfo);
    void slotLookImageBtnClicked(const AIImage &image);
    void slotDownloadBtnClicked(const AIImage &image);
    void slotTryAgainTextBtnClicked(const ChatItemContext &context);
    void slotTryAgainImageBtnClicked(const QString &question, const PictureGenerateInfo &picInfo);
    void slotSendToGenerateText(const QString &strText);
    void slotSendToGeneratePiture(const PictureGenerateInfo &info);
    void slotStopToGenerate();
    void slotActiveDeepSeekModel(bool bActive);
    void slotActiverOnlineSearch(bool bActive);
    void slotDownloadPicture(const QString &strUrl);
    void slotClearAnswersAndQuestionsRecord();
    void dealRequestError(const ChatItemContext &context);
    void onUpdateStyleSheet(const QString &strQSSContent);
    void onResetMainWidget();
    void onTextGeneratedFinished(const TextGeneratedPack &pack);
    void onPictureGeneratedFinished(const QString &strQuestion, const PictureGenerateInfo &info, const AIImage &image);
    void onRequestFailed(const ChatItemContext &context);
    void onDeleteGeneratingItem();

private:
    void build();
    void connectAskWidget();
    void connectAnswerWidget();
    bool hasController(const char *wish);
    void beginWaiting();
    void later(void (AnswerWidget::*operation)());
};

/// Gives the private part to tests.
struct MainWidgetAccess {
    static MainWidget::Private &of(MainWidget &widget) { return *widget.d; }
};

} // namespace tavro::aiassistant
