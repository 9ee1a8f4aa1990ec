#include "controllertest.h"
#include "support/jsonshape.h"

#include <QJsonArray>
#include <QRegularExpression>

#include <thread>

/// Answers that came: what of them is announced.
class AnswersTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void textAnswerIsDeliveredWhole();
    void textAnswerWritesNothingToTheHostLog();
    void firstAnswerCounts();
    void firstAnswerOfAnotherTypeIsEmptyText_data();
    void firstAnswerOfAnotherTypeIsEmptyText();
    void pictureAnswerIsDelivered();
    void pictureAnswerIsNotedInTheHostLog();
    void samePictureAgainIsSkipped();
    void pictureAnswerWithoutAddressCountsAsTheSame();
    void samePictureSurvivesARequestInBetween();
    void samePictureIsDeliveredAgainAfterClearCathe();

private:
    QString pictureUrl(const char *path = "/picture") const { return f->server.url() + QLatin1String(path); }
    void servePictures();
};

void AnswersTest::servePictures()
{
    f->server.always("GET", "/picture", ScriptedAnswer::bytes("no picture"));
    f->server.always("GET", "/other", ScriptedAnswer::bytes("no picture"));
}

void AnswersTest::textAnswerIsDeliveredWhole()
{
    const QString answer = QString(20000, QChar(0x4e2d)) + QStringLiteral("\"\n\U0001F600");
    QVERIFY(f->askText(QStringLiteral("asked")));
    QVERIFY(f->poll(ControllerFixture::readyText(answer)));
    const auto pack = f->signalled.generateTextFinished.argument<0>(0);
    QCOMPARE(pack.question, std::string("asked"));
    QCOMPARE(QString::fromStdString(pack.answer), answer);
    QVERIFY(f->signalled.generateTextFinished.emission(0).thread == std::this_thread::get_id());
}

void AnswersTest::textAnswerWritesNothingToTheHostLog()
{
    QVERIFY(f->askText());
    QVERIFY(f->poll(ControllerFixture::readyText()));
    QVERIFY(f->log.hostLines().isEmpty());
}

void AnswersTest::firstAnswerCounts()
{
    QVERIFY(f->askText());
    QVERIFY(f->poll(ScriptedAnswer::bytes(R"({"code":0,"data":{"answers":["first","second"]}})")));
    QCOMPARE(f->signalled.generateTextFinished.count(), 1);
    QCOMPARE(f->signalled.generateTextFinished.argument<0>(0).answer, std::string("first"));
}

void AnswersTest::firstAnswerOfAnotherTypeIsEmptyText_data()
{
    QTest::addColumn<QByteArray>("answer");
    for (const char *answer : {"5", "null", "true", "{}", "[]"})
        QTest::newRow(answer) << QByteArray(answer);
}

void AnswersTest::firstAnswerOfAnotherTypeIsEmptyText()
{
    QFETCH(QByteArray, answer);
    QVERIFY(f->askText());
    QVERIFY(f->poll(ScriptedAnswer::bytes("{\"code\":0,\"data\":{\"answers\":[" + answer + ",\"second\"]}}")));
    QCOMPARE(f->signalled.summary(), QStringLiteral("generateTextFinished:1"));
    QVERIFY(f->signalled.generateTextFinished.argument<0>(0).answer.empty());
    QCOMPARE(f->d.historyArray.size(), 2);
    QCOMPARE(shapeOf(f->d.historyArray.at(1).toObject()), QStringLiteral("content:string type:bool"));
    QVERIFY(!f->isTimerActive());
}

void AnswersTest::pictureAnswerIsDelivered()
{
    servePictures();
    QVERIFY(f->askPicture());
    QVERIFY(f->poll(ControllerFixture::readyPicture(pictureUrl(), QStringLiteral("a hill"))));
    QCOMPARE(f->d.strLastPictureUrl, pictureUrl());
    QCOMPARE(f->d.strDescription, QStringLiteral("a hill"));
    QVERIFY(!f->isTimerActive());
    QVERIFY(f->d.strReqId.isEmpty());
    QVERIFY(!f->d.bQuerying);
    QVERIFY(f->d.historyArray.isEmpty());

    QVERIFY(f->signalled.generatePictureFinished.waitFor(1));
    QCOMPARE(f->signalled.summary(), QStringLiteral("generatePictureFinished:1"));
    QCOMPARE(f->signalled.generatePictureFinished.argument<0>(0), QStringLiteral("a mountain"));
    QCOMPARE(f->signalled.generatePictureFinished.argument<1>(0).style, std::string("oil"));
    QCOMPARE(f->server.requestCountTo("/picture"), 1);
}

void AnswersTest::pictureAnswerIsNotedInTheHostLog()
{
    servePictures();
    QVERIFY(f->askPicture());
    QVERIFY(f->poll(ControllerFixture::readyPicture(pictureUrl())));
    const QVector<LogLine> host = f->log.hostLines();
    QCOMPARE(host.size(), 1);
    QCOMPARE(int(host.at(0).level), int(LogLine::Level::Info));
    const QRegularExpression form(
        QStringLiteral("^notifyGeneratePictureFinished url (\\S+) \n //(\\w+):(\\w+)\\(\\)#(\\d+)\\.$"));
    const QRegularExpressionMatch match = form.match(host.at(0).text);
    QVERIFY2(match.hasMatch(), qPrintable(host.at(0).text));
    QCOMPARE(match.captured(1), pictureUrl());
    QCOMPARE(host.at(0).file, QStringLiteral("aicontroller/") + match.captured(2));
    QCOMPARE(host.at(0).function, match.captured(3));
    QCOMPARE(host.at(0).line, match.captured(4).toInt());
    QVERIFY(f->signalled.generatePictureFinished.waitFor(1));
}

void AnswersTest::samePictureAgainIsSkipped()
{
    servePictures();
    QVERIFY(f->askPicture());
    QVERIFY(f->poll(ControllerFixture::readyPicture(pictureUrl())));
    QVERIFY(f->signalled.generatePictureFinished.waitFor(1));

    QVERIFY(f->askPicture());
    QVERIFY(f->poll(ScriptedAnswer::bytes(R"({"code":0,"data":{"agentCmds":[{"cmdType":5}],"answers":[")"
                                          + pictureUrl().toUtf8() + "\"]}}")));
    QCOMPARE(f->signalled.summary(), QStringLiteral("generatePictureFinished:1"));
    const QStringList lines =
        f->log.texts().filter(QStringLiteral("Same picture URL received, skipping duplicate processing:"));
    QCOMPARE(lines.size(), 1);
    QVERIFY(lines.at(0).contains(pictureUrl()));
    QVERIFY(f->isTimerActive());
    QVERIFY(f->d.bQuerying);
    QCOMPARE(f->d.strReqId, QStringLiteral("r1"));
    QCOMPARE(f->server.requestCountTo("/picture"), 1);

    f->d.nTickCount = 0;
    f->ticks(12);
    QCOMPARE(f->openReplies(), 0);
    QCOMPARE(f->signalled.requestTimeout.count(), 0);
    f->tick();
    QCOMPARE(f->signalled.requestTimeout.count(), 1);
    QVERIFY(f->askPicture());
    f->tick();
    QCOMPARE(f->openReplies(), 0);
}

// Before the first picture the last address is empty too.
void AnswersTest::pictureAnswerWithoutAddressCountsAsTheSame()
{
    QVERIFY(f->askPicture());
    QVERIFY(f->poll(ScriptedAnswer::bytes(R"({"code":0,"data":{"answers":[null]}})")));
    QCOMPARE(f->signalled.summary(), QString());
    QCOMPARE(f->log.count(QStringLiteral("Same picture URL received")), 1);
    QVERIFY(f->d.bQuerying);
    QVERIFY(f->isTimerActive());
}

void AnswersTest::samePictureSurvivesARequestInBetween()
{
    servePictures();
    QVERIFY(f->askPicture());
    QVERIFY(f->poll(ControllerFixture::readyPicture(pictureUrl())));
    QVERIFY(f->signalled.generatePictureFinished.waitFor(1));
    QVERIFY(f->askText());
    QVERIFY(f->poll(ControllerFixture::readyText(pictureUrl())));
    QCOMPARE(f->signalled.generateTextFinished.count(), 1);
    QCOMPARE(f->d.strLastPictureUrl, pictureUrl());

    QVERIFY(f->askPicture());
    QVERIFY(f->poll(ControllerFixture::readyPicture(pictureUrl("/other"))));
    QVERIFY(f->signalled.generatePictureFinished.waitFor(2));
    QVERIFY(f->askPicture());
    QVERIFY(f->poll(ControllerFixture::readyPicture(pictureUrl())));
    QVERIFY(f->signalled.generatePictureFinished.waitFor(3));
}

void AnswersTest::samePictureIsDeliveredAgainAfterClearCathe()
{
    servePictures();
    for (int round = 1; round <= 2; ++round) {
        QVERIFY(f->askPicture());
        QVERIFY(f->poll(ControllerFixture::readyPicture(pictureUrl())));
        QVERIFY(f->signalled.generatePictureFinished.waitFor(round));
        f->controller.clearCathe();
    }
}

QTEST_GUILESS_MAIN(AnswersTest)
#include "tst_answers.moc"
