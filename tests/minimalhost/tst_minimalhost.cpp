#include "minimalhost.h"
#include "support/logcatcher.h"
#include "support/servicescript.h"
#include "support/waiting.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>

using namespace tavro::testsupport;

/// The host of the guide, as an operator uses it. It links what a consumer of the library links.
class MinimalHostTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void answerIsShownAndItsCommandPrinted();
    void everyQuestionHasTheWholeTime();
    void hostGoesWhileAnAnswerIsAwaited();

private:
    QTextEdit &edit() { return *host->panel().findChild<QTextEdit *>(QStringLiteral("askEdit")); }
    QPushButton &button(const char *name) { return *host->panel().findChild<QPushButton *>(QLatin1String(name)); }
    void start(int timeoutSeconds);
    void ask(const QString &question);
    QString shown() const;

    std::unique_ptr<LogCatcher> log;
    std::unique_ptr<ServiceScript> service;
    std::unique_ptr<MinimalHost> host;
};

void MinimalHostTest::init()
{
    log = std::make_unique<LogCatcher>();
    service = std::make_unique<ServiceScript>();
    start(60);
}

void MinimalHostTest::start(int timeoutSeconds)
{
    host.reset();
    host = std::make_unique<MinimalHost>(service->url(), timeoutSeconds);
    host->panel().show();
    QVERIFY(QTest::qWaitForWindowActive(&host->panel()));
}

void MinimalHostTest::cleanup()
{
    host.reset();
    settle();
    QCOMPARE(service->leftovers(), QStringList());
    service.reset();
    // The platform without a display has no use for a hint that every fixed-size window gives.
    QCOMPARE(log->complaints().filter(QRegularExpression(QStringLiteral("^(?!.*propagateSizeHints)"))), QStringList());
    log.reset();
}

void MinimalHostTest::ask(const QString &question)
{
    QTest::keyClicks(&edit(), question);
    QTest::keyClick(&edit(), Qt::Key_Return);
}

QString MinimalHostTest::shown() const
{
    QString texts;
    for (const auto *browser : host->panel().findChildren<QTextEdit *>(QStringLiteral("textBrowser")))
        texts += browser->toPlainText() + QLatin1Char('\n');
    return texts;
}

void MinimalHostTest::answerIsShownAndItsCommandPrinted()
{
    const QJsonObject params{{QStringLiteral("mediaId"), QStringLiteral("clip-1")},
                             {QStringLiteral("layerId"), 2},
                             {QStringLiteral("volume"), 0.5}};
    service->expectAnswer(QStringLiteral("Playing it."),
                          {QJsonObject{{QStringLiteral("cmdType"), 0}, {QStringLiteral("params"), params}}});
    ask(QStringLiteral("play the harbour clip"));
    QVERIFY(eventually([this] { return shown().contains(QStringLiteral("Playing it.")); }));
    QVERIFY(eventually([this] { return button("sendMsg").isVisible(); }));
    QVERIFY(log->contains(QStringLiteral("play clip-1 on layer 2 at volume 0.5")));
    const QJsonArray media = service->body(ServiceScript::text).value(QStringLiteral("mediaList")).toArray();
    QCOMPARE(media.size(), 2);
}

// The polls of all questions together take more than the time of one. Without its renewal "Timeout" would be shown.
void MinimalHostTest::everyQuestionHasTheWholeTime()
{
    start(8);
    for (int question = 1; question <= 10; ++question) {
        const QString answer = QStringLiteral("answer %1").arg(question);
        service->expectAnswer(answer);
        ask(QStringLiteral("again"));
        QVERIFY(eventually([&] { return shown().contains(answer); }));
        QVERIFY(eventually([this] { return button("sendMsg").isVisible(); }));
    }
    QVERIFY2(!shown().contains(QStringLiteral("Timeout")), qPrintable(shown()));
}

void MinimalHostTest::hostGoesWhileAnAnswerIsAwaited()
{
    service->expect("POST", ServiceScript::text, ServiceScript::accepted(QStringLiteral("r1")));
    ask(QStringLiteral("are you there?"));
    QVERIFY(eventually([this] { return service->requestCountTo(ServiceScript::text) == 1; }));
    QVERIFY(button("stop").isVisible());
}

QTEST_MAIN(MinimalHostTest)
#include "tst_minimalhost.moc"
