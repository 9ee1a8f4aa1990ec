#include "model/mediafolder.h"
#include "playout/samplefiles.h"
#include "support/waiting.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace tavro::playout;
using namespace tavro::testsupport;

/// A media folder into which files are put while the host runs.
class PlayoutMediaFolderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void whatIsThereIsAddedAtOnce();
    void newFileIsAdded();
    void severalNewFilesAreToldOfOnce();
    void growingFileIsAddedWhenItIsWhole();
    void emptyFileIsNotAdded();
    void fileInANewFolderIsAdded();
    void renamedFileIsAddedUnderItsNewName();
    void otherFilesAreNotAdded();
    void whatGoesStays();
    void foldersMayBeMissing();

private:
    void watch();
    bool has(const char *id) const { return library->find(QLatin1String(id)) != nullptr; }
    bool becomes(int count)
    {
        return eventually([&] { return static_cast<int>(library->items().size()) == count; });
    }
    QString file(const char *name) const { return root->filePath(QLatin1String(name)); }

    std::unique_ptr<QTemporaryDir> root;
    std::unique_ptr<MediaLibrary> library;
    std::unique_ptr<MediaFolder> folder;
};

void PlayoutMediaFolderTest::init()
{
    folder.reset();
    root = std::make_unique<QTemporaryDir>();
    library = std::make_unique<MediaLibrary>();
    QVERIFY(writePicture(file("first.png")));
}

void PlayoutMediaFolderTest::watch()
{
    folder = std::make_unique<MediaFolder>(*library, root->path(), std::chrono::milliseconds(10));
}

void PlayoutMediaFolderTest::whatIsThereIsAddedAtOnce()
{
    QVERIFY(QDir(root->path()).mkdir(QStringLiteral("news")));
    QVERIFY(writePicture(file("news/second.png")));
    watch();
    QCOMPARE(library->items().size(), std::size_t(2));
    QVERIFY(has("first.png") && has("news/second.png"));
}

void PlayoutMediaFolderTest::newFileIsAdded()
{
    watch();
    QVERIFY(writePicture(file("second.png")));
    QVERIFY(becomes(2));
    QVERIFY(has("second.png"));
    QVERIFY(!library->find(QStringLiteral("second.png"))->generated);
}

void PlayoutMediaFolderTest::severalNewFilesAreToldOfOnce()
{
    watch();
    QTemporaryDir elsewhere;
    const QString prepared = elsewhere.filePath(QStringLiteral("clip.png"));
    QVERIFY(writePicture(prepared));
    QSignalSpy told(library.get(), &MediaLibrary::sigItemsAdded);
    for (int number = 1; number <= 50; ++number)
        QVERIFY(QFile::copy(prepared, root->filePath(QStringLiteral("clip %1.png").arg(number))));
    QVERIFY(becomes(51));
    QCOMPARE(told.count(), 1);
    QCOMPARE(library->items().back().id, QStringLiteral("clip 50.png"));
}

void PlayoutMediaFolderTest::growingFileIsAddedWhenItIsWhole()
{
    watch();
    QFile growing(file("second.png"));
    QVERIFY(growing.open(QFile::WriteOnly));
    QSignalSpy looked(folder.get(), &MediaFolder::sigLooked);
    for (int part = 1; part <= 5; ++part) {
        growing.write("part of a file");
        growing.flush();
        QVERIFY(looked.wait(static_cast<int>(waitLimit.count())));
        // It has looked since this part came, so the next part comes before it looks again.
        QCOMPARE(library->items().size(), std::size_t(1));
    }
    growing.close();
    QVERIFY(becomes(2));
}

void PlayoutMediaFolderTest::emptyFileIsNotAdded()
{
    watch();
    QSignalSpy looked(folder.get(), &MediaFolder::sigLooked);
    QFile empty(file("second.png"));
    QVERIFY(empty.open(QFile::WriteOnly));
    for (int looks = 0; looks < 3; ++looks)
        QVERIFY(looked.wait(static_cast<int>(waitLimit.count())));
    QCOMPARE(library->items().size(), std::size_t(1));
    empty.write("something");
    empty.close();
    QVERIFY(becomes(2));
}

void PlayoutMediaFolderTest::fileInANewFolderIsAdded()
{
    watch();
    QSignalSpy looked(folder.get(), &MediaFolder::sigLooked);
    QVERIFY(QDir(root->path()).mkdir(QStringLiteral("sport")));
    QVERIFY(looked.wait(static_cast<int>(waitLimit.count())));
    QVERIFY(writePicture(file("sport/goal.png")));
    QVERIFY(becomes(2));
    QVERIFY(has("sport/goal.png"));
}

void PlayoutMediaFolderTest::renamedFileIsAddedUnderItsNewName()
{
    watch();
    QVERIFY(writePicture(file("second.png.part.png")));
    QVERIFY(QFile::rename(file("second.png.part.png"), file("second.png")));
    QVERIFY(becomes(2));
    QVERIFY(has("second.png"));
}

void PlayoutMediaFolderTest::otherFilesAreNotAdded()
{
    watch();
    QSignalSpy looked(folder.get(), &MediaFolder::sigLooked);
    QFile notes(file("notes.txt"));
    QVERIFY(notes.open(QFile::WriteOnly) && notes.write("text") == 4);
    notes.close();
    QVERIFY(looked.wait(static_cast<int>(waitLimit.count())));
    QVERIFY(writePicture(file("second.png")));
    QVERIFY(becomes(2));
}

void PlayoutMediaFolderTest::whatGoesStays()
{
    watch();
    QSignalSpy looked(folder.get(), &MediaFolder::sigLooked);
    QVERIFY(QFile::remove(file("first.png")));
    QVERIFY(looked.wait(static_cast<int>(waitLimit.count())));
    QVERIFY(has("first.png"));
    // Back again it is the item that it was.
    QVERIFY(writePicture(file("first.png")) && writePicture(file("second.png")));
    QVERIFY(becomes(2));
}

void PlayoutMediaFolderTest::foldersMayBeMissing()
{
    MediaFolder nowhere(*library, file("nowhere"));
    QVERIFY(library->items().empty());
}

QTEST_GUILESS_MAIN(PlayoutMediaFolderTest)
#include "tst_playoutmediafolder.moc"
