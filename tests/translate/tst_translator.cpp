#include "support/logcatcher.h"
#include "zvtranslate/zvtranslate.h"

#include <QTemporaryDir>
#include <QtTest>

#include <optional>

using namespace tavro::testsupport;
using tavro::trans::translate;
using tavro::trans::Translator;

namespace {

QByteArray message(const QByteArray &key, const QByteArray &text, const QByteArray &attributes = {})
{
    return "<message><source>" + key + "</source><translation " + attributes + ">" + text
        + "</translation></message>\n";
}

QByteArray context(const QByteArray &name, const QByteArray &messages)
{
    return "<context><name>" + name + "</name>\n" + messages + "</context>\n";
}

QByteArray document(const QByteArray &language, const QByteArray &contexts)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n<TS version=\"2.1\" language=\"" + language
        + "\">\n" + contexts + "</TS>\n";
}

} // namespace

class TestTranslator : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void nothingIsFoundBeforeALanguageIsChosen();
    void textIsFoundByContextAndKey();
    void missingTextGivesTheDefault_data();
    void missingTextGivesTheDefault();
    void languageMayBeChosenBeforeItsFileIsLoaded();
    void unknownLanguageGivesDefaults();
    void laterFileWinsKeyByKey();
    void languagesAreListed();
    void readsEveryFormOfText_data();
    void readsEveryFormOfText();
    void fileWithoutTextsAddsNoLanguage();
    void malformedFileIsRefusedWhole_data();
    void malformedFileIsRefusedWhole();
    void unreadableFileIsRefused();

private:
    QString write(const QByteArray &bytes);

    std::optional<LogCatcher> m_log;
    std::optional<QTemporaryDir> m_folder;
};

void TestTranslator::init()
{
    m_folder.emplace();
    QVERIFY(m_folder->isValid());
    m_log.emplace();
}

void TestTranslator::cleanup()
{
    const QStringList complaints = m_log->complaints();
    m_log.reset();
    QCOMPARE(complaints, QStringList());
}

QString TestTranslator::write(const QByteArray &bytes)
{
    static int number = 0;
    QFile file(m_folder->filePath(QStringLiteral("file%1.xml").arg(++number)));
    const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    return written ? file.fileName() : QString();
}

void TestTranslator::nothingIsFoundBeforeALanguageIsChosen()
{
    Translator translator;
    QVERIFY(translator.load(write(document("en", context("c", message("Send", "Go"))))));
    QCOMPARE(translator.currentLanguage(), QString());
    QVERIFY(!translator.hasTexts());
    QCOMPARE(translate(translator, "c", "Send", QString()), QString());
}

void TestTranslator::textIsFoundByContextAndKey()
{
    Translator translator;
    QVERIFY(translator.load(write(document(
        "en", context("c", message("Send", "Go") + message("Stop", "Halt")) + context("d", message("Send", "Post"))))));
    QVERIFY(translator.switchLanguage(QStringLiteral("en")));
    QVERIFY(translator.hasTexts());
    QCOMPARE(translate(translator, "c", "Send", QString()), QStringLiteral("Go"));
    QCOMPARE(translate(translator, "c", "Stop", QString()), QStringLiteral("Halt"));
    QCOMPARE(translate(translator, "d", "Send", QString()), QStringLiteral("Post"));
}

void TestTranslator::missingTextGivesTheDefault_data()
{
    QTest::addColumn<QByteArray>("context");
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("key") << QByteArray("c") << QByteArray("Sent");
    QTest::newRow("beginning of a key") << QByteArray("c") << QByteArray("Sen");
    QTest::newRow("context") << QByteArray("x") << QByteArray("Send");
    QTest::newRow("case") << QByteArray("c") << QByteArray("send");
    QTest::newRow("empty") << QByteArray("") << QByteArray("");
    QTest::newRow("null") << QByteArray() << QByteArray();
}

void TestTranslator::missingTextGivesTheDefault()
{
    QFETCH(QByteArray, context);
    QFETCH(QByteArray, key);
    Translator translator;
    QVERIFY(translator.load(write(document("en", ::context("c", message("Send", "Go"))))));
    QVERIFY(translator.switchLanguage(QStringLiteral("en")));
    const char *const contextText = context.isNull() ? nullptr : context.constData();
    const char *const keyText = key.isNull() ? nullptr : key.constData();
    QCOMPARE(translate(translator, contextText, keyText, QStringLiteral("instead")), QStringLiteral("instead"));
    QVERIFY(translator.text(contextText, keyText).isNull());
}

void TestTranslator::languageMayBeChosenBeforeItsFileIsLoaded()
{
    Translator translator;
    QVERIFY(!translator.switchLanguage(QStringLiteral("rus")));
    QCOMPARE(translator.currentLanguage(), QStringLiteral("rus"));
    QVERIFY(!translator.hasTexts());
    QVERIFY(translator.load(write(document("rus", context("c", message("Send", "Go"))))));
    QVERIFY(translator.hasTexts());
    QCOMPARE(translate(translator, "c", "Send", QString()), QStringLiteral("Go"));
}

void TestTranslator::unknownLanguageGivesDefaults()
{
    Translator translator;
    QVERIFY(translator.load(write(document("en", context("c", message("Send", "Go"))))));
    QVERIFY(translator.switchLanguage(QStringLiteral("en")));
    QVERIFY(!translator.switchLanguage(QStringLiteral("EN")));
    QCOMPARE(translate(translator, "c", "Send", QStringLiteral("instead")), QStringLiteral("instead"));
}

void TestTranslator::laterFileWinsKeyByKey()
{
    Translator translator;
    QVERIFY(translator.switchLanguage(QStringLiteral("en")) == false);
    QVERIFY(translator.load(
        write(document("en", context("c", message("a", "1") + message("b", "1") + message("c", "1"))))));
    QVERIFY(
        translator.load(write(document("en", context("c", message("b", "2") + message("c", "") + message("d", "2"))))));
    QVERIFY(translator.load(write(document("fr", context("c", message("a", "3"))))));
    QCOMPARE(translator.text("c", "a"), QStringLiteral("1"));
    QCOMPARE(translator.text("c", "b"), QStringLiteral("2"));
    QCOMPARE(translator.text("c", "c"), QStringLiteral("1"));
    QCOMPARE(translator.text("c", "d"), QStringLiteral("2"));
}

void TestTranslator::languagesAreListed()
{
    Translator translator;
    QCOMPARE(translator.languages(), QStringList());
    for (const char *language : {"zh_CN", "en", "zh_CN"})
        QVERIFY(translator.load(write(document(language, context("c", message("a", "1"))))));
    QCOMPARE(translator.languages(), (QStringList{QStringLiteral("en"), QStringLiteral("zh_CN")}));
}

void TestTranslator::readsEveryFormOfText_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QString>("text"); // null: none
    QTest::newRow("plain") << message("k", "text") << "text";
    QTest::newRow("blanks kept") << message("k", " text ") << " text ";
    QTest::newRow("letters") << message("k", "文 &amp; é") << QStringLiteral("文 & é");
    QTest::newRow("character data") << message("k", "<![CDATA[<b>]]>") << "<b>";
    QTest::newRow("unfinished") << message("k", "text", "type=\"unfinished\"") << "text";
    QTest::newRow("unfinished, empty") << message("k", "", "type=\"unfinished\"") << QString();
    QTest::newRow("obsolete") << message("k", "text", "type=\"obsolete\"") << QString();
    QTest::newRow("vanished") << message("k", "text", "type=\"vanished\"") << QString();
    QTest::newRow("empty") << message("k", "") << QString();
    QTest::newRow("no translation") << QByteArray("<message><source>k</source></message>") << QString();
    QTest::newRow("plural") << message("k", "\n<numerusform>one</numerusform>\n<numerusform>more</numerusform>\n")
                            << "one";
    QTest::newRow("plural, first empty") << message("k", "<numerusform/><numerusform>more</numerusform>") << "more";
    QTest::newRow("lengths") << message("k", "<lengthvariant>long</lengthvariant><lengthvariant>s</lengthvariant>")
                             << "long";
    QTest::newRow("lengths of plural") << message("k", "<numerusform><lengthvariant>l</lengthvariant></numerusform>")
                                       << "l";
    QTest::newRow("byte") << message("k", "a<byte value=\"x1b\"/>b<byte value=\"9\"/>")
                          << "a\x1b"
                             "b\t";
    QTest::newRow("with notes") << QByteArray(
        "<message id=\"i\"><location line=\"1\"/><source>k</source><comment>c</comment>"
        "<translation>text</translation><extra-x>e</extra-x></message>")
                                << "text";
    QTest::newRow("last of two") << message("k", "1") + message("k", "2") << "2";
}

void TestTranslator::readsEveryFormOfText()
{
    QFETCH(QByteArray, message);
    QFETCH(QString, text);
    Translator translator;
    QVERIFY(translator.load(write(document("en", context("c", message + ::message("other", "there"))))));
    QVERIFY(translator.switchLanguage(QStringLiteral("en")));
    QCOMPARE(translator.text("c", "k"), text);
    QCOMPARE(translator.text("c", "k").isNull(), text.isNull());
    QCOMPARE(translator.text("c", "other"), QStringLiteral("there"));
}

void TestTranslator::fileWithoutTextsAddsNoLanguage()
{
    Translator translator;
    QVERIFY(translator.load(write(document("en", context("c", message("k", ""))))));
    QCOMPARE(translator.languages(), QStringList());
    QVERIFY(!translator.switchLanguage(QStringLiteral("en")));
}

void TestTranslator::malformedFileIsRefusedWhole_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("line"); // 0: any
    const QByteArray good = document("en", context("c", message("k", "new")));
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("no XML") << QByteArray("hello\n") << 1;
    QTest::newRow("zeros") << QByteArray(100, '\0') << 0;
    QTest::newRow("another document") << QByteArray("<html>\n</html>") << 1;
    QTest::newRow("no language") << QByteArray(good).replace("language=\"en\"", "") << 3;
    QTest::newRow("empty language") << QByteArray(good).replace("\"en\"", "\"\"") << 3;
    QTest::newRow("no version") << QByteArray(good).replace("version=\"2.1\"", "") << 3;
    QTest::newRow("another version") << QByteArray(good).replace("2.1", "1.1") << 3;
    QTest::newRow("cut off") << good.left(good.indexOf("</TS>")) << 7;
    QTest::newRow("cut off in a text") << good.left(good.indexOf("new")) << 5;
    QTest::newRow("wrong end") << QByteArray(good).replace("</translation>", "</source>") << 5;
    QTest::newRow("unknown entity") << QByteArray(good).replace("new", "&none;") << 5;
    QTest::newRow("no UTF-8") << QByteArray(good).replace("new", "\xff\xfe") << 0;
    QTest::newRow("byte without number") << QByteArray(good).replace("new", "<byte value=\"x\"/>") << 5;
    QTest::newRow("something behind the end") << good + "<TS/>" << 8;
    QTest::newRow("growing entities") << QByteArray(
        "<!DOCTYPE TS [<!ENTITY a \"aaaaaaaaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\">"
        "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;\">]>"
        "<TS version=\"2.1\" language=\"en\"><context><name>c</name><message><source>k</source>"
        "<translation>&d;</translation></message></context></TS>")
                                      << 1;
}

void TestTranslator::malformedFileIsRefusedWhole()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, line);
    Translator translator;
    QVERIFY(translator.load(write(document("en", context("c", message("k", "old"))))));
    QVERIFY(translator.switchLanguage(QStringLiteral("en")));
    const QString path = write(bytes);
    const QString where =
        line == 0 ? path + QStringLiteral(", line ") : QStringLiteral("%1, line %2: ").arg(path).arg(line);
    const ExpectedLog warning(*m_log, where);
    QVERIFY(!translator.load(path));
    QCOMPARE(translator.text("c", "k"), QStringLiteral("old"));
}

void TestTranslator::unreadableFileIsRefused()
{
    Translator translator;
    const ExpectedLog warnings(*m_log, QStringLiteral("cannot be read"), 2);
    QVERIFY(!translator.load(m_folder->filePath(QStringLiteral("absent.xml"))));
    QVERIFY(!translator.load(m_folder->path()));
    QVERIFY(m_log->contains(m_folder->filePath(QStringLiteral("absent.xml"))));
}

QTEST_GUILESS_MAIN(TestTranslator)
#include "tst_translator.moc"
