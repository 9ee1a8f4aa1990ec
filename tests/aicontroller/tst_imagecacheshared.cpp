#include "aicontroller/imagecache.h"
#include "cachefolder.h"
#include "support/waiting.h"

#include <QProcess>
#include <QTest>

#include <atomic>
#include <condition_variable>
#include <cstdio>
#include <fcntl.h>
#include <iostream>
#include <memory>
#include <mutex>
#include <sched.h>
#include <set>
#include <string>
#include <sys/mount.h>
#include <thread>
#include <vector>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

namespace {

constexpr int savesEach = 50;

QByteArray contentOf(const std::string &writer, int number)
{
    return QByteArray::fromStdString(writer + ' ' + std::to_string(number)) + QByteArray(20000, 'x');
}

/// Saves and gives the paths.
std::vector<std::string> saveMany(const std::string &writer)
{
    std::vector<std::string> paths;
    for (int number = 0; number < savesEach; ++number)
        paths.push_back(imagecache::save(contentOf(writer, number)).toStdString());
    return paths;
}

/// What this program does when it is started as "<program> --save <writer>": waits for a line, saves, prints the paths.
int saveInThisProcess(const std::string &writer)
{
    std::cout << "ready" << std::endl;
    std::string line;
    std::getline(std::cin, line);
    for (const std::string &path : saveMany(writer))
        std::cout << path << '\n';
    return 0;
}

/// Lets threads go at once.
class StartingGate {
public:
    void open()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_open = true;
        }
        m_changed.notify_all();
    }
    void pass()
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_open; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_open = false;
};

/// Lets threads go on only together. They spin, so that they start within the same microsecond.
class Meeting {
public:
    explicit Meeting(int size)
        : m_size(size)
    { }

    void wait()
    {
        const int turn = m_turn;
        if (++m_waiting == m_size) {
            m_waiting = 0;
            ++m_turn;
        }
        while (m_turn == turn)
            std::this_thread::yield();
    }

private:
    const int m_size;
    std::atomic_int m_waiting{0};
    std::atomic_int m_turn{0};
};

/// Empty where each path holds what its writer saved there.
QStringList damaged(const std::string &writer, const std::vector<std::string> &paths)
{
    QStringList wrong;
    for (std::size_t number = 0; number < paths.size(); ++number) {
        const QString path = QString::fromStdString(paths.at(number));
        if (CacheFolder::contentOf(path) != contentOf(writer, static_cast<int>(number)))
            wrong.append(path);
    }
    return wrong;
}

} // namespace

class ImageCacheSharedTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void savesAtTheSameMomentGetDifferentNames();
    void threadsDoNotOverwriteEachOther();
    void processesDoNotOverwriteEachOther();
    void fullFileSystemLeavesNothingBehind();
};

// The folder is emptied for each round: all want the name of the first file.
void ImageCacheSharedTest::savesAtTheSameMomentGetDifferentNames()
{
    constexpr int writers = 3;
    constexpr int rounds = 400;
    const CacheFolder cache;
    QVERIFY(imagecache::makeDirectory());
    Meeting meeting(writers);
    std::atomic_int clashes{0};
    std::vector<std::string> paths(writers);
    const auto write = [&](int writer) {
        for (int round = 0; round < rounds; ++round) {
            meeting.wait();
            paths.at(static_cast<std::size_t>(writer)) = imagecache::save("picture").toStdString();
            meeting.wait();
            if (writer == 0)
                clashes += writers - static_cast<int>(std::set<std::string>(paths.begin(), paths.end()).size());
            meeting.wait();
            std::remove(paths.at(static_cast<std::size_t>(writer)).c_str());
        }
    };
    std::vector<std::thread> threads;
    for (int writer = 0; writer < writers; ++writer)
        threads.emplace_back(write, writer);
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(clashes.load(), 0);
    QCOMPARE(cache.names(), QStringList());
}

void ImageCacheSharedTest::threadsDoNotOverwriteEachOther()
{
    const std::vector<std::string> writers{"a", "b", "c", "d"};
    const CacheFolder cache;
    QVERIFY(imagecache::makeDirectory());
    StartingGate gate;
    std::vector<std::vector<std::string>> paths(writers.size());
    std::vector<std::thread> threads;
    for (std::size_t index = 0; index < writers.size(); ++index) {
        threads.emplace_back([&, index] {
            gate.pass();
            paths[index] = saveMany(writers[index]);
        });
    }
    gate.open();
    for (std::thread &thread : threads)
        thread.join();

    for (std::size_t index = 0; index < writers.size(); ++index)
        QCOMPARE(damaged(writers[index], paths[index]), QStringList());
    QCOMPARE(cache.names().size(), static_cast<int>(writers.size()) * savesEach);
}

void ImageCacheSharedTest::processesDoNotOverwriteEachOther()
{
    const std::vector<std::string> writers{"left", "right"};
    const CacheFolder cache;
    QVERIFY(imagecache::makeDirectory());
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const std::string &writer : writers) {
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->start(QCoreApplication::applicationFilePath(),
                                {QStringLiteral("--save"), QString::fromStdString(writer)});
    }
    for (const auto &process : processes) {
        QVERIFY(eventually([&] { return process->canReadLine(); }));
        QCOMPARE(process->readLine().trimmed(), QByteArray("ready"));
    }
    for (const auto &process : processes)
        process->write("go\n");
    for (std::size_t index = 0; index < writers.size(); ++index) {
        QProcess &process = *processes[index];
        QVERIFY(eventually([&] { return process.state() == QProcess::NotRunning; }));
        QCOMPARE(process.exitCode(), 0);
        std::vector<std::string> paths;
        for (const QByteArray &line : process.readAll().trimmed().split('\n'))
            paths.push_back(line.toStdString());
        QCOMPARE(static_cast<int>(paths.size()), savesEach);
        QCOMPARE(damaged(writers[index], paths), QStringList());
    }
    QCOMPARE(cache.names().size(), static_cast<int>(writers.size()) * savesEach);
}

// On a file system of 256 kB that only one thread sees. The other tests limit the size of a file, which everybody may.
void ImageCacheSharedTest::fullFileSystemLeavesNothingBehind()
{
    const CacheFolder cache;
    QVERIFY(imagecache::makeDirectory());
    bool isMounted = false;
    QStringList saved;
    QStringList left;
    std::thread([&] {
        isMounted = ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
            && ::mount("tmpfs", QFile::encodeName(cache.path()).constData(), "tmpfs", 0, "size=256k") == 0;
        if (!isMounted)
            return;
        for (const int kilobytes : {100, 200, 50})
            saved.append(imagecache::save(QByteArray(kilobytes * 1024, 'x')));
        left = cache.names();
    }).join();
    if (!isMounted)
        QSKIP("a file system may not be mounted here");
    QCOMPARE(saved, QStringList({cache.pathOf(1), QString(), cache.pathOf(2)}));
    QCOMPARE(left, QStringList({CacheFolder::nameOf(1), CacheFolder::nameOf(2)}));
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments.at(1) == QStringLiteral("--save"))
        return saveInThisProcess(arguments.at(2).toStdString());
    ImageCacheSharedTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_imagecacheshared.moc"
