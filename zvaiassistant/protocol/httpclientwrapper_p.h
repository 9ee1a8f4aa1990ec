#pragma once

#include "protocol/httpclientwrapper.h"

#include <memory>
#include <string>

class QNetworkAccessManager;

namespace tavro::aiassistant {

class HttpClientWrapper::Private {
public:
    ~Private() { dropManager(); }

    void makeManager(const std::shared_ptr<TaskQueue> &queue);
    void dropManager();
    bool canSend(const std::string &url, const Headers &sent) const;

    QNetworkAccessManager *manager = nullptr; // lives on the worker's thread
    std::weak_ptr<TaskQueue> worker;
};

/// The tests' way to the private part.
struct HttpClientWrapperAccess {
    static HttpClientWrapper::Private &of(HttpClientWrapper &wrapper) { return *wrapper.d; }
};

} // namespace tavro::aiassistant
