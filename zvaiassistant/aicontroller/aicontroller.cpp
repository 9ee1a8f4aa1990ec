#include "aicontroller/aicontroller.h"

#include "aicontroller/aicontroller_p.h"
#include "theme/stylesheetbuilder.h"
#include "translate/translatemanager.h"

#include <QString>

#include <algorithm>
#include <limits>

namespace tavro::aiassistant {

namespace {

constexpr std::size_t headerInfoSize = 3;

int toMilliseconds(int seconds)
{
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<qint64>(qint64{seconds} * 1000, Limits::min(), Limits::max()));
}

} // namespace

AiController::AiController()
    : d(std::make_unique<Private>(this))
{ }

AiController::~AiController() = default;

void AiController::setZVRuntime(IZVRuntime *runtime)
{
    d->setRuntime(runtime);
}

void AiController::loadTheme(const std::string &path)
{
    const std::shared_ptr<Theme> theme = readTheme(path);
    // Each theme stays until the controller goes: a host may have taken a pointer to one.
    d->run([d = d.get(), theme] { d->themes.push_back(theme); });
    sigThemeChanged(finishedStyleSheet(*theme));
}

void AiController::switchLanguage(const std::string &language)
{
    TranslateManager::instance().switchLanguage(QString::fromStdString(language));
    sigLanguageChanged();
}

void AiController::resetMainWidget()
{
    sigResetMainWidget();
}

void AiController::setTimeout(int seconds)
{
    d->run([d = d.get(), seconds] { d->nTimeoutMs = toMilliseconds(seconds); });
}

void AiController::setSingleTickTime(int seconds)
{
    d->run([d = d.get(), seconds] { d->setTickSeconds(seconds); });
}

void AiController::setDomain(const QString &domain)
{
    d->run([d = d.get(), domain] { d->domain = domain; });
}

void AiController::setToken(const QString &token)
{
    d->run([d = d.get(), token] { d->setHeader("token", token); });
}

void AiController::setUserId(const QString &userId)
{
    d->run([d = d.get(), userId] { d->setHeader("userId", userId); });
}

void AiController::setNode(const QString &node)
{
    d->run([d = d.get(), node] { d->setHeader("node", node); });
}

void AiController::setMediaLibAllResources(const std::vector<std::pair<std::string, std::string>> &resources)
{
    if (d->isInOwnThread())
        d->setResources(resources);
    else
        d->post([d = d.get(), resources] { d->setResources(resources); });
}

void AiController::clear()
{
    d->run([d = d.get()] { d->shutDown(); });
}

void AiController::updateHeaderInfo(const std::vector<std::string> &info)
{
    if (info.size() != headerInfoSize)
        return;
    setToken(QString::fromStdString(info[0]));
    setUserId(QString::fromStdString(info[1]));
    setNode(QString::fromStdString(info[2]));
}

void AiController::clearHeaderInfo()
{
    updateHeaderInfo(std::vector<std::string>(headerInfoSize));
    sigResetMainWidget();
}

void AiController::createTimer()
{
    d->run([d = d.get()] { d->initTimer(); });
}

void AiController::startTimer()
{
    d->run([d = d.get()] { d->startTimer(); });
}

void AiController::generateText(const QString &text)
{
    d->run([d = d.get(), text] { d->onGenerateText(text); });
}

void AiController::generatePicture(const PictureGenerateInfo &info)
{
    d->run([d = d.get(), info] { d->onGeneratePicture(info); });
}

void AiController::activeDeepseekModel(bool active)
{
    d->run([d = d.get(), active] {
        d->bEnableDeepModel = active;
        d->beginNewConversation();
    });
    if (ProxyServerPort *const proxy = d->server("ActiveDeepseekFinished"))
        proxy->activeDeepseekFinished(active);
}

void AiController::activeOnlineSearch(bool active)
{
    d->run([d = d.get(), active] {
        d->bEnableOnlineSearch = active;
        d->beginNewConversation();
    });
    if (ProxyServerPort *const proxy = d->server("ActiveOnlineSearchFinished"))
        proxy->activeOnlineSearchFinished(active);
}

void AiController::stopGenerate()
{
    d->run([d = d.get()] { d->stopGenerate(); });
}

void AiController::clearHistoryRecord()
{
    d->run([d = d.get()] { d->beginNewConversation(); });
    if (ProxyServerPort *const proxy = d->server("ClearHistoryRecordFinished"))
        proxy->clearHistoryRecordFinished();
}

void AiController::clearCathe()
{
    d->run([d = d.get()] { d->resetConversation(); });
    if (ProxyServerPort *const proxy = d->server("ClearCatheFinished"))
        proxy->clearCatheFinished();
}

void AiController::downloadPicture(const QString &url)
{
    d->run([d = d.get(), url] { d->slotDownloadPicture(url); });
}

void AiController::queryImageData(const PicturedGeneratedPack &pack)
{
    d->run([d = d.get(), pack] { d->queryImageData(pack); });
}

} // namespace tavro::aiassistant
