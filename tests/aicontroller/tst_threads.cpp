#include "cachefolder.h"
#include "controllerfixture.h"
#include "picturebytes.h"
#include "threadedcontroller.h"

#include <QJsonArray>
#include <QTest>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace {

const QByteArray picturePath = QByteArrayLiteral("/pictures/1");

using Resources = std::vector<std::pair<std::string, std::string>>;

Resources library(int entries)
{
    Resources resources;
    for (int entry = 0; entry < entries; ++entry)
        resources.emplace_back("id " + std::to_string(entry), "name " + std::to_string(entry));
    return resources;
}

/// A controller in its own thread, a host with a thread of its own, and a service that answers whatever it is asked.
struct Scene {
    Scene()
    {
        runtime.setNeedsDispatch(true);
        home->setZVRuntime(&runtime);
        home->createTimer();
        home->setSingleTickTime(0);
        home->setDomain(server.url());
        answerAlways();
        home.moveAway();
    }

    // The answer is an address, which does for a text question too.
    void answerAlways()
    {
        const QJsonObject command{{QStringLiteral("cmdType"), 0}};
        const QJsonObject data{{QStringLiteral("answers"), QJsonArray{url()}},
                               {QStringLiteral("agentCmds"), QJsonArray{command}}};
        server.always("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
        server.always("POST", ControllerFixture::picturePath(), ControllerFixture::accepted());
        server.always("POST", ControllerFixture::resultPath(), ControllerFixture::ready(data));
        server.always("GET", picturePath, ScriptedAnswer::bytes(picturebytes::encoded("png"), "image/png"));
    }

    QString url() const { return server.url() + QString::fromLatin1(picturePath); }

    PicturedGeneratedPack pack() const
    {
        PicturedGeneratedPack pack;
        pack.content = "a mountain";
        pack.source.url = url().toStdString();
        return pack;
    }

    bool isIdle() const
    {
        bool idle = false;
        home.inThread([&](auto &d) {
            idle = d.requestManager->template findChildren<QNetworkReply *>().isEmpty()
                && d.downloadManager->template findChildren<QNetworkReply *>().isEmpty();
        });
        return idle;
    }

    LogCatcher log;
    CacheFolder cache;
    ScriptedServer server;
    FakeRuntime runtime;
    ThreadedController home;
};

using Operation = std::function<void(AiController &, const Scene &)>;

std::vector<Operation> configuration()
{
    return {
        [](AiController &c, const Scene &) { c.setTimeout(60); },
        [](AiController &c, const Scene &) { c.createTimer(); },
        [](AiController &c, const Scene &) { c.setSingleTickTime(0); },
        [](AiController &c, const Scene &s) { c.setDomain(s.server.url()); },
        [](AiController &c, const Scene &) { c.setToken(QStringLiteral("token")); },
        [](AiController &c, const Scene &) { c.setUserId(QStringLiteral("user")); },
        [](AiController &c, const Scene &) { c.setNode(QStringLiteral("node")); },
        [](AiController &c, const Scene &) { c.setMediaLibAllResources(library(2)); },
        [](AiController &c, const Scene &) { c.setMediaLibAllResources(library(5)); },
        [](AiController &c, const Scene &) {
            c.updateHeaderInfo({"a", "b", "c"});
        },
        [](AiController &c, const Scene &) {
            c.toUpdateHeaderInfo({"d", "e", "f"});
        },
        [](AiController &c, const Scene &) { c.clearHeaderInfo(); },
        [](AiController &c, const Scene &) { c.toClearHeaderInfo(); },
        [](AiController &c, const Scene &) { c.resetMainWidget(); },
        [](AiController &c, const Scene &) { c.loadTheme(":/aiassistant/theme/default_aiassistant.theme"); },
        [](AiController &c, const Scene &) { c.switchLanguage("en"); },
    };
}

std::vector<Operation> questions()
{
    return {
        [](AiController &c, const Scene &) { c.generateText(QStringLiteral("question")); },
        [](AiController &c, const Scene &) { c.textToGenerateText(QStringLiteral("question")); },
        [](AiController &c, const Scene &) { c.generatePicture(ControllerFixture::pictureInfo()); },
        [](AiController &c, const Scene &) { c.textToGeneratePicture(ControllerFixture::pictureInfo()); },
        [](AiController &c, const Scene &) { c.startTimer(); },
        [](AiController &c, const Scene &) { c.stopGenerate(); },
        [](AiController &c, const Scene &) { c.toStopGenerate(); },
        [](AiController &c, const Scene &) { c.activeDeepseekModel(true); },
        [](AiController &c, const Scene &) { c.toActiveDeepSeekModel(false); },
        [](AiController &c, const Scene &) { c.activeOnlineSearch(true); },
        [](AiController &c, const Scene &) { c.toActiveOnlineSearch(false); },
        [](AiController &c, const Scene &) { c.clearHistoryRecord(); },
        [](AiController &c, const Scene &) { c.toClearHistoryRecord(); },
        [](AiController &c, const Scene &) { c.clearCathe(); },
        [](AiController &c, const Scene &) { c.toClearCathe(); },
        [](AiController &c, const Scene &s) { c.downloadPicture(s.url()); },
        [](AiController &c, const Scene &s) { c.toDownloadPicture(s.url()); },
        [](AiController &c, const Scene &s) { c.queryImageData(s.pack()); },
        [](AiController &c, const Scene &) { c.notifyAiWidgetShow(); },
    };
}

std::vector<Operation> outcomes()
{
    return {
        [](AiController &c, const Scene &) { c.errorOccured({}); },
        [](AiController &c, const Scene &) { c.requestFailed({}); },
        [](AiController &c, const Scene &) { c.requesetTimeout({}); },
        [](AiController &c, const Scene &) {
            c.generateTextFinished({"question", "answer"});
        },
        [](AiController &c, const Scene &s) { c.generatePictureFinished(s.pack()); },
        [](AiController &c, const Scene &) { c.downloadPictureFinished(QStringLiteral("/a/path")); },
        [](AiController &c, const Scene &) { c.errorOccuredFinished({}); },
        [](AiController &c, const Scene &) { c.requestFailedFinished({}); },
        [](AiController &c, const Scene &) { c.requestTimeoutFinished({}); },
        [](AiController &c, const Scene &) { c.deleteGeneratingItem(); },
    };
}

void callAll(AiController &controller, const Scene &scene, const std::vector<Operation> &operations, int rounds)
{
    for (int round = 0; round < rounds; ++round) {
        for (const Operation &operation : operations)
            operation(controller, scene);
    }
}

/// Connects to every signal that carries something; the slots read all of it.
class Listener {
public:
    explicit Listener(AiController &controller)
    {
        keep(controller.sigGenerateTextFinished.connect(
            [seen = m_seen](const TextGeneratedPack &pack) { *seen += pack.answer.size(); }));
        keep(controller.sigGeneratePictureFinished.connect(
            [seen = m_seen](const QString &question, const PictureGenerateInfo &info, const AIImage &image) {
                *seen += static_cast<std::size_t>(question.size() + info.width) + image.url.size();
            }));
        keep(controller.sigAgentCmds.connect(
            [seen = m_seen](std::vector<AgentCmd> &commands) { *seen += commands.size(); }));
        keep(controller.sigDownloadPictureFinished.connect(
            [seen = m_seen](const std::string &path) { *seen += path.size(); }));
        for (auto signal :
             {&AiController::sigRequestFailed, &AiController::sigErrorOccured, &AiController::sigRequestTimeout}) {
            keep((controller.*signal).connect([seen = m_seen](const ChatItemBasic &item) {
                *seen += item.question.size() + 1;
            }));
        }
        keep(controller.sigResetMainWidget.connect([seen = m_seen] { ++*seen; }));
        keep(controller.sigThemeChanged.connect(
            [seen = m_seen](const QString &sheet) { *seen += static_cast<std::size_t>(sheet.size()); }));
        keep(controller.sigLanguageChanged.connect([seen = m_seen] { ++*seen; }));
        keep(controller.sigDeleteGeneratingItem.connect([seen = m_seen] { ++*seen; }));
    }
    ~Listener()
    {
        for (sigslot::connection &connection : m_connections)
            connection.disconnect();
    }

    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

private:
    void keep(const sigslot::connection &connection) { m_connections.push_back(connection); }

    // A slot that is running when it is disconnected still needs it.
    std::shared_ptr<std::atomic_size_t> m_seen = std::make_shared<std::atomic_size_t>(0);
    std::vector<sigslot::connection> m_connections;
};

} // namespace

class ThreadsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void allOperationsFromThreeThreads();
    void libraryIsReadOnTheHostsThread();
};

void ThreadsTest::allOperationsFromThreeThreads()
{
    constexpr int rounds = 25;
    Scene scene;
    const ExpectedLog cut(scene.log, QStringLiteral("ImageFinished_ errorcode|ImageDataFinished_ errorcode"), 0);
    {
        const Listener constant(scene.home.controller());
        std::atomic_int running{3};
        std::vector<std::thread> threads;
        for (const auto &operations : {configuration(), questions(), outcomes()}) {
            threads.emplace_back([&scene, &running, operations] {
                callAll(scene.home.controller(), scene, operations, rounds);
                --running;
            });
        }
        while (running > 0)
            const Listener passing(scene.home.controller());
        for (std::thread &thread : threads)
            thread.join();
        scene.home.inThread([](auto &) {});
    }

    // It still works.
    const SignalRecorder answered(scene.home->sigGenerateTextFinished);
    scene.home->stopGenerate();
    scene.home->clearCathe();
    scene.home->createTimer();
    scene.home->setTimeout(1000000);
    scene.home->setSingleTickTime(0);
    scene.home->generateText(QStringLiteral("the last one"));
    QVERIFY(eventually([&] {
        for (int index = answered.count() - 1; index >= 0; --index) {
            if (answered.argument<0>(index).question == "the last one")
                return true;
        }
        return false;
    }));
    scene.home->clear();
    scene.home.inThread([](auto &) {});
    QCOMPARE(scene.log.complaints().join(QLatin1Char('\n')), QString());
}

// Whatever is set meanwhile, each question carries one of the libraries, whole.
void ThreadsTest::libraryIsReadOnTheHostsThread()
{
    constexpr int asked = 40;
    Scene scene;
    scene.home->setMediaLibAllResources(library(2));
    std::vector<std::thread> setters;
    for (const int size : {2, 5}) {
        setters.emplace_back([&scene, size] {
            for (int round = 0; round < asked; ++round)
                scene.home->setMediaLibAllResources(library(size));
        });
    }
    for (int round = 0; round < asked; ++round)
        scene.home->generateText(QString::number(round));
    for (std::thread &setter : setters)
        setter.join();
    QVERIFY(eventually([&] { return scene.isIdle(); }));
    scene.home->clear();
    scene.home.inThread([](auto &) {});

    QCOMPARE(scene.runtime.fakeDispatcher().runCount(), asked);
    const QVector<HttpRequest> requests = scene.server.requestsTo(ControllerFixture::textPath());
    QCOMPARE(requests.size(), asked);
    for (const HttpRequest &request : requests) {
        const QJsonArray list = request.json().value(QStringLiteral("mediaList")).toArray();
        QVERIFY2(list.size() == 2 || list.size() == 5, qPrintable(QString::number(list.size())));
    }
    QCOMPARE(scene.log.complaints().join(QLatin1Char('\n')), QString());
}

QTEST_MAIN(ThreadsTest)

#include "tst_threads.moc"
