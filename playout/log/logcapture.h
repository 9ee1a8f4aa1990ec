#pragma once

#include <QtGlobal>

namespace tavro::playout {

class LogBook;

/// While it lives, what Qt's messages and the host's logger tell joins a log, from all threads. Both go on to where
/// they went before. What their own settings leave out (QT_LOGGING_RULES, ZLSPDLOG_LEVEL) does not come.
///
/// One at a time, made while no other thread logs.
class LogCapture {
public:
    explicit LogCapture(LogBook &book); ///< which must outlive it
    ~LogCapture();

    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

private:
    QtMessageHandler m_earlier = nullptr;
};

} // namespace tavro::playout
