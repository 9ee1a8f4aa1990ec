#include "samplepanel.h"
#include "support/logcatcher.h"
#include "support/waiting.h"
#include "widgets/answerwidget.h"
#include "widgets/mainwidget.h"

#include <QApplication>
#include <QLabel>
#include <QMovie>
#include <QPainter>
#include <QPushButton>
#include <QTest>

#include <optional>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

/// The icons as they are painted, at the scale that the test runs at.
class TestPanelIcons : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void iconOfADisabledButtonIsDim_data();
    void iconOfADisabledButtonIsDim();
    void checkedOptionStaysOrange();
    void loadingAnimationIsSharp();
    void loadingAnimationRuns();

private:
    std::optional<LogCatcher> m_log;
    std::optional<SamplePanel> m_panel;
};

namespace {

// The lightest pixel: the icon's or the text's own colour, not a soft edge.
int lightest(const QImage &image)
{
    int value = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            value = qMax(value, qGray(image.pixel(x, y)));
    }
    return value;
}

// The icon stands left of the text.
QImage iconOf(QWidget *button, qreal ratio)
{
    const int height = qRound(button->height() * ratio);
    const int border = qRound(3 * ratio);
    return button->grab().toImage().copy(border, border, qRound(26 * ratio), height - 2 * border);
}

// Of those with that name: items have buttons too that their kind does not show.
QPushButton *shownButton(const QWidget &window, const QString &name)
{
    const QList<QPushButton *> buttons = window.findChildren<QPushButton *>(name);
    for (QPushButton *const button : buttons) {
        if (button->isVisible())
            return button;
    }
    return nullptr;
}

} // namespace

void TestPanelIcons::init()
{
    m_log.emplace();
    m_panel.emplace(sampleTexts().front());
    m_panel->askQuestion(m_panel->texts.question);
    m_panel->showAnswer(m_panel->texts.answer);
    m_panel->picture();
}

void TestPanelIcons::cleanup()
{
    m_panel.reset();
    const QString complaints = complaintsOf(*m_log);
    m_log.reset();
    QCOMPARE(complaints, QString());
}

void TestPanelIcons::iconOfADisabledButtonIsDim_data()
{
    QTest::addColumn<QString>("name");
    for (const char *const name :
         {"copyButton", "modifyButton", "tryAgainButton", "generateImage", "modelBtn", "onlineSearch"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestPanelIcons::iconOfADisabledButtonIsDim()
{
    QFETCH(QString, name);
    QPushButton *const button = shownButton(m_panel->window(), name);
    QVERIFY(button);
    const qreal ratio = button->devicePixelRatioF();
    const int enabled = lightest(iconOf(button, ratio));
    m_panel->panel().setAskAndAnswerAreaEnable(false);
    QVERIFY(!button->isEnabled());
    const int disabled = lightest(iconOf(button, ratio));
    QVERIFY2(disabled < enabled * 0.7, qPrintable(QStringLiteral("%1 of %2").arg(disabled).arg(enabled)));
    QVERIFY(disabled > 60);
    // Again, with a theme that came in the meantime.
    m_panel->panel().setStyleSheet(m_panel->panel().styleSheet() + QLatin1Char(' '));
    QCOMPARE(lightest(iconOf(button, ratio)), disabled);
    m_panel->panel().setAskAndAnswerAreaEnable(true);
    QCOMPARE(lightest(iconOf(button, ratio)), enabled);
}

void TestPanelIcons::checkedOptionStaysOrange()
{
    auto *const button = m_panel->child<QPushButton>("modelBtn");
    button->setChecked(true);
    const QImage enabled = iconOf(button, button->devicePixelRatioF());
    m_panel->panel().setAskAndAnswerAreaEnable(false);
    QCOMPARE(iconOf(button, button->devicePixelRatioF()), enabled);
}

void TestPanelIcons::loadingAnimationIsSharp()
{
    m_panel->askQuestion(m_panel->texts.question);
    m_panel->picture();
    auto *const label = m_panel->lastChild<QLabel>("loadingLabel");
    QCOMPARE(label->size(), QSize(32, 16));
    QMovie *const animation = label->movie();
    QVERIFY(animation);
    animation->setPaused(true);
    QImage frame = animation->currentImage();
    frame.setDevicePixelRatio(1);
    QImage expected(frame.size(), QImage::Format_RGB32);
    expected.fill(QColor(QStringLiteral("#1B1B1D")));
    QPainter(&expected).drawImage(0, 0, frame);
    QCOMPARE(expected.size(), label->size() * label->devicePixelRatioF());
    QImage seen = m_panel->picture().copy(
        QRect(label->mapTo(&m_panel->window(), QPoint()) * label->devicePixelRatioF(), expected.size()));
    seen.setDevicePixelRatio(1);
    QCOMPARE(seen.convertToFormat(QImage::Format_RGB32), expected);
}

void TestPanelIcons::loadingAnimationRuns()
{
    m_panel->askQuestion(m_panel->texts.question);
    m_panel->picture();
    auto *const label = m_panel->lastChild<QLabel>("loadingLabel");
    const QImage first = label->grab().toImage();
    QVERIFY(eventually([&] { return label->grab().toImage() != first; }));
}

int main(int argc, char **argv)
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    TestPanelIcons test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_panelicons.moc"
