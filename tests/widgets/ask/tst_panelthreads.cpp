#include "panelsupport.h"
#include "paneltest.h"
#include "widgets/answerwidget.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextEdit>

#include <functional>
#include <thread>

/// What the controller reports from other threads reaches the panel's own.
class TestPanelThreads : public PanelTest {
    Q_OBJECT

private Q_SLOTS:
    void reportsArePosted_data();
    void reportsArePosted();
    void reportsOfManyThreadsArriveInTheirOrder();
    void outcomeDoesNotOvertakeThePlaceholder();
    void postedReportIsDroppedWithThePanel();

private:
    static void fromAnotherThread(const std::function<void()> &report) { std::thread(report).join(); }
};

void TestPanelThreads::reportsArePosted_data()
{
    QTest::addColumn<int>("report");
    QTest::addColumn<QString>("last");
    QTest::newRow("text") << 0 << "AnswerText: a";
    QTest::newRow("picture") << 1 << "AnswerImage: ";
    QTest::newRow("failed") << 2 << "AnswerText: Request Error";
    QTest::newRow("service error") << 3 << "AnswerText: busy";
    QTest::newRow("time-out") << 4 << "AnswerText: Timeout";
    QTest::newRow("placeholder") << 5 << "Question: q";
    QTest::newRow("reset") << 6 << "Hello: Hello, I’m your AI Assistant.\nNice to meet you! ";
}

void TestPanelThreads::reportsArePosted()
{
    QFETCH(int, report);
    QFETCH(QString, last);
    ChatItemBasic basic;
    basic.type = QuestionType::Text;
    basic.message = "busy";
    AiController &controller = f->controller;
    const std::vector<std::function<void()>> reports{
        [&] {
            controller.sigGenerateTextFinished(TextGeneratedPack{"q", "a"});
        },
        [&] { controller.sigGeneratePictureFinished(QStringLiteral("q"), PictureGenerateInfo(), AIImage()); },
        [&] { controller.sigRequestFailed(basic); },
        [&] { controller.sigErrorOccured(basic); },
        [&] { controller.sigRequestTimeout(basic); },
        [&] { controller.sigDeleteGeneratingItem(); },
        [&] { controller.sigResetMainWidget(); },
    };
    ask(QStringLiteral("q"));
    QVERIFY(acceptText());
    QTRY_COMPARE(conversation().last(), QStringLiteral("TextGenerating: Thinking:"));
    const QStringList before = conversation();
    fromAnotherThread(reports.at(static_cast<std::size_t>(report)));
    QCOMPARE(conversation(), before);
    QVERIFY(isGenerating());
    QTRY_COMPARE(conversation().last(), last);
    QTRY_VERIFY(!isGenerating());
}

void TestPanelThreads::reportsOfManyThreadsArriveInTheirOrder()
{
    constexpr int count = 50;
    std::thread sheets([this] {
        for (int number = 0; number < count; ++number)
            f->controller.sigThemeChanged(QStringLiteral("QLabel{margin:%1px;}").arg(number));
    });
    std::thread pictures([this] {
        for (int number = 0; number < count; ++number)
            f->controller.sigGeneratePictureFinished(QString::number(number), PictureGenerateInfo(), AIImage());
    });
    QVERIFY(eventually([this] { return conversation().size() == 1 + count; }));
    sheets.join();
    pictures.join();
    settle();
    QCOMPARE(panel->styleSheet(), QStringLiteral("QLabel{margin:49px;}"));
}

void TestPanelThreads::outcomeDoesNotOvertakeThePlaceholder()
{
    f->server.expect("POST", ControllerFixture::textPath(), ControllerFixture::accepted());
    QSignalSpy typed(panel->findChild<AnswerWidget *>(), &AnswerWidget::sigTypingFinished);
    ask(QStringLiteral("q"));
    fromAnotherThread([this] { f->controller.sigRequestFailed(ChatItemBasic()); });
    QVERIFY(typed.wait(static_cast<int>(waitLimit.count())));
    QCOMPARE(conversation().mid(1),
             QStringList({QStringLiteral("Question: q"), QStringLiteral("AnswerText: Request Error")}));
    QVERIFY(f->repliesDone());
}

void TestPanelThreads::postedReportIsDroppedWithThePanel()
{
    fromAnotherThread([this] {
        f->controller.sigGenerateTextFinished(TextGeneratedPack{"q", "a"});
        f->controller.sigResetMainWidget();
    });
    panel.reset();
    settle();
    fromAnotherThread([this] { f->controller.sigGenerateTextFinished(TextGeneratedPack{"q", "a"}); });
}

QTEST_MAIN(TestPanelThreads)
#include "tst_panelthreads.moc"
