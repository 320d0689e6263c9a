#pragma once

#include <csignal>
#include <sys/resource.h>

/// While one lives, no file of this process grows beyond `bytes`: a full disk.
class FileSizeLimit final
{
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_signal(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limited{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_before{};
    void (*m_signal)(int);
};
