#pragma once

#include "log/logrecord.h"

#include <QObject>

#include <deque>
#include <mutex>

namespace tavro::playout {

/// The log's lines, the oldest first. When there are more than mostRecords, the oldest go. Lives on the GUI thread.
class LogBook : public QObject {
    Q_OBJECT

public:
    static constexpr int mostRecords = 5000;
    static constexpr int longestText = 2000; ///< characters; the rest of a longer text is left out

    const std::deque<LogRecord> &records() const { return m_records; }

    /// Adds a line of the host's own with the present time. To be called on the GUI thread.
    void add(LogLevel level, const QString &text);

    /// Adds a line from any thread, also in the middle of whatever the GUI thread does: it joins when the event loop
    /// runs next. The object must not go meanwhile.
    void post(LogRecord record);

    void clear();

Q_SIGNALS:
    void sigAdded(const tavro::playout::LogRecord &record);
    void sigDropped(const tavro::playout::LogRecord &record); ///< the oldest had to go
    void sigCleared();

private:
    void takePosted();
    void append(LogRecord record);

    std::deque<LogRecord> m_records;
    std::mutex m_mutex; // for the two below
    std::deque<LogRecord> m_posted;
    bool m_isAwaited = false; // takePosted() is on its way
};

} // namespace tavro::playout
