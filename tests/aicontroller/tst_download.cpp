#include "cachefolder.h"
#include "controllertest.h"
#include "filelimits.h"
#include "picturebytes.h"

#include <QFileInfo>

namespace {

const QByteArray picturePath = QByteArrayLiteral("/pictures/1");

QString madeText()
{
    return QStringLiteral("Picture cathe Dir has been created");
}

QString notMadeText()
{
    return QStringLiteral("Picture cathe Dir couldn't be created");
}

} // namespace

class DownloadTest : public ControllerTest {
    Q_OBJECT

private Q_SLOTS:
    void fileIsSavedAndAnnounced_data();
    void fileIsSavedAndAnnounced();
    void requestCarriesNoHeadersOfItsOwn();
    void byNameThroughTheMetaObject();
    void folderIsMadeForEachDownload();
    void eachDownloadGetsItsOwnFile();
    void errorIsLoggedAndNotAnnounced_data();
    void errorIsLoggedAndNotAnnounced();
    void nothingIsAnnouncedWithoutAFolder();
    void nothingIsAnnouncedWhenTheDiskIsFull();
    void toDownloadPictureIsLocalInEveryRole_data();
    void toDownloadPictureIsLocalInEveryRole();
    void announcementByItself();

private:
    QString url(const QByteArray &path = picturePath) const { return f->server.url() + QString::fromLatin1(path); }
    bool download(const QString &address);
    QStringList announced() const;
};

bool DownloadTest::download(const QString &address)
{
    f->controller.downloadPicture(address);
    return f->repliesDone();
}

QStringList DownloadTest::announced() const
{
    QStringList paths;
    const auto &recorder = f->signalled.downloadPictureFinished;
    for (int index = 0; index < recorder.count(); ++index)
        paths.append(QString::fromStdString(recorder.argument<0>(index)));
    return paths;
}

void DownloadTest::fileIsSavedAndAnnounced_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("png") << picturebytes::encoded("png");
    QTest::newRow("jpeg") << picturebytes::encoded("jpg");
    QTest::newRow("no picture") << picturebytes::html();
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("large") << picturebytes::noisyPng({500, 500});
}

void DownloadTest::fileIsSavedAndAnnounced()
{
    QFETCH(QByteArray, bytes);
    const CacheFolder cache;
    f->server.expect("GET", picturePath, ScriptedAnswer::bytes(bytes, "image/png"));
    QVERIFY(download(url()));
    QCOMPARE(announced(), QStringList(cache.pathOf(1)));
    QVERIFY(CacheFolder::contentOf(cache.pathOf(1)) == bytes);
    QCOMPARE(cache.names(), QStringList(CacheFolder::nameOf(1)));
    QCOMPARE(f->signalled.summary(), QStringLiteral("downloadPictureFinished:1"));
    QCOMPARE(f->log.count(madeText()), 1);
    QCOMPARE(f->log.hostLines().size(), 0);
}

void DownloadTest::requestCarriesNoHeadersOfItsOwn()
{
    const CacheFolder cache;
    f->controller.updateHeaderInfo({"secret", "7", "north"});
    f->server.expect("GET", picturePath, ScriptedAnswer::bytes("picture"));
    QVERIFY(download(url()));
    const HttpRequest request = f->server.requests().first();
    for (const char *name : {"token", "userId", "node", "deviceId", "Content-Type"})
        QVERIFY2(!request.header(name), name);
}

void DownloadTest::byNameThroughTheMetaObject()
{
    const CacheFolder cache;
    f->server.expect("GET", picturePath, ScriptedAnswer::bytes("picture"));
    QVERIFY(QMetaObject::invokeMethod(&f->d, "slotDownloadPicture", Qt::QueuedConnection, Q_ARG(QString, url())));
    QVERIFY(f->signalled.downloadPictureFinished.waitFor(1));
    QVERIFY(f->repliesDone());
    QCOMPARE(announced(), QStringList(cache.pathOf(1)));
}

void DownloadTest::folderIsMadeForEachDownload()
{
    const CacheFolder cache;
    f->server.always("GET", picturePath, ScriptedAnswer::bytes("picture"));
    QVERIFY(download(url()));
    QVERIFY(QDir(cache.path()).removeRecursively());
    QVERIFY(download(url()));
    QVERIFY(download(url()));
    QCOMPARE(announced(), QStringList({cache.pathOf(1), cache.pathOf(1), cache.pathOf(2)}));
    int withPath = 0;
    for (const QString &text : f->log.texts())
        withPath += text.contains(madeText()) && text.contains(cache.path()) ? 1 : 0;
    QCOMPARE(withPath, 3);
}

void DownloadTest::eachDownloadGetsItsOwnFile()
{
    const CacheFolder cache;
    f->server.expect("GET", picturePath, ScriptedAnswer::bytes("first").held());
    f->server.expect("GET", "/pictures/2", ScriptedAnswer::bytes("second"));
    f->controller.downloadPicture(url());
    f->controller.downloadPicture(url("/pictures/2"));
    QVERIFY(f->signalled.downloadPictureFinished.waitFor(1));
    QVERIFY(f->server.releaseNext());
    QVERIFY(f->repliesDone());
    QCOMPARE(announced(), QStringList({cache.pathOf(1), cache.pathOf(2)}));
    QCOMPARE(CacheFolder::contentOf(cache.pathOf(1)), QByteArray("second"));
    QCOMPARE(CacheFolder::contentOf(cache.pathOf(2)), QByteArray("first"));
}

void DownloadTest::errorIsLoggedAndNotAnnounced_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<int>("error");
    QTest::newRow("404") << QByteArray("404") << 203;
    QTest::newRow("500") << QByteArray("500") << 401;
    QTest::newRow("cut off within the body") << QByteArray("cut") << 2;
    QTest::newRow("refused") << QByteArray("refused") << 1;
    QTest::newRow("empty address") << QByteArray("empty") << 301;
}

// The line names the last picture of an answer, whatever was downloaded.
void DownloadTest::errorIsLoggedAndNotAnnounced()
{
    QFETCH(QByteArray, kind);
    QFETCH(int, error);
    const CacheFolder cache;
    f->d.strLastPictureUrl = QStringLiteral("http://pictures/last.png");
    if (const int status = kind.toInt())
        f->server.expect("GET", picturePath, ScriptedAnswer::bytes("<html>").withStatus(status));
    else if (kind == "cut")
        f->server.expect("GET", picturePath, ScriptedAnswer::bytes(QByteArray(9000, 'x')).cutAfter(4000));
    else if (kind == "refused")
        f->server.stopListening();
    const ExpectedLog failure(f->log, QStringLiteral("slotDownloadImageFinished_"));
    const ExpectedLog refusal(f->log, QStringLiteral("only http and https"), error == 301 ? 1 : 0);
    QVERIFY(download(kind == "empty" ? QString() : url()));

    const QVector<LogLine> lines = f->log.hostLines();
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().level, LogLine::Level::Error);
    QCOMPARE(lines.first().text,
             QStringLiteral("slotDownloadImageFinished_ errorcode %1 url http://pictures/last.png \n "
                            "//aicontroller_images:slotDownloadImageFinished()#%2.")
                 .arg(error)
                 .arg(lines.first().line));
    QVERIFY(lines.first().line > 0);
    QCOMPARE(f->signalled.summary(), QString());
    QVERIFY(!f->log.contains(madeText()));
    QVERIFY(!QFileInfo::exists(cache.path()));
}

void DownloadTest::nothingIsAnnouncedWithoutAFolder()
{
    const CacheFolder cache;
    QVERIFY(QDir().mkpath(QFileInfo(cache.path()).path()));
    QFile inTheWay(cache.path());
    QVERIFY(inTheWay.open(QFile::WriteOnly));
    const ExpectedLog told(f->log, QStringLiteral("the picture could not be saved in ") + cache.path());
    f->server.expect("GET", picturePath, ScriptedAnswer::bytes("picture"));
    QVERIFY(download(url()));
    QCOMPARE(f->signalled.summary(), QString());
    QCOMPARE(f->log.count(notMadeText()), 1);
    QVERIFY(f->log.texts().filter(notMadeText()).first().contains(cache.path()));
    QVERIFY(!f->log.contains(madeText()));
    QCOMPARE(f->log.hostLines().size(), 0);
}

void DownloadTest::nothingIsAnnouncedWhenTheDiskIsFull()
{
    const CacheFolder cache;
    f->server.always("GET", picturePath, ScriptedAnswer::bytes(QByteArray(100000, 'x')));
    const ExpectedLog full(f->log, QStringLiteral("could not be saved"));
    bool isDone = false;
    {
        const FileSizeLimit limit(50000);
        isDone = limit.isSet() && download(url());
    }
    QVERIFY(isDone);
    QCOMPARE(f->signalled.summary(), QString());
    QCOMPARE(cache.names(), QStringList());

    QVERIFY(download(url()));
    QCOMPARE(announced(), QStringList(cache.pathOf(1)));
}

void DownloadTest::toDownloadPictureIsLocalInEveryRole_data()
{
    QTest::addColumn<bool>("server");
    QTest::addColumn<bool>("client");
    QTest::addColumn<bool>("local");
    for (const int roles : {0, 1, 2, 3, 4, 5, 6, 7}) {
        QTest::addRow("server %d, client %d, local %d", roles & 1, (roles >> 1) & 1, (roles >> 2) & 1)
            << ((roles & 1) != 0) << ((roles & 2) != 0) << ((roles & 4) != 0);
    }
}

void DownloadTest::toDownloadPictureIsLocalInEveryRole()
{
    QFETCH(bool, server);
    QFETCH(bool, client);
    QFETCH(bool, local);
    const CacheFolder cache;
    f->useRoles({server, client, local});
    f->server.expect("GET", picturePath, ScriptedAnswer::bytes("picture"));
    f->controller.toDownloadPicture(url());
    QVERIFY(f->signalled.downloadPictureFinished.waitFor(1));
    QVERIFY(f->repliesDone());
    QCOMPARE(announced(), QStringList(cache.pathOf(1)));
    QCOMPARE(f->clientPort.names(), QVector<QByteArray>());
    QCOMPARE(f->serverPort.names(), QVector<QByteArray>());
}

void DownloadTest::announcementByItself()
{
    const QString path = QStringLiteral("/pictures/\u5c71 \u00e9.jpg");
    f->controller.downloadPictureFinished(path);
    QCOMPARE(f->signalled.downloadPictureFinished.argument<0>(0), path.toStdString());
    QCOMPARE(f->signalled.summary(), QStringLiteral("downloadPictureFinished:1"));
}

QTEST_GUILESS_MAIN(DownloadTest)

#include "tst_download.moc"
