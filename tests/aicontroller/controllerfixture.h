#pragma once

#include "aicontroller/aicontroller_p.h"
#include "fakeports.h"
#include "support/fakeruntime.h"
#include "support/logcatcher.h"
#include "support/scriptedserver.h"
#include "support/signalrecorder.h"
#include "support/waiting.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <type_traits>
#include <utility>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

using ControllerPrivate = std::remove_reference_t<decltype(AiControllerAccess::of(std::declval<AiController &>()))>;

/// Records every signal of one controller.
struct ControllerSignals {
    explicit ControllerSignals(AiController &controller);

    SignalRecorder<const std::string &> downloadPictureFinished;
    SignalRecorder<std::vector<AgentCmd> &> agentCmds;
    SignalRecorder<> aiNotify;
    SignalRecorder<const QString &> themeChanged;
    SignalRecorder<> languageChanged;
    SignalRecorder<> resetMainWidget;
    SignalRecorder<const TextGeneratedPack &> generateTextFinished;
    SignalRecorder<const QString &, const PictureGenerateInfo &, const AIImage &> generatePictureFinished;
    SignalRecorder<const ChatItemBasic &> requestFailed;
    SignalRecorder<const ChatItemBasic &> errorOccured;
    SignalRecorder<const ChatItemBasic &> chatItemEvent;
    SignalRecorder<const ChatItemBasic &> requestTimeout;
    SignalRecorder<> deleteGeneratingItem;
    SignalRecorder<> notify;

    /// "requestFailed:1 errorOccured:2"; empty where nothing was emitted.
    QString summary() const;
};

/// A controller with a timer, a service that answers by a script, a host runtime, and both logs caught.
///
/// The poll timer runs, but its ticks do not arrive: tick() gives them, so that a test counts them exactly. Its
/// interval is the default 5 s.
class ControllerFixture {
public:
    static QByteArray textPath() { return QByteArrayLiteral("/ai/texttotext/generate/"); }
    static QByteArray picturePath() { return QByteArrayLiteral("/ai/texttoimage/generate/"); }
    static QByteArray resultPath() { return QByteArrayLiteral("/ai/result/filter/"); }

    static ScriptedAnswer accepted(const QString &reqId = QStringLiteral("r1"));
    static ScriptedAnswer working() { return ScriptedAnswer::json({{QStringLiteral("code"), 1}}); }
    static ScriptedAnswer ready(const QJsonObject &data);
    static ScriptedAnswer readyText(const QString &answer = QStringLiteral("hello"));
    static ScriptedAnswer readyPicture(const QString &url, const QString &description = QStringLiteral("seen"));
    static ScriptedAnswer failed(const QString &message, int code = 7);

    ControllerFixture();

    /// Gives the controller the runtime, with these roles and the fake ports in place of proxies.
    void useRoles(FakeRuntime::Roles roles);

    void tick();
    void ticks(int count);
    bool isTimerActive() const { return d.pQueryTimer->isActive(); }

    int openReplies() const;
    bool repliesDone(); ///< waits until every reply has been read and deleted

    /// Asks and waits until the service's reply has been read. The service accepts unless told otherwise.
    bool askText(const QString &question = QStringLiteral("question"), const ScriptedAnswer &reply = accepted());
    bool askPicture(const PictureGenerateInfo &info = pictureInfo(), const ScriptedAnswer &reply = accepted());

    /// One tick whose poll is answered so, and its reply read.
    bool poll(const ScriptedAnswer &reply);

    static PictureGenerateInfo pictureInfo();

    /// What a test must not leave behind; to be empty at its end.
    QStringList leftovers();

    LogCatcher log;
    ScriptedServer server;
    FakeRuntime runtime;
    FakeClientPort clientPort;
    FakeServerPort serverPort;
    AiController controller;
    ControllerPrivate &d;
    ControllerSignals signalled;
};
