#pragma once

#include "support/scriptedserver.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>

#include <memory>

/// The base of the server's own tests: a fresh server and a Qt client for each test function.
class ServerClient : public QObject {
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    static QByteArray path() { return QByteArrayLiteral("/path/"); }

    QNetworkReply *post(const QByteArray &body = "{}", const QByteArray &target = path());
    QNetworkReply *finished(QNetworkReply *reply); ///< waits for it
    QByteArray bodyOf(QNetworkReply *reply) { return finished(reply)->readAll(); }

    std::unique_ptr<tavro::testsupport::ScriptedServer> server;
    std::unique_ptr<QNetworkAccessManager> manager;
};
