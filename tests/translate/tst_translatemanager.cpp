#include "support/logcatcher.h"
#include "translate/lookup.h"
#include "translate/translatemanager.h"
#include "zvtranslate/zvtranslate.h"

#include <QTemporaryDir>
#include <QtTest>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <set>
#include <thread>
#include <vector>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

class TestTranslateManager : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_log.emplace(); }
    void cleanup();

    void oneInstanceForThreadsThatAskAtOnce();
    void emptyListLoadsNothing();
    void failedFileDoesNotStopThoseAfterIt();
    void laterFileOfTheListWins();
    void languageIsSwitchedForAllLookups();

private:
    QString file(const QString &name, const QByteArray &language, const QByteArray &text) const;

    QTemporaryDir m_folder;
    std::optional<LogCatcher> m_log;
};

void TestTranslateManager::cleanup()
{
    const QStringList complaints = m_log->complaints();
    m_log.reset();
    QCOMPARE(complaints, QStringList());
}

QString TestTranslateManager::file(const QString &name, const QByteArray &language, const QByteArray &text) const
{
    QFile out(m_folder.filePath(name));
    const QByteArray bytes = "<TS version=\"2.1\" language=\"" + language
        + "\"><context><name>aiassistant</name><message><source>Key</source><translation>" + text
        + "</translation></message></context></TS>";
    const bool written = out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size();
    return written ? out.fileName() : QString();
}

// Runs first, so that the threads compete for the making.
void TestTranslateManager::oneInstanceForThreadsThatAskAtOnce()
{
    constexpr int count = 8;
    std::mutex mutex;
    std::condition_variable changed;
    int ready = 0;
    std::set<const void *> managers;
    std::set<const void *> translators;
    const auto ask = [&] {
        std::unique_lock lock(mutex);
        ++ready;
        changed.notify_all();
        changed.wait(lock, [&] { return ready == count; });
        lock.unlock();
        TranslateManager &manager = TranslateManager::instance();
        tavro::trans::Translator &translator = manager.translator();
        lock.lock();
        managers.insert(&manager);
        translators.insert(&translator);
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back(ask);
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(managers.size(), std::size_t(1));
    QCOMPARE(translators.size(), std::size_t(1));
    QCOMPARE(*managers.begin(), static_cast<const void *>(&TranslateManager::instance()));
}

void TestTranslateManager::emptyListLoadsNothing()
{
    TranslateManager::instance().loadLanguageFiles({});
    QCOMPARE(TranslateManager::instance().translator().languages(), QStringList());
}

void TestTranslateManager::failedFileDoesNotStopThoseAfterIt()
{
    const ExpectedLog warning(*m_log, QStringLiteral("absent.xml"));
    const TranslateManager &manager = TranslateManager::instance();
    manager.loadLanguageFiles(
        {m_folder.filePath(QStringLiteral("absent.xml")), file(QStringLiteral("a.xml"), "first", "text")});
    TranslateManager::instance().switchLanguage(QStringLiteral("first"));
    QCOMPARE(text("Key"), QStringLiteral("text"));
}

void TestTranslateManager::laterFileOfTheListWins()
{
    const QString one = file(QStringLiteral("one.xml"), "order", "one");
    const QString two = file(QStringLiteral("two.xml"), "order", "two");
    TranslateManager::instance().loadLanguageFiles({two, one});
    TranslateManager::instance().switchLanguage(QStringLiteral("order"));
    QCOMPARE(text("Key"), QStringLiteral("one"));
    TranslateManager::instance().loadLanguageFiles({one, two});
    QCOMPARE(text("Key"), QStringLiteral("two"));
}

void TestTranslateManager::languageIsSwitchedForAllLookups()
{
    TranslateManager &manager = TranslateManager::instance();
    manager.loadLanguageFiles({file(QStringLiteral("x.xml"), "x", "in x"), file(QStringLiteral("y.xml"), "y", "in y")});
    manager.switchLanguage(QStringLiteral("x"));
    QCOMPARE(text("Key"), QStringLiteral("in x"));
    manager.switchLanguage(QStringLiteral("y"));
    QCOMPARE(text("Key"), QStringLiteral("in y"));
    QCOMPARE(tavro::trans::translate(manager.translator(), "aiassistant", "Key", QString()), QStringLiteral("in y"));
    QCOMPARE(text("Unknown"), QString());
    manager.switchLanguage(QStringLiteral("z"));
    QCOMPARE(text("Key"), QString());
}

QTEST_GUILESS_MAIN(TestTranslateManager)
#include "tst_translatemanager.moc"
