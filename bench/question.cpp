// A whole question (post, one poll, signal) beside the same two exchanges made with a bare access manager.

#include "aicontroller/aicontroller_p.h"
#include "aicontroller/servicemessages.h"
#include "answeringserver.h"
#include "eventloop.h"

#include <benchmark/benchmark.h>

#include <QUrl>

namespace tavro::aiassistant {

namespace {

// The conversation is begun anew each time, so that all questions are of one size. The poll comes as soon as the id is
// there: the poll interval is not what is measured.
void question(benchmark::State &state)
{
    AnsweringServer server;
    AiController controller;
    auto &d = AiControllerAccess::of(controller);
    controller.setDomain(server.address());
    controller.createTimer();
    bool answered = false;
    controller.sigGenerateTextFinished.connect([&answered](const TextGeneratedPack &) { answered = true; });
    for ([[maybe_unused]] auto iteration : state) {
        answered = false;
        d.beginNewConversation();
        controller.textToGenerateText(QStringLiteral("Play the harbour clip on layer 2"));
        processEventsUntil([&d] { return !d.strReqId.isEmpty(); });
        d.slotOnTimeout();
        processEventsUntil([&answered] { return answered; });
        d.nTickCount = 0;
    }
    controller.clear();
}

void exchange(QNetworkAccessManager &manager, const QNetworkRequest &request, const QByteArray &body)
{
    QNetworkReply *const reply = manager.post(request, body);
    bool finished = false;
    QObject::connect(reply, &QNetworkReply::finished, reply, [&finished] { finished = true; });
    processEventsUntil([&finished] { return finished; });
    benchmark::DoNotOptimize(reply->readAll());
    reply->deleteLater();
}

void bareExchanges(benchmark::State &state)
{
    AnsweringServer server;
    QNetworkAccessManager manager;
    QNetworkRequest generate(QUrl(server.address() + Endpoint::text()));
    generate.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    generate.setRawHeader("deviceId", "device123");
    QNetworkRequest result = generate;
    result.setUrl(QUrl(server.address() + Endpoint::result()));
    const QByteArray question =
        textRequestBody(false, false, {message(Author::User, QStringLiteral("Play the harbour clip on layer 2"))}, {});
    const QByteArray poll = resultRequestBody(false, QStringLiteral("r1"));
    for ([[maybe_unused]] auto iteration : state) {
        exchange(manager, generate, question);
        exchange(manager, result, poll);
    }
}

BENCHMARK(question)->UseRealTime();
BENCHMARK(bareExchanges)->UseRealTime();

} // namespace

} // namespace tavro::aiassistant
