#include "protocol/httpclienttest.h"

#include <QTest>

namespace tavro::testsupport {

void HttpClientTest::begin()
{
    log = std::make_unique<LogCatcher>();
    server = std::make_unique<ScriptedServer>();
    worker = std::make_unique<Worker>();
    client = std::make_unique<aiassistant::HttpClientWrapper>();
    client->init(worker->queue());
}

void HttpClientTest::end()
{
    client.reset();
    worker.reset();
    QCOMPARE(server->leftovers(), QStringList());
    server.reset();
    QCOMPARE(log->complaints().join(QLatin1Char(10)), QString());
    log.reset();
}

std::string HttpClientTest::url(const char *path) const
{
    return server->url().toStdString() + path;
}

HttpClientTest::Result HttpClientTest::get(const char *path, const Headers &headers, bool logged)
{
    return worker->run([&] { return client->get(url(path), headers, logged); });
}

HttpClientTest::Result HttpClientTest::post(const char *path, const std::string &body, const Headers &headers,
                                            bool logged)
{
    return worker->run([&] { return client->post(url(path), headers, body, logged); });
}

} // namespace tavro::testsupport
