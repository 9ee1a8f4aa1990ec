#include "controllerfixture.h"

#include <QTest>

#include <algorithm>
#include <memory>
#include <thread>

// The first function needs a process in which no controller has been made, so this test makes its own.
class MetaTypesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void constructionRegistersTheRecordsInOrder();
    void secondControllerRegistersNothingNew();
    void declaredRecordsAreKnownByBothNames_data();
    void declaredRecordsAreKnownByBothNames();
    void pictureParametersAreKnownByTheirShortNameOnly();
    void othersAreNotRegistered();
    void invokablesAreQueuedFromAnotherThread();
};

namespace {

const char *const registeredNames[] = {"AIImage", "ChatItemContext", "TextGeneratedPack", "PictureGenerateInfo",
                                       "PicturedGeneratedPack"};

QVector<int> registeredIds()
{
    QVector<int> ids;
    for (const char *name : registeredNames)
        ids.append(QMetaType::type(name));
    return ids;
}

} // namespace

void MetaTypesTest::constructionRegistersTheRecordsInOrder()
{
    QCOMPARE(registeredIds(), QVector<int>(5, QMetaType::UnknownType));
    const AiController controller;
    const QVector<int> ids = registeredIds();
    QVERIFY(!ids.contains(QMetaType::UnknownType));
    QVERIFY(std::is_sorted(ids.cbegin(), ids.cend()));
}

void MetaTypesTest::secondControllerRegistersNothingNew()
{
    const LogCatcher log;
    const QVector<int> before = registeredIds();
    const AiController controller;
    QCOMPARE(registeredIds(), before);
    QCOMPARE(log.complaints(), QStringList());
}

void MetaTypesTest::declaredRecordsAreKnownByBothNames_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : registeredNames) {
        if (qstrcmp(name, "PictureGenerateInfo") != 0)
            QTest::newRow(name) << QByteArray(name);
    }
}

void MetaTypesTest::declaredRecordsAreKnownByBothNames()
{
    QFETCH(QByteArray, name);
    QCOMPARE(QMetaType::type("tavro::aiassistant::" + name), QMetaType::type(name));
}

void MetaTypesTest::pictureParametersAreKnownByTheirShortNameOnly()
{
    QCOMPARE(QMetaType::type("tavro::aiassistant::PictureGenerateInfo"), int(QMetaType::UnknownType));
}

void MetaTypesTest::othersAreNotRegistered()
{
    for (const char *name : {"ChatItemBasic", "QuestionType", "AgentCmd"})
        QCOMPARE(QMetaType::type(name), int(QMetaType::UnknownType));
}

void MetaTypesTest::invokablesAreQueuedFromAnotherThread()
{
    ControllerFixture f;
    f.server.expect("POST", ControllerFixture::picturePath(), ControllerFixture::accepted());
    f.server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
    f.server.expect("GET", "/picture", ScriptedAnswer::bytes("no picture"));
    PicturedGeneratedPack pack;
    pack.source.url = f.server.url().toStdString() + "/picture";
    const PictureGenerateInfo info = ControllerFixture::pictureInfo();
    bool invoked = false;
    std::thread([&] {
        invoked = QMetaObject::invokeMethod(&f.controller, "queryImageData", Q_ARG(const PicturedGeneratedPack &, pack))
            && QMetaObject::invokeMethod(&f.d, "onGeneratePicture", Q_ARG(PictureGenerateInfo, info))
            && QMetaObject::invokeMethod(&f.d, "onGenerateText", Q_ARG(QString, QStringLiteral("queued")));
    }).join();
    QVERIFY(invoked);
    QCOMPARE(f.openReplies(), 0);
    QVERIFY(f.signalled.generatePictureFinished.waitFor(1));
    QVERIFY(eventually([&] { return f.server.requestCount() == 3; }));
    QVERIFY(f.repliesDone());
    const HttpRequest text = f.server.requestsTo(ControllerFixture::textPath()).at(0);
    QVERIFY(text.body.contains("\"queued\""));
    const HttpRequest picture = f.server.requestsTo(ControllerFixture::picturePath()).at(0);
    QCOMPARE(picture.json().value(QLatin1String("width")).toInt(), info.width);
    QCOMPARE(f.leftovers(), QStringList());
}

QTEST_GUILESS_MAIN(MetaTypesTest)
#include "tst_metatypes.moc"
