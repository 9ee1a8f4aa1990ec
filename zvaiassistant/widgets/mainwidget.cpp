#include "widgets/mainwidget.h"

#include "translate/lookup.h"
#include "translate/translatemanager.h"
#include "widgets/answerwidget.h"
#include "widgets/askwidget.h"
#include "widgets/mainwidget_p.h"
#include "widgets/pictureviewerwidget.h"
#include "zvtranslate/zvtranslate.h"

// Before the first connection: it makes the panel a receiver that is dropped when it goes.
#include <sigslot/adapter/qt.hpp>

#include <QCoreApplication>
#include <QDir>

namespace tavro::aiassistant {

namespace {

QStringList filesIn(const QString &folder)
{
    QStringList files;
    const QStringList names = QDir(folder).entryList(QDir::Files | QDir::NoDotAndDotDot);
    for (const QString &name : names)
        files << folder + QLatin1Char('/') + name;
    return files;
}

void loadLanguageFiles()
{
    const QString shared = QCoreApplication::applicationDirPath() + QStringLiteral("/../share");
    // Of two texts for a key the later file wins: a host may replace the module's own.
    TranslateManager::instance().loadLanguageFiles(filesIn(QStringLiteral(":/aiassistant/language")));
    TranslateManager::instance().loadLanguageFiles(filesIn(QStringLiteral(":/aiassistant/accessibility")));
    TranslateManager::instance().loadLanguageFiles(filesIn(shared + QStringLiteral("/language/zvaiassistant")));
}

ChatItemContext contextOf(const ChatItemBasic &basic)
{
    ChatItemContext context;
    static_cast<ChatItemBasic &>(context) = basic;
    return context;
}

ChatItemContext contextOf(const ChatItemBasic &basic, const char *messageKey)
{
    ChatItemContext context = contextOf(basic);
    context.message = text(messageKey).toStdString();
    return context;
}

} // namespace

MainWidget::MainWidget()
    : d(std::make_unique<Private>(this))
{
    loadLanguageFiles();
    if (TranslateManager::instance().translator().hasTexts())
        switchLanguage();
}

MainWidget::~MainWidget() = default;

void MainWidget::setAIController(AiController *controller)
{
    d->controller = controller;
    if (!controller)
        return;
    controller->sigThemeChanged.connect(&MainWidget::updateStyleSheet, this);
    controller->sigLanguageChanged.connect(&MainWidget::switchLanguage, this);
    controller->sigGenerateTextFinished.connect(&MainWidget::slotTextGeneratedFinished, this);
    controller->sigGeneratePictureFinished.connect(&MainWidget::slotPictureGeneratedFinished, this);
    controller->sigRequestFailed.connect(&MainWidget::slotRequestFailed, this);
    controller->sigErrorOccured.connect(&MainWidget::slotDealRequestError, this);
    controller->sigRequestTimeout.connect(&MainWidget::slotRequestTimeout, this);
    controller->sigDeleteGeneratingItem.connect(&MainWidget::slotDeleteGeneratingItem, this);
    controller->sigResetMainWidget.connect(&MainWidget::slotResetMainWidget, this);
}

void MainWidget::setAskAndAnswerAreaEnable(bool enable)
{
    d->askWidget->setAskAreaEnable(enable);
    d->answerWidget->setItemsEnabled(enable);
}

void MainWidget::deleteGeneratingItem()
{
    d->answerWidget->deleteGeneratingItem();
}

void MainWidget::onStopGenerateFinished()
{
    d->askWidget->setAskAreaEnable(true);
}

void MainWidget::resetMainWidget()
{
    QMetaObject::invokeMethod(d.get(), "onResetMainWidget", Qt::AutoConnection);
}

void MainWidget::switchLanguage()
{
    d->askWidget->retranslate();
    d->answerWidget->retranslate();
    d->pictureViewer->retranslate();
}

void MainWidget::updateStyleSheet(const QString &sheet)
{
    QMetaObject::invokeMethod(d.get(), "onUpdateStyleSheet", Qt::AutoConnection, Q_ARG(QString, sheet));
}

void MainWidget::slotTextGeneratedFinished(const TextGeneratedPack &pack)
{
    QMetaObject::invokeMethod(d.get(), "onTextGeneratedFinished", Qt::AutoConnection, Q_ARG(TextGeneratedPack, pack));
}

void MainWidget::slotPictureGeneratedFinished(const QString &question, const PictureGenerateInfo &info,
                                              const AIImage &image)
{
    QMetaObject::invokeMethod(d.get(), "onPictureGeneratedFinished", Qt::AutoConnection, Q_ARG(QString, question),
                              Q_ARG(PictureGenerateInfo, info), Q_ARG(AIImage, image));
}

void MainWidget::slotRequestFailed(const ChatItemBasic &basic)
{
    const ChatItemContext context = contextOf(basic, "RequestError");
    QMetaObject::invokeMethod(d.get(), "onRequestFailed", Qt::AutoConnection, Q_ARG(ChatItemContext, context));
}

void MainWidget::slotRequestTimeout(const ChatItemBasic &basic)
{
    const ChatItemContext context = contextOf(basic, "ResponseOut");
    QMetaObject::invokeMethod(d.get(), "dealRequestError", Qt::AutoConnection, Q_ARG(ChatItemContext, context));
}

void MainWidget::slotDealRequestError(const ChatItemBasic &basic)
{
    const ChatItemContext context = contextOf(basic);
    QMetaObject::invokeMethod(d.get(), "dealRequestError", Qt::AutoConnection, Q_ARG(ChatItemContext, context));
}

void MainWidget::slotDeleteGeneratingItem()
{
    QMetaObject::invokeMethod(d.get(), "onDeleteGeneratingItem", Qt::AutoConnection);
}

void MainWidget::slotResetMainWidget()
{
    QMetaObject::invokeMethod(d.get(), "onResetMainWidget", Qt::AutoConnection);
}

} // namespace tavro::aiassistant
