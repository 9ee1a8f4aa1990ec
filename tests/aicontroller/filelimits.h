#pragma once

#include <csignal>
#include <sys/fsuid.h>
#include <sys/resource.h>
#include <unistd.h>

/// While it lives, no file of this process can grow beyond @p bytes: writing on fails as on a full disk. Keep the scope
/// small, the test's own report may go to a file too.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_earlierHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_earlier);
        rlimit limit = m_earlier;
        limit.rlim_cur = bytes;
        m_set = ::setrlimit(RLIMIT_FSIZE, &limit) == 0;
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_earlier);
        std::signal(SIGXFSZ, m_earlierHandler);
    }

    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

    bool isSet() const { return m_set; }

private:
    void (*m_earlierHandler)(int);
    rlimit m_earlier{};
    bool m_set = false;
};

/// While it lives, the calling thread has an ordinary user's rights to files, also where the tests run as root.
class OrdinaryUser {
public:
    OrdinaryUser()
    {
        if (::geteuid() == 0)
            ::setfsuid(nobody);
    }
    ~OrdinaryUser() { ::setfsuid(::geteuid()); }

    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;

private:
    static constexpr uid_t nobody = 65534;
};
