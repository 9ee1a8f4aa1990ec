#include "panelstates.h"
#include "support/logcatcher.h"
#include "widgets/autoresizetextbrowser.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSet>
#include <QTest>
#include <QTextDocument>
#include <QTextEdit>

#include <optional>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

/// The panel in each of its looks, in every language: all texts have the room that they need, and are painted.
class TestPanelStates : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_log.emplace(); }
    void cleanup();
    void textsFitAndArePainted_data();
    void textsFitAndArePainted();
    void aTextWithoutRoomWouldBeFound();

private:
    std::optional<LogCatcher> m_log;
};

namespace {

QString nameOf(const QWidget &widget)
{
    return QLatin1String(widget.metaObject()->className()) + QLatin1Char(' ') + widget.objectName();
}

bool hasRoom(const QWidget &widget, const QSize &needed)
{
    return widget.width() >= needed.width() && widget.height() >= needed.height();
}

// A fixed height may be less than what the style would like, but not less than the letters.
bool lettersFit(const QPushButton &button)
{
    if (button.text().isEmpty())
        return true;
    const QRect letters = button.fontMetrics().tightBoundingRect(button.text());
    return button.width() >= button.sizeHint().width() && button.height() >= letters.height();
}

bool listFits(const QAbstractItemView &list)
{
    int height = 0;
    for (int row = 0; row < list.model()->rowCount(); ++row)
        height += list.sizeHintForRow(row);
    return hasRoom(*list.viewport(), {list.sizeHintForColumn(0), height});
}

bool placeholderFits(const QTextEdit &edit)
{
    const QRect room = edit.viewport()->rect();
    const QRect needed = edit.fontMetrics().boundingRect(room, Qt::TextWordWrap, edit.placeholderText());
    return hasRoom(*edit.viewport(), needed.size());
}

bool documentFits(const AutoResizeTextBrowser &browser)
{
    return browser.document()->size().height() <= browser.height()
        && browser.document()->idealWidth() <= browser.width();
}

bool fits(const QWidget &widget)
{
    if (const auto *const label = qobject_cast<const QLabel *>(&widget))
        return label->text().isEmpty() || hasRoom(*label, label->sizeHint());
    if (const auto *const button = qobject_cast<const QPushButton *>(&widget))
        return lettersFit(*button);
    if (const auto *const chooser = qobject_cast<const QComboBox *>(&widget))
        return chooser->width() >= chooser->sizeHint().width();
    if (const auto *const list = qobject_cast<const QAbstractItemView *>(&widget))
        return listFits(*list);
    if (const auto *const browser = qobject_cast<const AutoResizeTextBrowser *>(&widget))
        return documentFits(*browser);
    if (const auto *const edit = qobject_cast<const QTextEdit *>(&widget))
        return placeholderFits(*edit);
    return true;
}

bool isOfScrollArea(const QWidget &widget)
{
    return widget.objectName() == QLatin1String("itemsWidget");
}

// A screen that is smaller than the viewer was made for shows a part of the picture only.
bool isCutOnPurpose(const QWidget &widget)
{
    return isOfScrollArea(widget) || widget.objectName() == QLatin1String("picture");
}

bool staysInParent(const QWidget &widget)
{
    return widget.isWindow() || isCutOnPurpose(widget) || widget.parentWidget()->rect().contains(widget.geometry());
}

bool showsText(const QWidget &widget)
{
    const QVariant text = widget.property("text");
    return !(text.isValid() ? text : widget.property("plainText")).toString().isEmpty();
}

int colorsIn(const QImage &image)
{
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colors.insert(image.pixel(x, y));
    }
    return colors.size();
}

bool isSeenWhole(const QWidget &widget)
{
    return widget.visibleRegion().boundingRect() == widget.rect();
}

QImage partOf(const QImage &picture, const QWidget &window, const QWidget &widget)
{
    const qreal ratio = picture.devicePixelRatio();
    const QPointF place = widget.mapTo(&window, QPoint());
    return picture.copy(QRect((place * ratio).toPoint(), widget.size() * ratio));
}

// What is said of the widgets that are to be seen in one window. Empty where there is nothing to say.
QStringList complaintsAbout(QWidget &window, const QImage &picture)
{
    QStringList complaints;
    const QList<QWidget *> widgets = window.findChildren<QWidget *>();
    for (const QWidget *const widget : widgets) {
        if (!widget->isVisible())
            continue;
        if (!fits(*widget))
            complaints << QStringLiteral("no room for the text of ") + nameOf(*widget);
        if (!staysInParent(*widget))
            complaints << QStringLiteral("cut off: ") + nameOf(*widget);
        if (showsText(*widget) && isSeenWhole(*widget) && colorsIn(partOf(picture, window, *widget)) < 4)
            complaints << QStringLiteral("no text is painted in ") + nameOf(*widget);
    }
    return complaints;
}

} // namespace

void TestPanelStates::cleanup()
{
    const QString complaints = complaintsOf(*m_log);
    m_log.reset();
    QCOMPARE(complaints, QString());
}

void TestPanelStates::textsFitAndArePainted_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("language");
    for (std::size_t state = 0; state < panelStates().size(); ++state) {
        const std::size_t languages = panelStates()[state].looksAlikeInAllLanguages ? 1 : sampleTexts().size();
        for (std::size_t language = 0; language < languages; ++language)
            QTest::addRow("%s, %s", panelStates()[state].name, sampleTexts()[language].language)
                << static_cast<int>(state) << static_cast<int>(language);
    }
}

void TestPanelStates::textsFitAndArePainted()
{
    QFETCH(int, state);
    QFETCH(int, language);
    SamplePanel panel(sampleTexts()[static_cast<std::size_t>(language)]);
    panelStates()[static_cast<std::size_t>(state)].enter(panel);
    const QImage picture = panel.picture();
    QCOMPARE(picture.devicePixelRatio(), qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble());
    QVERIFY(colorsIn(picture) > 20);
    QStringList complaints = complaintsAbout(panel.window(), picture);
    if (QWidget *const list = QApplication::activePopupWidget())
        complaints += complaintsAbout(*list, list->grab().toImage());
    QCOMPARE(complaints.join(QStringLiteral("; ")), QString());
}

void TestPanelStates::aTextWithoutRoomWouldBeFound()
{
    SamplePanel panel(sampleTexts().front());
    auto *const clear = panel.child<QPushButton>("clearButton");
    clear->setFixedWidth(clear->sizeHint().width() - 1);
    panel.child<QPushButton>("sendMsg")->setFixedHeight(6);
    panel.child<QLabel>("remainWord")->setStyleSheet(QStringLiteral("color: transparent;"));
    const QStringList complaints = complaintsAbout(panel.window(), panel.picture());
    QCOMPARE(complaints,
             QStringList({QStringLiteral("no room for the text of QPushButton clearButton"),
                          QStringLiteral("no text is painted in QLabel remainWord"),
                          QStringLiteral("no room for the text of QPushButton sendMsg")}));
}

int main(int argc, char **argv)
{
    // As a host sets it: pictures have the screen's resolution.
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    TestPanelStates test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_panelstates.moc"
