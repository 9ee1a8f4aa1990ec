#include "conversation.h"
#include "panelsupport.h"
#include "translate/lookup.h"
#include "widgets/answerwidget.h"
#include "widgets/mainwidget.h"

#include <QAccessible>
#include <QComboBox>
#include <QFrame>
#include <QPushButton>
#include <QTest>

#include <functional>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

Q_DECLARE_METATYPE(QAccessible::Role)

/// What the panel is to those who do not see it.
class TestAccessibleNames : public ConversationTest {
    Q_OBJECT

private Q_SLOTS:
    void everyControlHasARoleAndAName_data();
    void everyControlHasARoleAndAName();
    void namesFollowTheLanguage_data();
    void namesFollowTheLanguage();
    void namesOfPicturesOnlyDiffer();
    void everyNameIsTranslated_data();
    void everyNameIsTranslated();
    void choosersAreDescribed();
    void statesAreTold();
    void textsAreRead();
    void viewerIsNamed();
    void controlsArePressed();

private:
    static QAccessibleInterface *of(QWidget *widget) { return QAccessible::queryAccessibleInterface(widget); }
    static QString nameOfInterface(QWidget *widget) { return of(widget)->text(QAccessible::Name); }
};

namespace {

// Of all that the panel is made of, down from its window.
void visit(QAccessibleInterface *interface, const std::function<void(QAccessibleInterface &)> &look)
{
    look(*interface);
    for (int index = 0; index < interface->childCount(); ++index) {
        if (QAccessibleInterface *const child = interface->child(index))
            visit(child, look);
    }
}

bool isControl(const QAccessibleInterface &interface)
{
    return interface.state().focusable && !interface.state().invisible;
}

struct NamedControl {
    const char *widget;
    QAccessible::Role role;
    QString (*name)();
};

// Their names in the current language.
const NamedControl namedControls[] = {
    {"askAndAnwser", QAccessible::CheckBox, [] { return text("AIAnswer"); }},
    {"generateImage", QAccessible::CheckBox, [] { return text("GeneateImage"); }},
    {"askEdit", QAccessible::EditableText, [] { return text("DescribeImage"); }},
    {"modelBtn", QAccessible::CheckBox, [] { return QStringLiteral("Deepseek"); }},
    {"onlineSearch", QAccessible::CheckBox, [] { return text("OnlineSearch"); }},
    {"sendMsg", QAccessible::Button, [] { return text("Send"); }},
    {"stop", QAccessible::Button, [] { return text("Stop"); }},
    {"clearButton", QAccessible::Button, [] { return text("Clear"); }},
    {"scrollArea", QAccessible::Client, [] { return nameText("Conversation"); }},
    {"copyButton", QAccessible::Button, [] { return text("Copy"); }},
    {"tryAgainButton", QAccessible::Button, [] { return text("TryAgain"); }},
    {"magnifierButton", QAccessible::Button, [] { return nameText("View Image"); }},
    {"downloadButton", QAccessible::Button, [] { return text("DownloadToMediaLibrary"); }},
};

} // namespace

void TestAccessibleNames::everyControlHasARoleAndAName_data()
{
    QTest::addColumn<int>("language");
    for (std::size_t language = 0; language < sampleTexts().size(); ++language)
        QTest::newRow(sampleTexts()[language].language) << static_cast<int>(language);
}

void TestAccessibleNames::everyControlHasARoleAndAName()
{
    QFETCH(int, language);
    makePanel(static_cast<std::size_t>(language));
    const auto bars = panel->window().findChildren<QFrame *>(QStringLiteral("imageButtonFrame"));
    for (QFrame *const bar : bars)
        bar->show();
    QStringList nameless;
    int controls = 0;
    visit(of(&panel->panel()), [&](QAccessibleInterface &interface) {
        if (!isControl(interface))
            return;
        ++controls;
        const bool isNamed = !interface.text(QAccessible::Name).trimmed().isEmpty();
        if (!isNamed || interface.role() == QAccessible::NoRole)
            nameless << nameOf(qobject_cast<QWidget *>(interface.object()));
    });
    QCOMPARE(nameless, QStringList());
    // Modes, edit, choosers, clear, and the conversation with its five texts, two thumbnails and all of their buttons.
    QVERIFY2(controls >= 20, qPrintable(QString::number(controls)));
}

void TestAccessibleNames::namesFollowTheLanguage_data()
{
    everyControlHasARoleAndAName_data();
}

void TestAccessibleNames::namesFollowTheLanguage()
{
    QFETCH(int, language);
    // Not a new panel: the one in English is switched.
    useLanguage(QLatin1String(sampleTexts()[static_cast<std::size_t>(language)].language));
    panel->panel().switchLanguage();
    for (const NamedControl &control : namedControls) {
        auto *const widget = child<QWidget>(control.widget);
        QVERIFY2(widget, control.widget);
        QVERIFY2(!control.name().isEmpty(), control.widget);
        QCOMPARE(nameOfInterface(widget), control.name());
        QVERIFY2(
            of(widget)->role() == control.role,
            qPrintable(QStringLiteral("%1 has role %2").arg(QLatin1String(control.widget)).arg(of(widget)->role())));
    }
}

void TestAccessibleNames::namesOfPicturesOnlyDiffer()
{
    QSet<QString> names;
    for (const SampleTexts &texts : sampleTexts()) {
        useLanguage(QLatin1String(texts.language));
        panel->panel().switchLanguage();
        names << nameOfInterface(child("magnifierButton"));
        QCOMPARE(child("magnifierButton")->toolTip(), nameOfInterface(child("magnifierButton")));
    }
    QCOMPARE(names.size(), 5);
    useLanguage(QStringLiteral("klingon"));
    panel->panel().switchLanguage();
    QCOMPARE(nameOfInterface(child("magnifierButton")), QStringLiteral("View Image"));
}

void TestAccessibleNames::everyNameIsTranslated_data()
{
    everyControlHasARoleAndAName_data();
}

void TestAccessibleNames::everyNameIsTranslated()
{
    QFETCH(int, language);
    useLanguage(QLatin1String(sampleTexts()[static_cast<std::size_t>(language)].language));
    for (const char *const name :
         {"View Image", "Close", "Aspect Ratio", "Style", "Conversation", "Question", "Answer"})
        QCOMPARE(nameText(name) == QLatin1String(name), language == 0); // the names are in English
}

// Their name is what is chosen, or what is to be chosen: that is the platform's.
void TestAccessibleNames::choosersAreDescribed()
{
    QSet<QString> descriptions;
    for (const SampleTexts &texts : sampleTexts()) {
        useLanguage(QLatin1String(texts.language));
        panel->panel().switchLanguage();
        for (const char *const name : {"ratioSelect", "styleSelect"}) {
            QAccessibleInterface *const chooser = of(child(name));
            QCOMPARE(chooser->role(), QAccessible::ComboBox);
            QCOMPARE(chooser->text(QAccessible::Value), child<QComboBox>(name)->currentText());
            QCOMPARE(child(name)->accessibleName(), chooser->text(QAccessible::Description));
            QCOMPARE(child(name)->toolTip(), chooser->text(QAccessible::Description));
            descriptions << chooser->text(QAccessible::Description);
        }
    }
    QCOMPARE(descriptions.size(), 2 * 5);
}

void TestAccessibleNames::statesAreTold()
{
    QVERIFY(of(child("generateImage"))->state().checked);
    QVERIFY(!of(child("askAndAnwser"))->state().checked);
    QVERIFY(of(child("askEdit"))->state().editable);
    panel->panel().setAskAndAnswerAreaEnable(false);
    for (const char *name : {"askAndAnwser", "generateImage", "askEdit", "ratioSelect", "styleSelect", "copyButton"})
        QVERIFY2(of(child(name))->state().disabled, name);
    QVERIFY(!of(child("stop"))->state().disabled);
    QVERIFY(of(child("sendMsg"))->state().invisible);
}

void TestAccessibleNames::textsAreRead()
{
    const auto browsers = panel->window().findChildren<QWidget *>(QStringLiteral("textBrowser"));
    QStringList read;
    for (QWidget *const browser : browsers) {
        QAccessibleTextInterface *const content = of(browser)->textInterface();
        QVERIFY(content);
        read << nameOfInterface(browser) + QStringLiteral(": ") + content->text(0, content->characterCount());
    }
    QVERIFY(read.contains(QStringLiteral("Question: ") + QString::fromUtf8(panel->texts.question)));
    QVERIFY(read.contains(QStringLiteral("Answer: ") + QString::fromUtf8(panel->texts.answer)));
    QVERIFY(read.first().startsWith(QStringLiteral("Answer: Hello")));
    QCOMPARE(nameOfInterface(child("magnifierButton")->parentWidget()->parentWidget()),
             QStringLiteral("hills at sunset"));
}

void TestAccessibleNames::viewerIsNamed()
{
    for (const SampleTexts &texts : sampleTexts()) {
        useLanguage(QLatin1String(texts.language));
        panel->openViewer(samplePicture(Qt::red), {1920, 1080});
        QWidget &viewer = panel->window();
        auto *const close = viewer.findChild<QWidget *>(QStringLiteral("close"));
        QCOMPARE(nameOfInterface(close), nameText("Close"));
        QCOMPARE(close->toolTip(), nameText("Close"));
        QCOMPARE(of(close)->role(), QAccessible::Button);
        QCOMPARE(nameOfInterface(viewer.findChild<QWidget *>(QStringLiteral("download"))),
                 text("DownloadToMediaLibrary"));
        QCOMPARE(nameOfInterface(viewer.findChild<QWidget *>(QStringLiteral("picture"))),
                 QStringLiteral("hills at sunset"));
    }
}

// A screen reader presses by the action, without the mouse or a key.
void TestAccessibleNames::controlsArePressed()
{
    QAccessibleActionInterface *const mode = of(child("askAndAnwser"))->actionInterface();
    QVERIFY(mode->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    mode->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(child<QPushButton>("askAndAnwser")->isChecked());
    QVERIFY(child("modelBtn")->isVisible());
    of(child("clearButton"))->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(panel->window().findChildren<QWidget *>(QStringLiteral("textBrowser")).size(), 0);
}

QTEST_MAIN(TestAccessibleNames)
#include "tst_accessiblenames.moc"
