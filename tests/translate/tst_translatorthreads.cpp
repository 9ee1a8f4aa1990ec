#include "support/logcatcher.h"
#include "zvtranslate/zvtranslate.h"

#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

using namespace tavro::testsupport;
using tavro::trans::Translator;

namespace {

constexpr int loads = 40;
constexpr int keys = 50;

// Every text of the file says which file it is.
QByteArray document(int number)
{
    QByteArray messages;
    for (int key = 0; key < keys; ++key)
        messages += "<message><source>key" + QByteArray::number(key) + "</source><translation>"
            + QByteArray::number(number) + "</translation></message>";
    return "<TS version=\"2.1\" language=\"en\"><context><name>c</name>" + messages + "</context></TS>";
}

} // namespace

class TestTranslatorThreads : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void lookupsSeeWholeFilesWhileOthersLoad();
};

// A reader that goes through the keys in order may meet a newer file on the way, never an older one: a file that came
// in piece by piece would show old texts behind new ones.
void TestTranslatorThreads::lookupsSeeWholeFilesWhileOthersLoad()
{
    QTemporaryDir folder;
    QStringList files;
    for (int number = 1; number <= loads; ++number) {
        QFile file(folder.filePath(QStringLiteral("%1.xml").arg(number)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(document(number));
        files << file.fileName();
    }

    LogCatcher log;
    Translator translator;
    QVERIFY(translator.load(files.first()));
    QVERIFY(translator.switchLanguage(QStringLiteral("en")));

    std::mutex mutex;
    std::condition_variable changed;
    int rounds = 0;
    std::atomic_bool ending{false};
    std::atomic_int backward{0};
    std::atomic_int missing{0};
    const auto readAll = [&] {
        int newest = 0;
        for (int key = 0; key < keys; ++key) {
            const QString text = translate(translator, "c", ("key" + std::to_string(key)).c_str(), QString());
            missing += text.isEmpty() ? 1 : 0;
            backward += text.toInt() < newest ? 1 : 0;
            newest = text.toInt();
        }
    };
    const auto reader = [&] {
        while (!ending) {
            readAll();
            const std::lock_guard lock(mutex);
            ++rounds;
            changed.notify_all();
        }
    };
    // A thread that asks for the other things keeps company.
    const auto asker = [&] {
        while (!ending) {
            missing += translator.languages().size() == 1 && translator.hasTexts() ? 0 : 1;
            translator.switchLanguage(QStringLiteral("en"));
            missing += translator.currentLanguage() == QLatin1String("en") ? 0 : 1;
        }
    };

    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i)
        threads.emplace_back(reader);
    threads.emplace_back(asker);
    for (const QString &file : files) {
        std::unique_lock lock(mutex);
        const int seen = rounds;
        changed.wait(lock, [&] { return rounds > seen; });
        lock.unlock();
        translator.load(file);
    }
    ending = true;
    for (std::thread &thread : threads)
        thread.join();

    QCOMPARE(backward.load(), 0);
    QCOMPARE(missing.load(), 0);
    QCOMPARE(translator.text("c", "key0"), QString::number(loads));
    QCOMPARE(log.complaints(), QStringList());
}

QTEST_GUILESS_MAIN(TestTranslatorThreads)
#include "tst_translatorthreads.moc"
