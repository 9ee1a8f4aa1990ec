#include "support/logcatcher.h"
#include "theme/theme.h"

#include <QApplication>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

#include <optional>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

namespace {

class StyledButton : public QPushButton {
public:
    int styleChanges = 0;

protected:
    void changeEvent(QEvent *event) override
    {
        styleChanges += event->type() == QEvent::StyleChange ? 1 : 0;
        QPushButton::changeEvent(event);
    }
};

} // namespace

class TestTheme : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_log.emplace(); }
    void cleanup();

    void themeHasItsOwnType();
    void defaultThemeIsRead();
    void folderOfAHostIsRead();
    void unknownThemeChangesNothing();
    void applicationIsDressedFromTheTheme();
    void equalSheetIsNotSetAgain();
    void unknownThemeKeepsTheApplicationDressed();

private:
    std::optional<LogCatcher> m_log;
};

void TestTheme::cleanup()
{
    qApp->setStyleSheet(QString());
    const QStringList complaints = m_log->complaints();
    m_log.reset();
    QCOMPARE(complaints, QStringList());
}

void TestTheme::themeHasItsOwnType()
{
    const Theme theme(QStringLiteral("plumo.global.theme"));
    QCOMPARE(theme.objectName(), QStringLiteral("plumo.global.theme"));
    QCOMPARE(theme.metaObject()->className(), "tavro::aiassistant::Theme");
    QVERIFY(theme.inherits("ZT::Theme"));
}

void TestTheme::defaultThemeIsRead()
{
    Theme theme(QStringLiteral("t"));
    changeTheme(&theme, QStringLiteral("aiassistant"), QStringLiteral("default"));
    QCOMPARE(theme.themeName(), QStringLiteral("Default"));
    QCOMPARE(theme.color(QStringLiteral("Button_Text_Hover")), QStringLiteral("#FF6D00"));
}

void TestTheme::folderOfAHostIsRead()
{
    QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("theme")));
    QFile file(folder.filePath(QStringLiteral("theme/light.theme")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[General]\nThemeName=Light\n");
    file.close();
    Theme theme(QStringLiteral("t"));
    changeTheme(&theme, folder.path(), QStringLiteral("light"));
    QCOMPARE(theme.themeName(), QStringLiteral("Light"));
}

void TestTheme::unknownThemeChangesNothing()
{
    Theme theme(QStringLiteral("t"));
    changeTheme(&theme, QStringLiteral("aiassistant"), QStringLiteral("default"));
    const ExpectedLog warning(*m_log,
                              QStringLiteral("cannot change to theme :/aiassistant/theme/absent_aiassistant.theme"));
    changeTheme(&theme, QStringLiteral("aiassistant"), QStringLiteral("absent"));
    QCOMPARE(theme.themeName(), QStringLiteral("Default"));
}

void TestTheme::applicationIsDressedFromTheTheme()
{
    QPushButton button;
    button.setObjectName(QStringLiteral("sendMsg"));
    button.resize(80, 32);
    Theme theme(QStringLiteral("t"));
    changeAppStyleSheet(&theme, QStringLiteral("aiassistant"), QStringLiteral("default"));
    QVERIFY(!qApp->styleSheet().contains(QStringLiteral("aiassistant.theme.")));
    const QColor brand(theme.color(QStringLiteral("GeneralButtonBackgroundNormal")));
    QCOMPARE(button.grab().toImage().pixelColor(4, 16), brand);
}

void TestTheme::equalSheetIsNotSetAgain()
{
    Theme theme(QStringLiteral("t"));
    changeAppStyleSheet(&theme, QStringLiteral("aiassistant"), QStringLiteral("default"));
    StyledButton button;
    button.show();
    button.styleChanges = 0;
    changeAppStyleSheet(&theme, QStringLiteral("aiassistant"), QStringLiteral("default"));
    QCOMPARE(button.styleChanges, 0);
    qApp->setStyleSheet(QString());
    QVERIFY(button.styleChanges > 0);
    button.styleChanges = 0;
    changeAppStyleSheet(&theme, QStringLiteral("aiassistant"), QStringLiteral("default"));
    QVERIFY(button.styleChanges > 0);
}

void TestTheme::unknownThemeKeepsTheApplicationDressed()
{
    Theme theme(QStringLiteral("t"));
    changeAppStyleSheet(&theme, QStringLiteral("aiassistant"), QStringLiteral("default"));
    const QString sheet = qApp->styleSheet();
    const ExpectedLog warning(*m_log, QStringLiteral("cannot change to theme"));
    changeAppStyleSheet(&theme, QStringLiteral("aiassistant"), QStringLiteral("absent"));
    QCOMPARE(qApp->styleSheet(), sheet);
}

QTEST_MAIN(TestTheme)
#include "tst_theme.moc"
