#pragma once

#include "http/httpserver.h"

/// An engine whose pictures are as many bytes as their prompt says, each byte told by its place.
class CountedBytesEngine : public tavro::assistantservice::Engine {
public:
    tavro::assistantservice::TextResult answer(const tavro::assistantservice::TextRequest &request,
                                               const std::atomic<bool> &cancelled) const override;
    tavro::assistantservice::PictureResult draw(const tavro::assistantservice::PictureRequest &request,
                                                const std::atomic<bool> &cancelled) const override;

    static QByteArray bytes(int count);
};

/// The service's HTTP side within the test program, with CountedBytesEngine behind it. A fault of memory in it is then
/// one of the test's.
class LocalService {
public:
    explicit LocalService(const tavro::assistantservice::AssistantSettings &assistant = {},
                          const tavro::assistantservice::HttpSettings &http = {});

    int port() const { return m_port; }
    /// Makes a picture of so many bytes and returns the path to fetch it by; empty where that fails.
    QByteArray makePicture(int bytes);

private:
    tavro::assistantservice::Assistant m_assistant;
    tavro::assistantservice::HttpServer m_server;
    int m_port = 0;
};
