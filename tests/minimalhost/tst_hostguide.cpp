#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

/// Keeps the guide's listings the same as the program that is built and tested.
class HostGuideTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void listingIsTheFile_data();
    void listingIsTheFile();
};

namespace {

QString contents(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

void HostGuideTest::listingIsTheFile_data()
{
    QTest::addColumn<QString>("path");
    const QDir folder(QStringLiteral(MINIMAL_HOST_FOLDER));
    const QStringList names = folder.entryList({QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files);
    QCOMPARE(names.size(), 2);
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << folder.filePath(name);
}

void HostGuideTest::listingIsTheFile()
{
    QFETCH(QString, path);
    const QString file = contents(path);
    QVERIFY(!file.isEmpty());
    const QString guide = contents(QStringLiteral(HOST_GUIDE));
    QVERIFY(!guide.isEmpty());
    QVERIFY2(guide.contains(QStringLiteral("```cpp\n") + file + QStringLiteral("```\n")),
             "the guide has another listing of this file");
}

QTEST_GUILESS_MAIN(HostGuideTest)
#include "tst_hostguide.moc"
