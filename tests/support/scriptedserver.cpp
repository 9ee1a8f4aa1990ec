#include "support/scriptedserver.h"

#include "support/serverlistener.h"

#include <QHostAddress>

#include <algorithm>
#include <iterator>

namespace tavro::testsupport {

ScriptedServer::ScriptedServer()
    : m_listener(std::make_unique<ServerListener>(m_book))
{
    m_listener->moveToThread(&m_thread);
    m_thread.setObjectName(QStringLiteral("ScriptedServer"));
    m_thread.start();
    if (!startListening())
        qFatal("the scripted server found no free port");
}

ScriptedServer::~ScriptedServer()
{
    stopListening();
    m_listener.release()->deleteLater(); // carried out by its thread, at the latest when that ends
    m_thread.quit();
    m_thread.wait();
}

QString ScriptedServer::url() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_port);
}

void ScriptedServer::expect(const QByteArray &method, const QByteArray &target, const ScriptedAnswer &answer)
{
    m_book.expect(method, target, answer);
}

void ScriptedServer::always(const QByteArray &method, const QByteArray &target, const ScriptedAnswer &answer)
{
    m_book.always(method, target, answer);
}

QVector<HttpRequest> ScriptedServer::requestsTo(const QByteArray &target) const
{
    QVector<HttpRequest> found;
    const QVector<HttpRequest> all = requests();
    std::copy_if(all.cbegin(), all.cend(), std::back_inserter(found),
                 [&](const HttpRequest &request) { return request.target == target; });
    return found;
}

bool ScriptedServer::releaseNext()
{
    return release({});
}

bool ScriptedServer::release(const QByteArray &target)
{
    bool released = false;
    m_listener->runHere([&] { released = m_listener->release(target); });
    return released;
}

void ScriptedServer::releaseAll()
{
    while (releaseNext()) { }
}

void ScriptedServer::closeIdleConnections()
{
    m_listener->runHere([this] { m_listener->closeIdle(); });
}

void ScriptedServer::stopListening()
{
    m_listener->runHere([this] { m_listener->stop(); });
}

bool ScriptedServer::startListening()
{
    bool listening = false;
    m_listener->runHere([&] {
        listening = m_listener->listen(QHostAddress::LocalHost, m_port);
        m_port = m_listener->serverPort();
    });
    return listening;
}

} // namespace tavro::testsupport
