#include <QDir>
#include <QFile>
#include <QTest>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/// The kept inputs of one fuzz target, whose source is part of this program. Their folder is in the environment
/// variable ZVAI_CORPUS. A sanitizer, or a crash, fails the test.
class FuzzCorpusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keptInput_data();
    void keptInput();
};

void FuzzCorpusTest::keptInput_data()
{
    QTest::addColumn<QByteArray>("input");
    const QDir folder(QString::fromLocal8Bit(qgetenv("ZVAI_CORPUS")));
    const QStringList names = folder.entryList(QDir::Files);
    for (const QString &name : names) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QFile::ReadOnly));
        QTest::newRow(qPrintable(name)) << file.readAll();
    }
    QVERIFY(!names.isEmpty());
}

void FuzzCorpusTest::keptInput()
{
    QFETCH(QByteArray, input);
    QCOMPARE(LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(input.constData()),
                                    static_cast<std::size_t>(input.size())),
             0);
}

QTEST_GUILESS_MAIN(FuzzCorpusTest)
#include "tst_fuzzcorpus.moc"
