#include "model/medialibrary.h"
#include "model/naturalorder.h"
#include "playout/samplefiles.h"
#include "support/waiting.h"
#include "view/medialistmodel.h"
#include "view/mediasizes.h"
#include "view/pictureloader.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace tavro::playout;
using namespace tavro::testsupport;

class PlayoutLibraryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { folder = std::make_unique<QTemporaryDir>(); }
    void sortsAsAPersonDoes_data();
    void sortsAsAPersonDoes();
    void holdsWhatCanBeShownSortedByName();
    void namesAreNotIds();
    void generatedPicturesAreMarkedAndNumbered();
    void aPictureIsAddedOnce();
    void aFolderThatIsNotThereIsEmpty();
    void resourcesAreIdsAndNames();
    void modelFollowsTheLibrary();
    void thumbnailsAreReadWhenAskedForAndFit();
    void aBrokenPictureLeavesNoThumbnail();
    void aPictureNamedJpgMayBeAPng();

private:
    QStringList names(const MediaLibrary &library) const;
    QString file(const char *name) const { return folder->filePath(QString::fromUtf8(name)); }

    std::unique_ptr<QTemporaryDir> folder;
};

QStringList PlayoutLibraryTest::names(const MediaLibrary &library) const
{
    QStringList names;
    for (const MediaItem &item : library.items())
        names.append(item.name);
    return names;
}

void PlayoutLibraryTest::sortsAsAPersonDoes_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    const auto row = [](const char *first, const char *second) {
        QTest::newRow(first) << QString::fromUtf8(first) << QString::fromUtf8(second);
    };
    row("a", "b");
    row("Anchor", "boat");
    row("boat", "Carol");
    row("clip 2", "clip 10");
    row("clip 2 b", "clip 10 a");
    row("clip", "clip 1");
    row("2", "10");
    row("009", "10");
    row("99999999999999999998", "99999999999999999999");
}

void PlayoutLibraryTest::sortsAsAPersonDoes()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QVERIFY(naturallyBefore(first, second));
    QVERIFY(!naturallyBefore(second, first));
    QVERIFY(!naturallyBefore(first, first));
}

void PlayoutLibraryTest::holdsWhatCanBeShownSortedByName()
{
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("news")));
    for (const char *name : {"clip 10.png", "clip 2.PNG", "news/Anchor.png", ".hidden.png"})
        QVERIFY(writePicture(file(name)));
    QVERIFY(!copySample(QStringLiteral("harbour clip.gif"), folder->path()).isEmpty());
    QVERIFY(QFile(file("notes.txt")).open(QFile::WriteOnly));
    MediaLibrary library;
    library.add(MediaLibrary::itemsIn(folder->path()));
    QCOMPARE(names(library),
             QStringList({QStringLiteral("Anchor"), QStringLiteral("clip 2"), QStringLiteral("clip 10"),
                          QStringLiteral("harbour clip")}));
    QCOMPARE(library.items().front().id, QStringLiteral("news/Anchor.png"));
    QVERIFY(library.items().back().kind == MediaItem::Kind::Animation);
    QVERIFY(library.items().front().kind == MediaItem::Kind::Picture);
}

void PlayoutLibraryTest::namesAreNotIds()
{
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("a")));
    QVERIFY(writePicture(file("same.png")));
    QVERIFY(writePicture(file("a/same.png")));
    MediaLibrary library;
    library.add(MediaLibrary::itemsIn(folder->path()));
    QCOMPARE(library.items().size(), std::size_t(2));
    QVERIFY(library.find(QStringLiteral("same.png")));
    QVERIFY(library.find(QStringLiteral("a/same.png")));
    QVERIFY(!library.find(QStringLiteral("same")));
}

void PlayoutLibraryTest::generatedPicturesAreMarkedAndNumbered()
{
    for (const char *name : {"download_10.jpg", "download_2.jpg", "other.jpg"})
        QVERIFY(writePicture(file(name)));
    MediaLibrary library;
    library.addGeneratedFolder(folder->path());
    QCOMPARE(names(library),
             QStringList({QStringLiteral("generated 2"), QStringLiteral("generated 10"), QStringLiteral("other")}));
    QVERIFY(library.items().front().generated);
}

void PlayoutLibraryTest::aPictureIsAddedOnce()
{
    MediaLibrary library;
    QSignalSpy added(&library, &MediaLibrary::sigItemsAdded);
    const QString id = library.addGenerated(file("download_1.jpg"));
    QCOMPARE(library.addGenerated(file("download_1.jpg")), id);
    QCOMPARE(added.count(), 1);
    QCOMPARE(library.items().size(), std::size_t(1));
}

void PlayoutLibraryTest::aFolderThatIsNotThereIsEmpty()
{
    MediaLibrary library;
    library.add(MediaLibrary::itemsIn(file("nowhere")));
    library.addGeneratedFolder(file("nowhere"));
    QVERIFY(library.items().empty());
}

void PlayoutLibraryTest::resourcesAreIdsAndNames()
{
    QVERIFY(writePicture(file("夜市.png")));
    MediaLibrary library;
    library.add(MediaLibrary::itemsIn(folder->path()));
    const MediaLibrary::Resources expected{{"夜市.png", "夜市"}};
    QVERIFY(library.resources() == expected);
}

void PlayoutLibraryTest::modelFollowsTheLibrary()
{
    MediaLibrary library;
    PictureLoader loader;
    const MediaListModel model(library, loader, 1.0);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    library.addGenerated(file("download_1.jpg"));
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(model.index(0).data().toString(), QStringLiteral("generated 1"));
    QVERIFY(model.index(0).data(MediaListModel::GeneratedRole).toBool());
    QCOMPARE(model.index(0).data(Qt::AccessibleTextRole).toString(), QStringLiteral("generated 1, generated picture"));
}

void PlayoutLibraryTest::thumbnailsAreReadWhenAskedForAndFit()
{
    QVERIFY(writePicture(file("wide.png"), Qt::green, {1600, 400}));
    MediaLibrary library;
    library.add(MediaLibrary::itemsIn(folder->path()));
    PictureLoader loader;
    MediaListModel model(library, loader, 2.0);
    QSignalSpy ready(&model, &MediaListModel::sigThumbnailReady);
    QVERIFY(model.index(0).data(Qt::DecorationRole).value<QPixmap>().isNull());
    QVERIFY(eventually([&] { return ready.count() == 1; }));
    const QPixmap thumbnail = model.index(0).data(Qt::DecorationRole).value<QPixmap>();
    QCOMPARE(thumbnail.width(), 2 * thumbnailSize.width());
    QCOMPARE(thumbnail.devicePixelRatio(), 2.0);
    QCOMPARE(thumbnail.toImage().pixelColor(5, 5), QColor(Qt::green));
}

void PlayoutLibraryTest::aBrokenPictureLeavesNoThumbnail()
{
    QFile broken(file("broken.png"));
    QVERIFY(broken.open(QFile::WriteOnly));
    broken.write("no picture");
    broken.close();
    MediaLibrary library;
    library.add(MediaLibrary::itemsIn(folder->path()));
    PictureLoader loader;
    MediaListModel model(library, loader, 1.0);
    QSignalSpy loaded(&loader, &PictureLoader::sigLoaded);
    QVERIFY(model.thumbnail(QStringLiteral("broken.png")).isNull());
    QVERIFY(eventually([&] { return loaded.count() == 1; }));
    QVERIFY(model.thumbnail(QStringLiteral("broken.png")).isNull());
    // It was not asked for again.
    QCOMPARE(loaded.count(), 1);
}

void PlayoutLibraryTest::aPictureNamedJpgMayBeAPng()
{
    QVERIFY(writePicture(file("download_1.jpg"), Qt::blue));
    PictureLoader loader;
    QSignalSpy loaded(&loader, &PictureLoader::sigLoaded);
    loader.load(file("download_1.jpg"), {32, 32});
    QVERIFY(eventually([&] { return loaded.count() == 1; }));
    const QImage image = loaded.first().at(2).value<QImage>();
    QCOMPARE(image.size(), QSize(32, 18));
    QCOMPARE(image.pixelColor(3, 3), QColor(Qt::blue));
}

QTEST_MAIN(PlayoutLibraryTest)
#include "tst_playoutlibrary.moc"
