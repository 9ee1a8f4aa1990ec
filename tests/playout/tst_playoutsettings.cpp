#include "aicontroller/aicontroller.h"
#include "playout/settingsfixture.h"
#include "support/waiting.h"
#include "translate/translatemanager.h"
#include "zvtranslate/zvtranslate.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace tavro::playout;
using namespace tavro::testsupport;

/// What comes of changed settings.
class PlayoutSettingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { f.reset(); }
    void menuOpensThemOnce();
    void openedAgainAtOnceTheyStay();
    void serviceIsInForceFromTheNextQuestionOn();
    void languageIsSwitchedAtOnce();
    void themeChangesTheWindowAtOnce();
    void cancelChangesNothing();
    void aFileThatCannotBeWrittenKeepsThemOpen();
    void mediaFolderWaitsForTheNextStart();
    void hostStaysInHandMeanwhile();

private:
    static void ask();
    void writeTheme(const QString &path);

    std::unique_ptr<SettingsFixture> f;
};

void PlayoutSettingsTest::init()
{
    f = std::make_unique<SettingsFixture>();
    f->options.token = QStringLiteral("old token");
    QVERIFY(f->start());
}

void PlayoutSettingsTest::ask()
{
    HostFixture::controller->textToGenerateText(QStringLiteral("hello"));
}

void PlayoutSettingsTest::menuOpensThemOnce()
{
    auto &window = f->host->window();
    QTest::keyClick(&window, Qt::Key_P, Qt::AltModifier);
    QTRY_VERIFY(QApplication::activePopupWidget());
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_S);
    QTRY_COMPARE(window.findChildren<QDialog *>(QStringLiteral("settings")).size(), 1);
    QVERIFY(f->open());
    QCOMPARE(window.findChildren<QDialog *>(QStringLiteral("settings")).size(), 1);
}

void PlayoutSettingsTest::openedAgainAtOnceTheyStay()
{
    QVERIFY(f->open());
    QTest::keyClick(f->dialog, Qt::Key_Escape);
    f->host->showSettings();
    settle();
    const auto dialogs = f->host->window().findChildren<QDialog *>(QStringLiteral("settings"));
    QCOMPARE(dialogs.size(), 1);
    QVERIFY(dialogs.first()->isVisible());
}

void PlayoutSettingsTest::serviceIsInForceFromTheNextQuestionOn()
{
    ScriptedServer other;
    other.always("POST", "/base/ai/texttotext/generate/", ScriptedAnswer::status(500));
    QVERIFY(f->open());
    f->enter("settingsService", other.url() + QStringLiteral("/base/"));
    f->enter("settingsToken", QStringLiteral("new token"));
    f->enter("settingsUserid", QStringLiteral("operator 7"));
    f->enter("settingsNode", QStringLiteral("studio 1"));
    f->enter("settingsTimeout", QStringLiteral("90"));
    f->click("settingsOk");
    QTRY_VERIFY(f->isClosed());
    QCOMPARE(
        f->savedFile(),
        QStringLiteral("node=\"studio 1\"\nservice=%1/base\ntimeout=90\ntoken=\"new token\"\nuser-id=\"operator 7\"\n")
            .arg(other.url())
            .toUtf8());
    ask();
    QVERIFY(eventually([&] { return other.requestCount() == 1; }));
    const HttpRequest request = other.requests().first();
    QCOMPARE(request.header("token").value_or(QByteArray()), QByteArray("new token"));
    QCOMPARE(request.header("userId").value_or(QByteArray()), QByteArray("operator 7"));
    QCOMPARE(request.header("node").value_or(QByteArray()), QByteArray("studio 1"));
    QCOMPARE(f->server.requestCount(), 0);
    QCOMPARE(f->child<QLabel>("statusService").toolTip(), other.url() + QStringLiteral("/base"));
}

void PlayoutSettingsTest::languageIsSwitchedAtOnce()
{
    const auto &translator = tavro::aiassistant::TranslateManager::instance().translator();
    const QString file = QStringLiteral(":/aiassistant/language/aiassistant_rus.xml");
    tavro::aiassistant::TranslateManager::instance().loadLanguageFiles({file});
    QVERIFY(f->open());
    f->choose("settingsLanguage", QStringLiteral("rus"));
    QCOMPARE(translator.currentLanguage(), QStringLiteral("en"));
    f->click("settingsOk");
    QTRY_COMPARE(translator.currentLanguage(), QStringLiteral("rus"));
    QCOMPARE(f->savedFile(), QByteArray("language=rus\n"));
}

// The built-in theme with a green ground.
void PlayoutSettingsTest::writeTheme(const QString &path)
{
    QFile builtIn(f->options.themeFile);
    QVERIFY(builtIn.open(QFile::ReadOnly));
    QFile file(path);
    QVERIFY(file.open(QFile::WriteOnly));
    file.write(builtIn.readAll().replace("Bg_1=#151517", "Bg_1=#003300"));
}

void PlayoutSettingsTest::themeChangesTheWindowAtOnce()
{
    const QString path = f->data.filePath(QStringLiteral("green.theme"));
    writeTheme(path);
    int themes = 0;
    HostFixture::controller->sigThemeChanged.connect([&themes](const QString &) { ++themes; });
    const auto ground = [this] {
        return f->host->window().grab().toImage().pixelColor(
            f->child<QWidget>("stage").mapTo(&f->host->window(), {4, 4}));
    };
    QCOMPARE(ground(), QColor(0x15, 0x15, 0x17));
    QVERIFY(f->open());
    f->choose("settingsTheme", QString());
    QTRY_VERIFY(f->field<QLineEdit>("settingsThemeFile").isVisible());
    f->enter("settingsThemeFile", path);
    f->click("settingsOk");
    QTRY_COMPARE(ground(), QColor(0, 0x33, 0));
    QCOMPARE(themes, 1);
    QCOMPARE(f->savedFile(), "theme=" + path.toUtf8() + '\n');
    QVERIFY(f->open());
    QCOMPARE(f->field<QLineEdit>("settingsThemeFile").text(), path);
    f->choose("settingsTheme", QStringLiteral(":/aiassistant/theme/default_aiassistant.theme"));
    f->click("settingsOk");
    QTRY_COMPARE(ground(), QColor(0x15, 0x15, 0x17));
    QCOMPARE(f->savedFile(), QByteArray());
}

void PlayoutSettingsTest::cancelChangesNothing()
{
    QVERIFY(f->open());
    f->enter("settingsService", QStringLiteral("http://127.0.0.1:1"));
    QTest::keyClick(f->dialog, Qt::Key_Escape);
    QTRY_VERIFY(f->isClosed());
    QVERIFY(!QFile::exists(f->options.settingsFile));
    f->server.always("POST", "/ai/texttotext/generate/", ScriptedAnswer::status(500));
    ask();
    QVERIFY(eventually([&] { return f->server.requestCount() == 1; }));
    QVERIFY(f->open());
    QCOMPARE(f->field<QLineEdit>("settingsService").text(), f->server.url());
}

void PlayoutSettingsTest::aFileThatCannotBeWrittenKeepsThemOpen()
{
    f->options.settingsFile = QStringLiteral("/proc/playout.ini");
    QVERIFY(f->start());
    QVERIFY(f->open());
    f->enter("settingsNode", QStringLiteral("n"));
    f->click("settingsOk");
    QVERIFY2(f->labelOf("settingsMessage").contains(QStringLiteral("cannot be written")),
             qPrintable(f->labelOf("settingsMessage")));
    QVERIFY(!f->isClosed());
    f->server.always("POST", "/ai/texttotext/generate/", ScriptedAnswer::status(500));
    ask();
    QVERIFY(eventually([&] { return f->server.requestCount() == 1; }));
    QCOMPARE(f->server.requests().first().header("node").value_or("none"), QByteArray());
}

void PlayoutSettingsTest::mediaFolderWaitsForTheNextStart()
{
    QTemporaryDir other;
    QVERIFY(f->open());
    f->enter("settingsMedia", other.path());
    f->click("settingsOk");
    QTRY_VERIFY(f->isClosed());
    QVERIFY(f->log().contains(QStringLiteral("The media folder takes effect when playout is started again.")));
    QCOMPARE(f->labelText("libraryCount"), QStringLiteral("3"));
    QCOMPARE(f->savedFile(), "media=" + other.path().toUtf8() + '\n');
}

void PlayoutSettingsTest::hostStaysInHandMeanwhile()
{
    QVERIFY(f->open());
    f->host->state().put(1, 2, QStringLiteral("harbour.png"), true);
    QTest::mouseClick(&f->child<QPushButton>("layer2PlayStop"), Qt::LeftButton);
    QCOMPARE(f->labelText("layer2State"), QStringLiteral("STOPPED"));
    f->host.reset();
    QVERIFY(!f->dialog);
}

QTEST_MAIN(PlayoutSettingsTest)
#include "tst_playoutsettings.moc"
