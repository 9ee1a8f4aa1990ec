#include "lineinput.h"

#include <array>
#include <cerrno>
#include <unistd.h>

namespace tavro::consolehost {

LineInput::LineInput(QObject *parent)
    : QObject(parent)
    , m_notifier(STDIN_FILENO, QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, &LineInput::onReadable);
}

void LineInput::onReadable()
{
    std::array<char, 4096> buffer;
    const ssize_t size = read(STDIN_FILENO, buffer.data(), buffer.size());
    if (size < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (size <= 0) {
        m_notifier.setEnabled(false);
        giveRest();
        return;
    }
    m_unread.append(buffer.data(), static_cast<int>(size));
    giveLines();
}

void LineInput::giveLines()
{
    int begin = 0;
    for (int end = m_unread.indexOf('\n'); end >= 0; end = m_unread.indexOf('\n', begin)) {
        Q_EMIT sigLine(QString::fromUtf8(m_unread.constData() + begin, end - begin));
        begin = end + 1;
    }
    m_unread.remove(0, begin);
}

void LineInput::giveRest()
{
    if (!m_unread.isEmpty())
        Q_EMIT sigLine(QString::fromUtf8(m_unread));
    Q_EMIT sigEnded();
}

} // namespace tavro::consolehost
