#pragma once

#include "support/httprequest.h"
#include "support/scriptedbody.h"

#include <QByteArray>
#include <QJsonObject>
#include <QVector>

#include <optional>

namespace tavro::testsupport {

/// What the scripted server does with one request. Made by one of the makers, refined by the operations behind them:
///
///     ScriptedAnswer::json({{QStringLiteral("code"), 1}}).held()
class ScriptedAnswer {
public:
    enum class Framing {
        ContentLength,
        Chunked,
        UntilClose, ///< no length; the connection's end is the body's end
        Bare, ///< the body's bytes only, without any head
    };
    enum class Ending {
        KeepOpen,
        Close,
        Reset, ///< an RST instead of an orderly end
    };

    /// 200 with @p object as "application/json".
    static ScriptedAnswer json(const QJsonObject &object);

    /// 200 with these bytes.
    static ScriptedAnswer bytes(const QByteArray &body, const QByteArray &contentType = "application/json");

    /// 200 with @p beginning, @p count times @p filler, and @p end; never held in memory as a whole.
    static ScriptedAnswer large(const QByteArray &beginning, char filler, qint64 count, const QByteArray &end);

    /// 200 and a body in chunks that never ends; over when the client goes.
    static ScriptedAnswer endless();

    /// The status with an empty body.
    static ScriptedAnswer status(int code);

    static ScriptedAnswer redirect(int code, const QByteArray &location);

    /// Closes (or resets) the connection without a byte. Beware: Qt then sends the request once more.
    static ScriptedAnswer drop();
    static ScriptedAnswer reset();

    /// These bytes in place of an answer, then the end of the connection.
    static ScriptedAnswer garbage(const QByteArray &bytes);

    ScriptedAnswer withStatus(int code) const;
    ScriptedAnswer withHeader(const QByteArray &name, const QByteArray &value) const;
    ScriptedAnswer withHeaders(int count) const; ///< that many more, each with a name of its own
    ScriptedAnswer chunked() const;
    ScriptedAnswer untilClose() const;

    /// Nothing goes out until the test releases the answer.
    ScriptedAnswer held() const;

    /// The head and @p bodyBytes bytes of the body go out at once, the rest when the test releases the answer.
    ScriptedAnswer heldAfter(qint64 bodyBytes) const;

    /// Closes the connection behind the whole answer, without saying so in the head.
    ScriptedAnswer thenClose() const;

    /// Announces the whole body but closes (or resets) the connection after @p bodyBytes bytes of it.
    ScriptedAnswer cutAfter(qint64 bodyBytes) const;
    ScriptedAnswer resetAfter(qint64 bodyBytes) const;

    QByteArray head() const; ///< the bytes before the body
    const ScriptedBody &body() const { return m_body; }
    Framing framing() const { return m_framing; }
    Ending ending() const { return m_ending; }
    std::optional<qint64> cutOffset() const { return m_cut; } ///< body bytes before the end, where it comes early
    std::optional<qint64> holdOffset() const { return m_hold; } ///< -1: before the head

private:
    static ScriptedAnswer withoutHead(const QByteArray &bytes, Ending ending);
    bool has(const QByteArray &name) const;

    int m_status = 200;
    QVector<HttpRequest::Header> m_headers;
    ScriptedBody m_body;
    Framing m_framing = Framing::ContentLength;
    Ending m_ending = Ending::KeepOpen;
    std::optional<qint64> m_cut;
    std::optional<qint64> m_hold;
};

} // namespace tavro::testsupport
