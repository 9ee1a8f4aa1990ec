#include "support/logcatcher.h"
#include "zvtranslate/zvtranslate.h"

#include <QDir>
#include <QXmlStreamReader>
#include <QtTest>

#include <optional>

using namespace tavro::testsupport;
using tavro::trans::Translator;

namespace {

struct Entry {
    const char *key;
    const char *english; // UTF-8
};

constexpr Entry table[] = {
    {"AIAnswer", "AI Chat"},
    {"GeneateImage", "Generate Image"},
    {"OnlineSearch", "Web Search"},
    {"Send", "Send"},
    {"Stop", "Stop"},
    {"SendMsgToMe", "Ask me anything..."},
    {"DescribeImage", "Describe the scene you imagine, and choose the ratio, style\u2026"},
    {"Style1", "Portrait Photography"},
    {"Style2", "Ink Painting"},
    {"Style3", "Watercolor Painting"},
    {"Style4", "Flat Illustration"},
    {"Style5", "Landscape"},
    {"Style6", "Printmaking"},
    {"Style7", "Monet"},
    {"Style8", "Picasso"},
    {"Style9", "Rembrandt"},
    {"Style10", "Matisse"},
    {"RequestError", "Request Error"},
    {"WelcomeText", "Hello, I\u2019m your AI Assistant.#Nice to meet you! "},
    {"Copy", "Copy"},
    {"Modify", "Edit"},
    {"TryAgain", "Try Again"},
    {"Clear", "Clear"},
    {"Thinking", "Thinking:"},
    {"ImageGenerating", "Generating image..."},
    {"ImageGenerated", "Image generated:"},
    {"ResponseOut", "Timeout"},
    {"DownloadToMediaLibrary", "Download Image to Media Library"},
};
static_assert(std::size(table) == 28);

QString resource(const QString &file)
{
    return QStringLiteral(":/aiassistant/language/") + file;
}

void addLanguages()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << "aiassistant_en.xml"
                             << "en";
    QTest::newRow("Korean") << "aiassistant_kr.xml"
                            << "korean";
    QTest::newRow("Russian") << "aiassistant_rus.xml"
                             << "rus";
    QTest::newRow("Simplified Chinese") << "aiassistant_zh_CN.xml"
                                        << "zh_CN";
    QTest::newRow("Traditional Chinese") << "aiassistant_zh_TW.xml"
                                         << "zh_TW";
}

// The keys as they stand in the file, whatever the translator makes of them.
QStringList keysIn(const QString &path)
{
    QFile file(path);
    QStringList keys;
    if (!file.open(QIODevice::ReadOnly))
        return keys;
    for (QXmlStreamReader xml(&file); !xml.atEnd(); xml.readNext()) {
        if (xml.isStartElement() && xml.name() == QLatin1String("source"))
            keys << xml.readElementText();
    }
    return keys;
}

bool isHan(QChar c)
{
    return c.script() == QChar::Script_Han;
}

bool hasScript(const QString &text, QChar::Script script)
{
    return std::any_of(text.begin(), text.end(), [script](QChar c) { return c.script() == script; });
}

} // namespace

class TestLanguageFiles : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_log.emplace(); }
    void cleanup();

    void fiveFilesAreCarried();
    void keysAreTheSameInAllFiles_data() { addLanguages(); }
    void keysAreTheSameInAllFiles();
    void everyTextIsThere_data() { addLanguages(); }
    void everyTextIsThere();
    void greetingHasTwoLines_data() { addLanguages(); }
    void greetingHasTwoLines();
    void buttonsAreShort_data() { addLanguages(); }
    void buttonsAreShort();
    void textsAreInTheirOwnScript_data();
    void textsAreInTheirOwnScript();
    void stylesDiffer_data() { addLanguages(); }
    void stylesDiffer();
    void englishTextsAreExact();
    void chineseDownloadTextIsTheOneOfTheViewer();

private:
    std::optional<LogCatcher> m_log;
};

void TestLanguageFiles::cleanup()
{
    const QStringList complaints = m_log->complaints();
    m_log.reset();
    QCOMPARE(complaints, QStringList());
}

void TestLanguageFiles::fiveFilesAreCarried()
{
    const QStringList files = QDir(QStringLiteral(":/aiassistant/language")).entryList();
    QCOMPARE(files.size(), 5);
    Translator translator;
    for (const QString &file : files)
        QVERIFY(translator.load(resource(file)));
    QCOMPARE(translator.languages().join(QLatin1Char(' ')), QStringLiteral("en korean rus zh_CN zh_TW"));
}

void TestLanguageFiles::keysAreTheSameInAllFiles()
{
    QFETCH(QString, file);
    QStringList expected;
    for (const Entry &entry : table)
        expected << QString::fromUtf8(entry.key);
    QCOMPARE(keysIn(resource(file)), expected);
}

void TestLanguageFiles::everyTextIsThere()
{
    QFETCH(QString, file);
    QFETCH(QString, language);
    Translator translator;
    QVERIFY(translator.load(resource(file)));
    QVERIFY(translator.switchLanguage(language));
    for (const Entry &entry : table)
        QVERIFY2(!translator.text("aiassistant", entry.key).trimmed().isEmpty(), entry.key);
}

void TestLanguageFiles::greetingHasTwoLines()
{
    QFETCH(QString, file);
    QFETCH(QString, language);
    Translator translator;
    QVERIFY(translator.load(resource(file)));
    QVERIFY(translator.switchLanguage(language));
    QCOMPARE(translator.text("aiassistant", "WelcomeText").count(QLatin1Char('#')), 1);
}

void TestLanguageFiles::buttonsAreShort()
{
    QFETCH(QString, file);
    QFETCH(QString, language);
    Translator translator;
    QVERIFY(translator.load(resource(file)));
    QVERIFY(translator.switchLanguage(language));
    for (const char *key :
         {"AIAnswer", "GeneateImage", "OnlineSearch", "Send", "Stop", "Copy", "Modify", "TryAgain", "Clear"})
        QVERIFY2(translator.text("aiassistant", key).size() <= 20, key);
}

void TestLanguageFiles::textsAreInTheirOwnScript_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("script");
    QTest::newRow("Korean") << "aiassistant_kr.xml"
                            << "korean" << int(QChar::Script_Hangul);
    QTest::newRow("Russian") << "aiassistant_rus.xml"
                             << "rus" << int(QChar::Script_Cyrillic);
    QTest::newRow("Simplified Chinese") << "aiassistant_zh_CN.xml"
                                        << "zh_CN" << int(QChar::Script_Han);
    QTest::newRow("Traditional Chinese") << "aiassistant_zh_TW.xml"
                                         << "zh_TW" << int(QChar::Script_Han);
}

void TestLanguageFiles::textsAreInTheirOwnScript()
{
    QFETCH(QString, file);
    QFETCH(QString, language);
    QFETCH(int, script);
    Translator translator;
    QVERIFY(translator.load(resource(file)));
    QVERIFY(translator.switchLanguage(language));
    for (const Entry &entry : table) {
        const QString text = translator.text("aiassistant", entry.key);
        QVERIFY2(hasScript(text, static_cast<QChar::Script>(script)), entry.key);
        QVERIFY2(script == int(QChar::Script_Han) || !std::any_of(text.begin(), text.end(), isHan), entry.key);
    }
}

// A picture request carries the style by its text.
void TestLanguageFiles::stylesDiffer()
{
    QFETCH(QString, file);
    QFETCH(QString, language);
    Translator translator;
    QVERIFY(translator.load(resource(file)));
    QVERIFY(translator.switchLanguage(language));
    QStringList styles;
    for (int number = 1; number <= 10; ++number)
        styles << translator.text("aiassistant", ("Style" + std::to_string(number)).c_str());
    QCOMPARE(styles.removeDuplicates(), 0);
}

void TestLanguageFiles::englishTextsAreExact()
{
    Translator translator;
    QVERIFY(translator.load(resource(QStringLiteral("aiassistant_en.xml"))));
    QVERIFY(translator.switchLanguage(QStringLiteral("en")));
    for (const Entry &entry : table)
        QCOMPARE(translator.text("aiassistant", entry.key), QString::fromUtf8(entry.english));
}

// The viewer shows this text before its first retranslation.
void TestLanguageFiles::chineseDownloadTextIsTheOneOfTheViewer()
{
    Translator translator;
    QVERIFY(translator.load(resource(QStringLiteral("aiassistant_zh_CN.xml"))));
    QVERIFY(translator.switchLanguage(QStringLiteral("zh_CN")));
    QCOMPARE(translator.text("aiassistant", "DownloadToMediaLibrary"), QStringLiteral("下载图像至素材库"));
}

QTEST_GUILESS_MAIN(TestLanguageFiles)
#include "tst_languagefiles.moc"
