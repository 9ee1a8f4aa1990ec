#include "multimachineproxy/callnames.h"
#include "proxytest.h"
#include "samples.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>

/// The bytes in docs/proxy.md, beside those that the proxies send. The page's place is in the environment variable
/// ZVAI_PROXY_DOCUMENT.
class ProxyDocumentTest : public ProxyTest {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void bytesAreThoseOfTheCode();
    void everyMessageIsInTheTables();

private:
    void sendEverything();

    QString page;
    QMap<QByteArray, QByteArray> documented;
};

namespace {

/// The bytes of one block; what stands behind two blanks is a comment.
QByteArray bytesOf(const QString &block)
{
    QByteArray bytes;
    const QStringList lines = block.split(QLatin1Char('\n'));
    for (const QString &line : lines)
        bytes += QByteArray::fromHex(line.section(QStringLiteral("  "), 0, 0).toLatin1());
    return bytes;
}

ChatItemBasic textItem()
{
    ChatItemBasic item;
    item.type = QuestionType::Text;
    item.question = samples::text().question;
    return item;
}

} // namespace

void ProxyDocumentTest::initTestCase()
{
    QFile file(QString::fromLocal8Bit(qgetenv("ZVAI_PROXY_DOCUMENT")));
    QVERIFY(file.open(QFile::ReadOnly));
    page = QString::fromUtf8(file.readAll());
    const QRegularExpression block(QStringLiteral("^```hex (\\w+)\\n(.*?)^```$"),
                                   QRegularExpression::MultilineOption
                                       | QRegularExpression::DotMatchesEverythingOption);
    for (auto blocks = block.globalMatch(page); blocks.hasNext();) {
        const QRegularExpressionMatch match = blocks.next();
        documented.insert(match.captured(1).toLatin1(), bytesOf(match.captured(2)));
    }
}

/// Each message once, with the argument that the page shows.
void ProxyDocumentTest::sendEverything()
{
    ProxyClientPort &calls = *client->d.proxyClient;
    calls.generateText(QStringLiteral("hello"));
    calls.generateImage(samples::picture());
    calls.downloadPicture(QString::fromStdString(samples::pictured().source.url));
    calls.stopGenerate();
    calls.activeDeepseek(true);
    calls.activeOnlineSearch(false);
    calls.clearCathe();
    calls.clearHistoryRecord();
    calls.updateHeader(samples::list());
    calls.clearHeader();
    calls.aiWidgetShow();

    ProxyServerPort &completions = *f->d.proxyServer;
    completions.generateTextFinished(samples::text());
    completions.generateImageFinished(samples::pictured());
    completions.downloadPictureFinished(QStringLiteral("hello"));
    completions.stopGenerateFinished();
    completions.deleteGeneratingItem();
    completions.activeDeepseekFinished(true);
    completions.activeOnlineSearchFinished(false);
    completions.clearCatheFinished();
    completions.clearHistoryRecordFinished();
    completions.clearHeaderFinished();
    completions.requestFailed(textItem());
    completions.errorOccured(samples::chatItem());
    completions.requestTimeout(textItem());
}

void ProxyDocumentTest::bytesAreThoseOfTheCode()
{
    sendEverything();
    const auto sent = client->runtime.calls(Call::Kind::ToServer) + f->runtime.calls(Call::Kind::ToClients);
    QCOMPARE(sent.size(), static_cast<int>(std::size(call::all) + std::size(completion::all)));
    int compared = 0;
    for (const Call &message : sent) {
        if (message.name == "RequestTimeout")
            continue; // the page says that it has the form of RequestFailed
        QCOMPARE(message.name + ' ' + documented.value(message.name).toHex(' '),
                 message.name + ' ' + message.payload.toHex(' '));
        compared += message.payload.isEmpty() ? 0 : 1;
    }
    QCOMPARE(compared, documented.size());
}

void ProxyDocumentTest::everyMessageIsInTheTables()
{
    int before = -1;
    const auto compare = [&](const char *name) {
        const int place = page.indexOf(QStringLiteral("\n| `%1` | ").arg(QLatin1String(name)));
        QVERIFY2(place > before, name);
        before = place;
    };
    for (const char *name : call::all)
        compare(name);
    for (const char *name : completion::all)
        compare(name);
}

QTEST_GUILESS_MAIN(ProxyDocumentTest)
#include "tst_proxydocument.moc"
