#include "support/scriptedbody.h"

#include <QtGlobal>

#include <limits>

namespace tavro::testsupport {

ScriptedBody::ScriptedBody(const QByteArray &bytes)
    : m_beginning(bytes)
{ }

ScriptedBody::ScriptedBody(const QByteArray &beginning, char filler, qint64 count, const QByteArray &end)
    : m_beginning(beginning)
    , m_filler(filler)
    , m_fillerCount(count)
    , m_end(end)
{ }

qint64 ScriptedBody::size() const
{
    return m_fillerCount == endless ? endless : m_beginning.size() + m_fillerCount + m_end.size();
}

QByteArray ScriptedBody::piece(qint64 offset, int maxBytes) const
{
    if (offset < m_beginning.size())
        return m_beginning.mid(static_cast<int>(offset), maxBytes);
    const qint64 filler = m_fillerCount == endless ? std::numeric_limits<qint64>::max() : m_fillerCount;
    const qint64 inFiller = offset - m_beginning.size();
    if (inFiller < filler)
        return QByteArray(static_cast<int>(qMin<qint64>(maxBytes, filler - inFiller)), m_filler);
    return m_end.mid(static_cast<int>(inFiller - filler), maxBytes);
}

} // namespace tavro::testsupport
