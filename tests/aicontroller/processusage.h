#pragma once

#include <QByteArray>
#include <QFile>

#include <ctime>

/// What the whole process and the calling thread have used so far.
namespace processusage {

/// In seconds of a processor.
inline double secondsOf(clockid_t clock)
{
    timespec time{};
    ::clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

inline double threadSeconds()
{
    return secondsOf(CLOCK_THREAD_CPUTIME_ID);
}

inline double processSeconds()
{
    return secondsOf(CLOCK_PROCESS_CPUTIME_ID);
}

/// The most memory in bytes that was resident since forgetPeak().
inline qint64 peakBytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QFile::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    const int begin = text.indexOf("VmHWM:") + 6;
    return text.mid(begin, text.indexOf("kB", begin) - begin).trimmed().toLongLong() * 1024;
}

inline bool forgetPeak()
{
    QFile references(QStringLiteral("/proc/self/clear_refs"));
    return references.open(QFile::WriteOnly | QFile::Unbuffered) && references.write("5") == 1;
}

} // namespace processusage
