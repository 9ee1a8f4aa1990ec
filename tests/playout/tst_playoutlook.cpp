#include "playout/contrast.h"
#include "playout/hostfixture.h"

#include <QAccessible>
#include <QApplication>
#include <QTest>

using namespace tavro::playout;
using namespace tavro::testsupport;

class PlayoutLookTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { f.reset(); }
    void tabReachesEveryControl();
    void everyControlHasAName();
    void everyTextHasContrast();
    void nothingOverlapsAtTheSmallestSize();

private:
    static QSet<QWidget *> tabChain();

    std::unique_ptr<HostFixture> f;
};

void PlayoutLookTest::init()
{
    f = std::make_unique<HostFixture>();
    QVERIFY(f->start());
}

QSet<QWidget *> PlayoutLookTest::tabChain()
{
    QSet<QWidget *> reached;
    while (QApplication::focusWidget() && !reached.contains(QApplication::focusWidget())) {
        reached.insert(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    return reached;
}

void PlayoutLookTest::tabReachesEveryControl()
{
    for (int layer = 1; layer <= 4; ++layer)
        f->host->state().put(1, layer, QStringLiteral("harbour.png"), false);
    f->child<QWidget>("librarySearch").setFocus();
    const QSet<QWidget *> reached = tabChain();
    const QStringList names{
        QStringLiteral("librarySearch"),  QStringLiteral("mediaList"),    QStringLiteral("output1"),
        QStringLiteral("programChooser"), QStringLiteral("layer1Target"), QStringLiteral("layer1Fader"),
        QStringLiteral("layer1PlayStop"), QStringLiteral("layer4Fader"),  QStringLiteral("layer4PlayStop"),
        QStringLiteral("logLines"),       QStringLiteral("panel"),        QStringLiteral("dockHide"),
        QStringLiteral("assistantButton")};
    for (const QString &name : names)
        QVERIFY2(reached.contains(f->host->window().findChild<QWidget *>(name)), qPrintable(name));
}

void PlayoutLookTest::everyControlHasAName()
{
    const auto widgets = f->host->window().findChildren<QWidget *>();
    for (const QWidget *const widget : widgets) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible()
            || widget->objectName().startsWith(QLatin1String("qt_")) || widget == &f->child<QWidget>("panel"))
            continue;
        QAccessibleInterface *const seen = QAccessible::queryAccessibleInterface(const_cast<QWidget *>(widget));
        QVERIFY(seen);
        const QString what = QLatin1String(widget->metaObject()->className()) + QLatin1Char(' ') + widget->objectName();
        QVERIFY2(!seen->text(QAccessible::Name).isEmpty(), qPrintable(what));
    }
}

void PlayoutLookTest::everyTextHasContrast()
{
    f->host->state().put(1, 2, QStringLiteral("harbour.png"), true);
    f->host->state().put(1, 3, QStringLiteral("harbour.png"), false);
    const tavro::aiassistant::AgentCmd refused;
    f->host->carryOut(refused);
    const QImage picture = f->host->window().grab().toImage();
    int seen = 0;
    const auto widgets = f->host->window().findChildren<QWidget *>();
    for (const QWidget *const widget : widgets) {
        if (!widget->isVisible() || widget->objectName().startsWith(QLatin1String("qt_"))
            || widget->property("text").toString().isEmpty())
            continue;
        const QRect area(widget->mapTo(&f->host->window(), QPoint(3, 3)), widget->size() - QSize(6, 6));
        const double contrast = contrastIn(picture.copy(area));
        QVERIFY2(contrast >= 4.5, qPrintable(QStringLiteral("%1: %2").arg(widget->objectName()).arg(contrast)));
        ++seen;
    }
    QVERIFY(seen >= 30);
}

void PlayoutLookTest::nothingOverlapsAtTheSmallestSize()
{
    f->host->window().resize(1600, 900);
    QTRY_COMPARE(f->host->window().size(), QSize(1600, 900));
    const auto area = [this](const char *name) {
        const auto &widget = f->child<QWidget>(name);
        return QRect(widget.mapTo(&f->host->window(), QPoint()), widget.size());
    };
    QVERIFY(area("library").right() < area("stage").left());
    QVERIFY(area("stage").right() < area("panel").left());
    QVERIFY(area("dockTitle").bottom() < area("panel").top());
    QVERIFY(area("outputView").bottom() < area("layer1").top());
    QVERIFY(area("layer1").bottom() < area("layer2").top());
    QVERIFY(area("layer4").bottom() < area("log").top());
    QVERIFY(area("log").bottom() < area("statusLine").top());
    QVERIFY(f->host->window().rect().contains(area("statusLine")));
    QCOMPARE(area("panel").width(), 800);
    const QRect view = area("outputView");
    QVERIFY(std::abs(view.width() * 9 - view.height() * 16) <= 16);
    QVERIFY(area("layer1Fader").width() >= 64);
}

QTEST_MAIN(PlayoutLookTest)
#include "tst_playoutlook.moc"
