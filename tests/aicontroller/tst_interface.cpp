#include "controllerfixture.h"

#include <QMetaMethod>
#include <QTest>

#include <algorithm>
#include <iterator>
#include <type_traits>

static_assert(std::is_base_of_v<QObject, IAiController> && std::is_abstract_v<IAiController>);
static_assert(std::is_base_of_v<IAiController, AiController> && !std::is_abstract_v<AiController>);
static_assert(
    std::is_same_v<decltype(IAiController::sigDownloadPictureFinished), sigslot::signal<const std::string &>>);
static_assert(std::is_same_v<decltype(IAiController::sigAgentCmds), sigslot::signal<std::vector<AgentCmd> &>>);
static_assert(std::is_same_v<decltype(IAiController::sigAiNotify), sigslot::signal<>>);
static_assert(std::is_same_v<decltype(AiController::sigThemeChanged), sigslot::signal<const QString &>>);
static_assert(std::is_same_v<decltype(AiController::sigLanguageChanged), sigslot::signal<>>);
static_assert(std::is_same_v<decltype(AiController::sigResetMainWidget), sigslot::signal<>>);
static_assert(
    std::is_same_v<decltype(AiController::sigGenerateTextFinished), sigslot::signal<const TextGeneratedPack &>>);
static_assert(std::is_same_v<decltype(AiController::sigGeneratePictureFinished),
                             sigslot::signal<const QString &, const PictureGenerateInfo &, const AIImage &>>);
static_assert(std::is_same_v<decltype(AiController::sigRequestFailed), sigslot::signal<const ChatItemBasic &>>);
static_assert(std::is_same_v<decltype(AiController::sigErrorOccured), sigslot::signal<const ChatItemBasic &>>);
static_assert(std::is_same_v<decltype(AiController::sigChatItemEvent), sigslot::signal<const ChatItemBasic &>>);
static_assert(std::is_same_v<decltype(AiController::sigRequestTimeout), sigslot::signal<const ChatItemBasic &>>);
static_assert(std::is_same_v<decltype(AiController::sigDeleteGeneratingItem), sigslot::signal<>>);
static_assert(std::is_same_v<decltype(AiController::sigNotify), sigslot::signal<>>);

namespace {

QByteArray described(const QMetaMethod &method)
{
    return QByteArray(method.typeName()) + ' ' + method.methodSignature() + ' ' + method.parameterNames().join(',');
}

QVector<QByteArray> ownMethods(const QMetaObject &meta)
{
    QVector<QByteArray> methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        methods.append(described(meta.method(index)));
    return methods;
}

} // namespace

/// What the interface is made of. The order of its virtual operations is checked where a host meets it, in
/// tests/package.
class InterfaceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void interfaceAddsNoMethodsToItsMetaObject();
    void controllerHasOneInvokable();
    void privatePartHasItsMethodsInOrder();
    void signalsStandInDeclarationOrder();
    void signalsGoToSeveralReceiversInConnectionOrder();
};

void InterfaceTest::interfaceAddsNoMethodsToItsMetaObject()
{
    QCOMPARE(QByteArray(IAiController::staticMetaObject.className()), QByteArray("tavro::aiassistant::IAiController"));
    QVERIFY(ownMethods(IAiController::staticMetaObject).isEmpty());
    QCOMPARE(IAiController::staticMetaObject.superClass(), &QObject::staticMetaObject);
    QVERIFY(!IAiController::tr("text").isEmpty());
}

void InterfaceTest::controllerHasOneInvokable()
{
    QCOMPARE(ownMethods(AiController::staticMetaObject),
             QVector<QByteArray>{"void queryImageData(PicturedGeneratedPack) pack"});
    QCOMPARE(AiController::staticMetaObject.superClass(), &IAiController::staticMetaObject);
}

void InterfaceTest::privatePartHasItsMethodsInOrder()
{
    const QVector<QByteArray> expected = {
        "void slotRequestFinished() ",
        "void networkError(QNetworkReply::NetworkError) error",
        "void slotQueryFinished() ",
        "void slotQueryImageDataFinished() ",
        "void slotDownloadImageFinished() ",
        "void slotDownloadPicture(QString) strNetUrl",
        "void slotOnTimeout() ",
        "void analyseAgentCmds(QJsonArray) agentCmds",
        "QJsonArray mediaListArray() ",
        "void initTimer() ",
        "void onGenerateText(QString) bGeranateText",
        "void onGeneratePicture(PictureGenerateInfo) info",
    };
    QCOMPARE(ownMethods(ControllerPrivate::staticMetaObject), expected);
}

void InterfaceTest::signalsStandInDeclarationOrder()
{
    const AiController controller;
    const void *const members[] = {
        &controller.sigDownloadPictureFinished,
        &controller.sigAgentCmds,
        &controller.sigAiNotify,
        &controller.sigThemeChanged,
        &controller.sigLanguageChanged,
        &controller.sigResetMainWidget,
        &controller.sigGenerateTextFinished,
        &controller.sigGeneratePictureFinished,
        &controller.sigRequestFailed,
        &controller.sigErrorOccured,
        &controller.sigChatItemEvent,
        &controller.sigRequestTimeout,
        &controller.sigDeleteGeneratingItem,
        &controller.sigNotify,
    };
    QVERIFY(std::is_sorted(std::begin(members), std::end(members)));
}

void InterfaceTest::signalsGoToSeveralReceiversInConnectionOrder()
{
    AiController controller;
    QVector<int> order;
    controller.sigResetMainWidget.connect([&] { order.append(1); });
    controller.sigResetMainWidget.connect([&] { order.append(2); });
    controller.resetMainWidget();
    QCOMPARE(order, (QVector<int>{1, 2}));
}

QTEST_GUILESS_MAIN(InterfaceTest)
#include "tst_interface.moc"
