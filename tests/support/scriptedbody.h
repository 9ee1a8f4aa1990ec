#pragma once

#include <QByteArray>

namespace tavro::testsupport {

/// The body of an answer: a beginning, one character repeated any number of times, and an end. It is made piece by
/// piece, so that a body of many megabytes takes no memory.
class ScriptedBody {
public:
    static constexpr qint64 endless = -1;

    ScriptedBody() = default;
    explicit ScriptedBody(const QByteArray &bytes);
    ScriptedBody(const QByteArray &beginning, char filler, qint64 count, const QByteArray &end);

    /// In bytes; endless where there is no end.
    qint64 size() const;

    /// At most @p maxBytes bytes from @p offset; empty behind the end.
    QByteArray piece(qint64 offset, int maxBytes) const;

private:
    QByteArray m_beginning;
    char m_filler = 0;
    qint64 m_fillerCount = 0;
    QByteArray m_end;
};

} // namespace tavro::testsupport
