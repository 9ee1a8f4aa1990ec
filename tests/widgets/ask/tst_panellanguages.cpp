#include "panelsupport.h"
#include "support/logcatcher.h"
#include "translate/translatemanager.h"
#include "widgets/mainwidget.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTest>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

/// Which language files a panel loads. The program stands in a folder of its own, with the language folder beside it,
/// and each test is about a language that the others leave alone: loaded texts stay.
class TestPanelLanguages : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void languageThatWasSwitchedBeforeIsShown();
    void fileOnDiskWins();
    void brokenFileDoesNotHideTheOthers();
    void withoutLanguageNothingIsShown();

private:
    void write(const QString &name, const QByteArray &content) const;
    static QByteArray sendIn(const char *language, const char *send);
    static QString sendText(const MainWidget &panel);

    QDir m_folder;
};

void TestPanelLanguages::init()
{
    m_folder.setPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/language/zvaiassistant"));
    QVERIFY(m_folder.removeRecursively());
    QVERIFY(m_folder.mkpath(QStringLiteral(".")));
    TranslateManager::instance().switchLanguage(QString());
}

void TestPanelLanguages::cleanup()
{
    m_folder.removeRecursively();
}

void TestPanelLanguages::write(const QString &name, const QByteArray &content) const
{
    QFile file(m_folder.filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QByteArray TestPanelLanguages::sendIn(const char *language, const char *send)
{
    return QByteArrayLiteral("<TS version=\"2.1\" language=\"") + language
        + "\"><context><name>aiassistant</name><message><source>Send</source><translation>" + send
        + "</translation></message></context></TS>";
}

QString TestPanelLanguages::sendText(const MainWidget &panel)
{
    return panel.findChild<QPushButton *>(QStringLiteral("sendMsg"))->text();
}

void TestPanelLanguages::languageThatWasSwitchedBeforeIsShown()
{
    TranslateManager::instance().switchLanguage(QStringLiteral("rus"));
    const MainWidget panel;
    QCOMPARE(sendText(panel), QStringLiteral("Отправить"));
    QCOMPARE(panel.findChild<QPushButton *>(QStringLiteral("clearButton"))->text(), QStringLiteral("Очистить"));
}

void TestPanelLanguages::fileOnDiskWins()
{
    write(QStringLiteral("a_korean.xml"), sendIn("korean", "first"));
    write(QStringLiteral("b_korean.xml"), sendIn("korean", "second"));
    write(QStringLiteral("own.xml"), sendIn("esperanto", "sendu"));
    QVERIFY(m_folder.mkpath(QStringLiteral("folder.xml")));
    const MainWidget panel;
    TranslateManager::instance().switchLanguage(QStringLiteral("korean"));
    const MainWidget korean;
    QCOMPARE(sendText(korean), QStringLiteral("second"));
    QCOMPARE(korean.findChild<QPushButton *>(QStringLiteral("stop"))->text(), QStringLiteral("중지"));
    TranslateManager::instance().switchLanguage(QStringLiteral("esperanto"));
    QCOMPARE(sendText(MainWidget()), QStringLiteral("sendu"));
}

void TestPanelLanguages::brokenFileDoesNotHideTheOthers()
{
    LogCatcher log;
    write(QStringLiteral("a.xml"), QByteArrayLiteral("<TS language="));
    write(QStringLiteral("b.xml"), sendIn("latin", "mitte"));
    const ExpectedLog refused(log, QStringLiteral("a.xml"));
    TranslateManager::instance().switchLanguage(QStringLiteral("latin"));
    QCOMPARE(sendText(MainWidget()), QStringLiteral("mitte"));
}

void TestPanelLanguages::withoutLanguageNothingIsShown()
{
    QCOMPARE(sendText(MainWidget()), QString());
}

QTEST_MAIN(TestPanelLanguages)
#include "tst_panellanguages.moc"
