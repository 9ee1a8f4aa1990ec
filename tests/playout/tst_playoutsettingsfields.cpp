#include "playout/settingsfixture.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

using namespace tavro::playout;
using namespace tavro::testsupport;
using tavro::playout::Role;

/// What the fields of the settings show and allow.
class PlayoutSettingsFieldsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { f.reset(); }
    void showsWhatIsInForce();
    void tokenIsHiddenUntilItIsAskedFor();
    void wrongThemeFileIsToldAtItsField();
    void wrongValuesAreToldAtTheirFields_data();
    void wrongValuesAreToldAtTheirFields();
    void givenValuesCanBeReadOnly();
    void clientHasNoServiceToSet();
    void serverHasNoLanguageToSet();
    void browsingFillsTheField();

private:
    std::unique_ptr<SettingsFixture> f;
};

void PlayoutSettingsFieldsTest::init()
{
    f = std::make_unique<SettingsFixture>();
    f->options.token = QStringLiteral("old token");
    QVERIFY(f->start());
}

void PlayoutSettingsFieldsTest::showsWhatIsInForce()
{
    QVERIFY(f->open());
    QCOMPARE(f->field<QLineEdit>("settingsService").text(), f->server.url());
    QCOMPARE(f->field<QLineEdit>("settingsToken").text(), QStringLiteral("old token"));
    QCOMPARE(f->field<QSpinBox>("settingsTimeout").value(), 60);
    QCOMPARE(f->field<QSpinBox>("settingsTick").value(), 1);
    QCOMPARE(f->field<QComboBox>("settingsLanguage").currentText(), QStringLiteral("English"));
    QCOMPARE(f->field<QComboBox>("settingsLanguage").count(), 5);
    QCOMPARE(f->field<QComboBox>("settingsTheme").currentText(), QStringLiteral("Default"));
    QVERIFY(!f->field<QLineEdit>("settingsThemeFile").isVisible());
    QCOMPARE(f->field<QLineEdit>("settingsMedia").text(), f->media.path());
    QVERIFY(f->field<QPushButton>("settingsOk").isEnabled());
    QCOMPARE(f->labelOf("settingsMessage"), QStringLiteral("Kept in ") + f->options.settingsFile);
}

void PlayoutSettingsFieldsTest::tokenIsHiddenUntilItIsAskedFor()
{
    QVERIFY(f->open());
    const auto &token = f->field<QLineEdit>("settingsToken");
    QVERIFY(!token.displayText().contains(QStringLiteral("old")));
    f->click("settingsTokenShow");
    QCOMPARE(token.displayText(), QStringLiteral("old token"));
    f->click("settingsTokenShow");
    QVERIFY(!token.displayText().contains(QStringLiteral("old")));
}

void PlayoutSettingsFieldsTest::wrongThemeFileIsToldAtItsField()
{
    QVERIFY(f->open());
    f->choose("settingsTheme", QString());
    f->enter("settingsThemeFile", QStringLiteral("/nowhere"));
    QCOMPARE(f->labelOf("settingsThemeFileHint"), QStringLiteral("This is not a file that can be read."));
    QVERIFY(!f->field<QPushButton>("settingsOk").isEnabled());
    f->choose("settingsTheme", QStringLiteral(":/aiassistant/theme/default_aiassistant.theme"));
    QVERIFY(f->field<QPushButton>("settingsOk").isEnabled());
}

void PlayoutSettingsFieldsTest::wrongValuesAreToldAtTheirFields_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("good");
    QTest::addColumn<QString>("problem");
    const auto row = [](const char *name, const char *field, const char *value, const char *good, const char *problem) {
        QTest::newRow(name) << QString::fromUtf8(field) << QString::fromUtf8(value) << QString::fromUtf8(good)
                            << QString::fromUtf8(problem);
    };
    row("no scheme", "settingsService", "127.0.0.1:8080", "http://127.0.0.1:8080",
        "This is not an address like http://127.0.0.1:8080.");
    row("no address", "settingsService", "", " http://a ", "This is not an address like http://127.0.0.1:8080.");
    row("a query", "settingsService", "http://a/?x", "https://a/x",
        "This is not an address like http://127.0.0.1:8080.");
    row("line break in the token", "settingsToken", "a\nb", "ab", "The token has a line break in it.");
    row("no folder", "settingsMedia", "/nowhere", "", "This is not a folder that can be read.");
}

void PlayoutSettingsFieldsTest::wrongValuesAreToldAtTheirFields()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    QFETCH(QString, good);
    const QByteArray fieldName = field.toLatin1();
    const QByteArray hintName = fieldName + "Hint";
    const char *const name = fieldName.constData();
    const char *const hint = hintName.constData();
    QVERIFY(f->open());
    QApplication::clipboard()->setText(value);
    f->enter(name, {});
    QTest::keyClick(&f->field<QLineEdit>(name), Qt::Key_V, Qt::ControlModifier);
    QTEST(f->labelOf(hint), "problem");
    QVERIFY(!f->field<QPushButton>("settingsOk").isEnabled());
    QTest::keyClick(f->dialog, Qt::Key_Return);
    QVERIFY(!f->isClosed());
    QCOMPARE(f->savedFile(), QByteArray());
    f->enter(name, good);
    QVERIFY(!f->labelOf(hint).startsWith(QStringLiteral("Th")));
    QVERIFY(f->field<QPushButton>("settingsOk").isEnabled());
}

void PlayoutSettingsFieldsTest::givenValuesCanBeReadOnly()
{
    f->options.givenBy = {{QStringLiteral("service"), QStringLiteral("--service on the command line")},
                          {QStringLiteral("token"), QStringLiteral("ASSISTANT_TOKEN in the environment")},
                          {QStringLiteral("theme"), QStringLiteral("--theme on the command line")}};
    QVERIFY(f->start());
    QVERIFY(f->open());
    QCOMPARE(f->labelOf("settingsServiceHint"), QStringLiteral("Given by --service on the command line."));
    QCOMPARE(f->labelOf("settingsTokenHint"), QStringLiteral("Given by ASSISTANT_TOKEN in the environment."));
    for (const char *name : {"settingsService", "settingsToken", "settingsTokenShow", "settingsTheme"})
        QVERIFY2(!f->field<QWidget>(name).isEnabled(), name);
    QVERIFY(f->field<QPushButton>("settingsTest").isEnabled());
    f->enter("settingsNode", QStringLiteral("n"));
    f->click("settingsOk");
    QTRY_VERIFY(f->isClosed());
    QCOMPARE(f->savedFile(), QByteArray("node=n\n"));
}

void PlayoutSettingsFieldsTest::clientHasNoServiceToSet()
{
    f->options.role = Role::Client;
    f->options.nats.servers = QStringList{QStringLiteral("nats://127.0.0.1:1")};
    QVERIFY(f->start());
    QVERIFY(f->open());
    for (const char *name : {"settingsService", "settingsToken", "settingsUserid", "settingsNode", "settingsTest"})
        QVERIFY2(!f->field<QWidget>(name).isEnabled(), name);
    QCOMPARE(f->labelOf("settingsServiceHint"),
             QStringLiteral("Without meaning here: the serving machine asks the service."));
    QVERIFY(f->field<QWidget>("settingsTimeout").isEnabled());
    QVERIFY(f->field<QWidget>("settingsLanguage").isEnabled());
}

void PlayoutSettingsFieldsTest::serverHasNoLanguageToSet()
{
    f->options.role = Role::Server;
    f->options.nats.servers = QStringList{QStringLiteral("nats://127.0.0.1:1")};
    QVERIFY(f->start());
    QVERIFY(f->open());
    QVERIFY(!f->field<QWidget>("settingsLanguage").isEnabled());
    QCOMPARE(f->labelOf("settingsLanguageHint"), QStringLiteral("Without meaning here: a server shows no assistant."));
    QVERIFY(f->field<QWidget>("settingsService").isEnabled());
}

void PlayoutSettingsFieldsTest::browsingFillsTheField()
{
    QTemporaryDir other;
    QVERIFY(f->open());
    f->click("settingsMediaBrowse");
    auto *const files = f->dialog->findChild<QFileDialog *>(QStringLiteral("settingsMediaDialog"));
    QVERIFY(files);
    QVERIFY(QTest::qWaitForWindowExposed(files));
    auto *const name = files->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    QVERIFY(name);
    name->selectAll();
    QTest::keyClicks(name, other.path());
    QTest::keyClick(name, Qt::Key_Return);
    QTRY_COMPARE(f->field<QLineEdit>("settingsMedia").text(), other.path());
}

QTEST_MAIN(PlayoutSettingsFieldsTest)
#include "tst_playoutsettingsfields.moc"
