#pragma once

#include "support/scriptedserver.h"

#include <QJsonArray>
#include <QStringList>

namespace tavro::testsupport {

/// The scripted server in the words of the AI service.
class ServiceScript : public ScriptedServer {
public:
    static constexpr auto text = "/ai/texttotext/generate/";
    static constexpr auto picture = "/ai/texttoimage/generate/";
    static constexpr auto result = "/ai/result/filter/";

    static ScriptedAnswer accepted(const QString &reqId);
    static ScriptedAnswer refused(const QString &why);
    static ScriptedAnswer working();
    static ScriptedAnswer ready(const QString &answer, const QJsonArray &commands = {},
                                const QString &description = {});

    /// One text question, answered at the first poll.
    void expectAnswer(const QString &answer, const QJsonArray &commands = {});

    /// One picture question, answered at the first poll with a picture of @p bytes that may be fetched again and again.
    void expectPicture(const QByteArray &bytes, const QJsonArray &commands = {}, const QString &description = {});

    /// "--service URL" and behind it @p arguments.
    QStringList arguments(const QStringList &arguments = {}) const;

    /// The body of the request to @p target that came as number @p index there.
    QJsonObject body(const QByteArray &target, int index = 0) const;

private:
    int m_lastId = 0;
};

/// A PNG file's bytes.
QByteArray pngBytes(int width, int height);

} // namespace tavro::testsupport
