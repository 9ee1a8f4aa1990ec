#include "aicontroller/imagecache.h"
#include "cachefolder.h"
#include "filelimits.h"
#include "picturebytes.h"
#include "support/logcatcher.h"

#include <QStandardPaths>
#include <QTest>

using namespace tavro::aiassistant;
using namespace tavro::testsupport;

namespace {

QStringList sorted(QStringList names)
{
    names.sort();
    return names;
}

} // namespace

class ImageCacheTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void folderIsBelowTheLocalData();
    void folderIsMadeWithAllItsParents();
    void folderThatIsThereStaysAsItIs();
    void folderCannotBeMadeWhereAFileIsInTheWay_data();
    void folderCannotBeMadeWhereAFileIsInTheWay();
    void nameIsTheFirstFreeOne_data();
    void nameIsTheFirstFreeOne();
    void danglingLinkTakesItsName();
    void bytesAreSavedUnchanged_data();
    void bytesAreSavedUnchanged();
    void nothingIsSavedInAFolderThatMayNotBeWritten();
    void nothingIsLeftWhenTheDiskIsFull_data();
    void nothingIsLeftWhenTheDiskIsFull();
    void manyPicturesGetRunningNumbers();
};

void ImageCacheTest::folderIsBelowTheLocalData()
{
    const CacheFolder cache;
    QCOMPARE(imagecache::directory(), cache.path());
    QCOMPARE(imagecache::directory(),
             QStandardPaths::writableLocation(QStandardPaths::DataLocation) + QStringLiteral("/imageCathe"));
}

void ImageCacheTest::folderIsMadeWithAllItsParents()
{
    const CacheFolder cache;
    qputenv("XDG_DATA_HOME", QFile::encodeName(cache.root() + QStringLiteral("/not/yet/there")));
    QVERIFY(imagecache::makeDirectory());
    QVERIFY(imagecache::directory().startsWith(cache.root() + QStringLiteral("/not/yet/there/")));
    QVERIFY(QFileInfo(imagecache::directory()).isDir());
}

void ImageCacheTest::folderThatIsThereStaysAsItIs()
{
    const CacheFolder cache;
    QVERIFY(cache.put(QStringLiteral("readme.txt"), "keep"));
    QVERIFY(imagecache::makeDirectory());
    QCOMPARE(cache.names(), QStringList(QStringLiteral("readme.txt")));
    QCOMPARE(CacheFolder::contentOf(cache.pathOf(QStringLiteral("readme.txt"))), QByteArray("keep"));
}

void ImageCacheTest::folderCannotBeMadeWhereAFileIsInTheWay_data()
{
    QTest::addColumn<bool>("parent");
    QTest::newRow("in place of the folder") << false;
    QTest::newRow("in place of a parent") << true;
}

void ImageCacheTest::folderCannotBeMadeWhereAFileIsInTheWay()
{
    QFETCH(bool, parent);
    LogCatcher log;
    const CacheFolder cache;
    const QString inTheWay = parent ? QFileInfo(cache.path()).path() : cache.path();
    QVERIFY(QDir().mkpath(QFileInfo(inTheWay).path()));
    QFile file(inTheWay);
    QVERIFY(file.open(QFile::WriteOnly));
    file.close();

    const ExpectedLog told(log, QStringLiteral("the picture could not be saved in %1: ").arg(cache.path()));
    QVERIFY(!imagecache::makeDirectory());
    QCOMPARE(imagecache::save("bytes"), QString());
    QCOMPARE(QFileInfo(inTheWay).size(), 0);
    QCOMPARE(log.complaints(), QStringList());
}

void ImageCacheTest::nameIsTheFirstFreeOne_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QStringList>("folders");
    QTest::addColumn<QString>("saved");
    const auto name = [](int number) { return CacheFolder::nameOf(number); };
    QTest::newRow("empty folder") << QStringList() << QStringList() << name(1);
    QTest::newRow("1") << QStringList{name(1)} << QStringList() << name(2);
    QTest::newRow("1 and 2") << QStringList{name(1), name(2)} << QStringList() << name(3);
    QTest::newRow("gap at 1") << QStringList{name(2), name(3)} << QStringList() << name(1);
    QTest::newRow("gap at 2") << QStringList{name(1), name(3)} << QStringList() << name(2);
    QTest::newRow("folder named 1") << QStringList() << QStringList{name(1)} << name(2);
    QTest::newRow("file and folder") << QStringList{name(1)} << QStringList{name(2)} << name(3);
    QTest::newRow("other names") << QStringList{QStringLiteral("download_01.jpg"), QStringLiteral("download_1.png"),
                                                QStringLiteral("Download_1.jpg"), QStringLiteral("download_0.jpg")}
                                 << QStringList() << name(1);
    QStringList ten;
    for (int number = 1; number <= 10; ++number)
        ten.append(name(number));
    QTest::newRow("two digits") << ten << QStringList() << name(11);
}

void ImageCacheTest::nameIsTheFirstFreeOne()
{
    QFETCH(QStringList, files);
    QFETCH(QStringList, folders);
    QFETCH(QString, saved);
    const CacheFolder cache;
    QVERIFY(cache.make());
    for (const QString &name : qAsConst(files))
        QVERIFY(cache.put(name, "earlier"));
    for (const QString &name : qAsConst(folders))
        QVERIFY(QDir(cache.path()).mkdir(name));

    QCOMPARE(imagecache::save("picture"), cache.pathOf(saved));
    QCOMPARE(CacheFolder::contentOf(cache.pathOf(saved)), QByteArray("picture"));
    for (const QString &name : qAsConst(files))
        QCOMPARE(CacheFolder::contentOf(cache.pathOf(name)), QByteArray("earlier"));
    QCOMPARE(sorted(cache.names()), sorted(files + folders + QStringList{saved}));
}

// Writing through such a link would make a file somewhere else.
void ImageCacheTest::danglingLinkTakesItsName()
{
    const CacheFolder cache;
    QVERIFY(cache.make());
    const QString elsewhere = cache.root() + QStringLiteral("/elsewhere");
    QVERIFY(QFile::link(elsewhere, cache.pathOf(1)));
    QCOMPARE(imagecache::save("picture"), cache.pathOf(2));
    QVERIFY(!QFile::exists(elsewhere));
    QVERIFY(QFileInfo(cache.pathOf(1)).isSymLink());
}

void ImageCacheTest::bytesAreSavedUnchanged_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("png") << picturebytes::encoded("png");
    QTest::newRow("no picture") << picturebytes::html();
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("line ends and NUL") << QByteArray("a\r\nb\n\0c\r", 8);
    QTest::newRow("3 MB") << QByteArray(3 * 1024 * 1024, '\xff');
}

void ImageCacheTest::bytesAreSavedUnchanged()
{
    QFETCH(QByteArray, bytes);
    const CacheFolder cache;
    QVERIFY(imagecache::makeDirectory());
    const QString path = imagecache::save(bytes);
    QCOMPARE(path, cache.pathOf(1));
    QVERIFY(CacheFolder::contentOf(path) == bytes);
    QCOMPARE(cache.names(), QStringList(CacheFolder::nameOf(1)));
}

void ImageCacheTest::nothingIsSavedInAFolderThatMayNotBeWritten()
{
    LogCatcher log;
    const CacheFolder cache;
    QVERIFY(imagecache::makeDirectory());
    QVERIFY(QFile::setPermissions(cache.root(), QFile::Permissions(0x7755)));
    QVERIFY(QFile::setPermissions(cache.path(), QFile::Permissions(0x5555)));
    const ExpectedLog told(log, QStringLiteral("the picture could not be saved in %1: ").arg(cache.path()), 0);
    bool isWritable = true;
    bool isMade = false;
    QString path;
    {
        const OrdinaryUser user;
        isWritable = QFile(cache.pathOf(QStringLiteral("probe"))).open(QFile::WriteOnly);
        isMade = imagecache::makeDirectory();
        path = imagecache::save("picture");
    }
    QVERIFY(QFile::setPermissions(cache.path(), QFile::Permissions(0x7755)));
    if (isWritable)
        QSKIP("this user may write where nobody may");
    QVERIFY(isMade);
    QCOMPARE(path, QString());
    QCOMPARE(told.seen(), 1);
    QCOMPARE(cache.names(), QStringList());
    QCOMPARE(log.complaints(), QStringList());
}

void ImageCacheTest::nothingIsLeftWhenTheDiskIsFull_data()
{
    QTest::addColumn<int>("room");
    QTest::newRow("no room at all") << 0;
    QTest::newRow("room for a part") << 4096;
    QTest::newRow("room for all but a byte") << 299999;
}

void ImageCacheTest::nothingIsLeftWhenTheDiskIsFull()
{
    QFETCH(int, room);
    LogCatcher log;
    const CacheFolder cache;
    QVERIFY(cache.put(CacheFolder::nameOf(1), "earlier"));
    const QByteArray bytes(300000, 'x');
    const ExpectedLog full(log, QStringLiteral("could not be saved"));
    bool isLimited = false;
    QString path;
    {
        const FileSizeLimit limit(static_cast<rlim_t>(room));
        isLimited = limit.isSet();
        path = imagecache::save(bytes);
    }
    QVERIFY(isLimited);
    QCOMPARE(path, QString());
    QCOMPARE(cache.names(), QStringList(CacheFolder::nameOf(1)));
    QCOMPARE(CacheFolder::contentOf(cache.pathOf(1)), QByteArray("earlier"));

    QCOMPARE(imagecache::save(bytes), cache.pathOf(2));
    QCOMPARE(QFileInfo(cache.pathOf(2)).size(), bytes.size());
    QCOMPARE(log.complaints(), QStringList());
}

void ImageCacheTest::manyPicturesGetRunningNumbers()
{
    constexpr int pictures = 200;
    const CacheFolder cache;
    QVERIFY(imagecache::makeDirectory());
    for (int number = 1; number <= pictures; ++number)
        QCOMPARE(imagecache::save(QByteArray::number(number)), cache.pathOf(number));
    QCOMPARE(cache.names().size(), pictures);
    for (int number = 1; number <= pictures; ++number)
        QCOMPARE(CacheFolder::contentOf(cache.pathOf(number)), QByteArray::number(number));
}

QTEST_GUILESS_MAIN(ImageCacheTest)

#include "tst_imagecache.moc"
