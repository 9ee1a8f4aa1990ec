#pragma once

#include "protocol/httpclientwrapper.h"
#include "protocol/worker.h"
#include "support/logcatcher.h"
#include "support/scriptedserver.h"

#include <QObject>

#include <memory>

namespace tavro::testsupport {

/// A wrapper whose manager lives on a worker, and a server to talk to.
class HttpClientTest : public QObject {
    Q_OBJECT

protected:
    using Result = aiassistant::HttpClientWrapper::Result;
    using Headers = aiassistant::HttpClientWrapper::Headers;

    void begin();
    void end(); ///< fails the test where something was left or complained about

    std::string url(const char *path) const;
    Result get(const char *path, const Headers &headers = {}, bool log = false);
    Result post(const char *path, const std::string &body, const Headers &headers = {}, bool log = false);

    std::unique_ptr<LogCatcher> log;
    std::unique_ptr<ScriptedServer> server;
    std::unique_ptr<Worker> worker;
    std::unique_ptr<aiassistant::HttpClientWrapper> client;
};

} // namespace tavro::testsupport
