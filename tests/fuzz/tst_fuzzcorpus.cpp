#include <QDir>
#include <QFile>
#include <QTest>

#include <cstddef>
#include <cstdint>

using FuzzTarget = int(const std::uint8_t *data, std::size_t size);

extern "C" {
FuzzTarget fuzz_bodies;
FuzzTarget fuzz_http;
FuzzTarget fuzz_language;
FuzzTarget fuzz_modelreplies;
FuzzTarget fuzz_pictures;
FuzzTarget fuzz_presence;
FuzzTarget fuzz_proxyhandlers;
FuzzTarget fuzz_questions;
FuzzTarget fuzz_replies;
FuzzTarget fuzz_script;
FuzzTarget fuzz_settings;
FuzzTarget fuzz_theme;
}

namespace {

/// By the folders of their inputs.
const QMap<QString, FuzzTarget *> &fuzzTargets()
{
    static const QMap<QString, FuzzTarget *> targets{
        {QStringLiteral("bodies"), fuzz_bodies},
        {QStringLiteral("http"), fuzz_http},
        {QStringLiteral("language"), fuzz_language},
        {QStringLiteral("modelreplies"), fuzz_modelreplies},
        {QStringLiteral("pictures"), fuzz_pictures},
        {QStringLiteral("presence"), fuzz_presence},
        {QStringLiteral("proxyhandlers"), fuzz_proxyhandlers},
        {QStringLiteral("questions"), fuzz_questions},
        {QStringLiteral("replies"), fuzz_replies},
        {QStringLiteral("script"), fuzz_script},
        {QStringLiteral("settings"), fuzz_settings},
        {QStringLiteral("theme"), fuzz_theme},
    };
    return targets;
}

} // namespace

/// The kept inputs of the fuzz targets, whose sources are part of this program. Their folders are in the one that the
/// environment variable ZVAI_CORPUS names. A sanitizer, or a crash, fails the test.
class FuzzCorpusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyFolderHasATarget();
    void keptInput_data();
    void keptInput();

private:
    static QDir corpus() { return QDir(QString::fromLocal8Bit(qgetenv("ZVAI_CORPUS"))); }
};

void FuzzCorpusTest::everyFolderHasATarget()
{
    QCOMPARE(corpus().entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name), fuzzTargets().keys());
}

void FuzzCorpusTest::keptInput_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QByteArray>("input");
    for (const QString &name : fuzzTargets().keys()) {
        const QDir folder(corpus().filePath(name));
        for (const QString &each : folder.entryList(QDir::Files)) {
            QFile file(folder.filePath(each));
            QVERIFY(file.open(QFile::ReadOnly));
            QTest::addRow("%s/%s", qPrintable(name), qPrintable(each)) << name << file.readAll();
        }
    }
}

void FuzzCorpusTest::keptInput()
{
    QFETCH(QString, folder);
    QFETCH(QByteArray, input);
    FuzzTarget *const target = fuzzTargets().value(folder);
    QCOMPARE(target(reinterpret_cast<const std::uint8_t *>(input.constData()), static_cast<std::size_t>(input.size())),
             0);
}

QTEST_GUILESS_MAIN(FuzzCorpusTest)
#include "tst_fuzzcorpus.moc"
