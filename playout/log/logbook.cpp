#include "log/logbook.h"

#include <utility>

namespace tavro::playout {

namespace {

bool turnsOrder(QChar character)
{
    const char16_t code = character.unicode();
    return (code >= u'\u202a' && code <= u'\u202e') || (code >= u'\u2066' && code <= u'\u2069');
}

// One line in the view, whatever came.
QString tidy(QString text)
{
    if (text.size() > LogBook::longestText) {
        text.truncate(LogBook::longestText);
        text += QChar(0x2026);
    }
    for (QChar &each : text) {
        const bool breaksLines = each.category() == QChar::Other_Control || each.category() == QChar::Separator_Line
            || each.category() == QChar::Separator_Paragraph;
        if (breaksLines || turnsOrder(each))
            each = QLatin1Char(' ');
    }
    return text.trimmed();
}

} // namespace

void LogBook::add(LogLevel level, const QString &text)
{
    takePosted();
    append({QDateTime::currentDateTime(), level, text, {}});
}

void LogBook::post(LogRecord record)
{
    const std::lock_guard lock(m_mutex);
    m_posted.push_back(std::move(record));
    // A flood while the GUI thread is busy takes no more room than the log itself.
    if (m_posted.size() > mostRecords)
        m_posted.pop_front();
    if (!std::exchange(m_isAwaited, true))
        QMetaObject::invokeMethod(this, &LogBook::takePosted, Qt::QueuedConnection);
}

void LogBook::takePosted()
{
    std::deque<LogRecord> taken;
    {
        const std::lock_guard lock(m_mutex);
        taken.swap(m_posted);
        m_isAwaited = false;
    }
    for (LogRecord &record : taken)
        append(std::move(record));
}

void LogBook::append(LogRecord record)
{
    record.text = tidy(std::move(record.text));
    m_records.push_back(std::move(record));
    Q_EMIT sigAdded(m_records.back());
    if (m_records.size() <= mostRecords)
        return;
    const LogRecord dropped = std::move(m_records.front());
    m_records.pop_front();
    Q_EMIT sigDropped(dropped);
}

void LogBook::clear()
{
    takePosted();
    m_records.clear();
    Q_EMIT sigCleared();
}

} // namespace tavro::playout
