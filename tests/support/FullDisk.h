#pragma once

#include <csignal>

#include <sys/resource.h>

namespace support {

// Lets no file of the program grow beyond a size, as a full disk does, as long as it lives.
class FullDisk {
public:
    explicit FullDisk(rlim_t size) : m_before(signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_limit);
        const rlimit small{ size, m_limit.rlim_max };
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_limit);
        signal(SIGXFSZ, m_before);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    void (*m_before)(int);
    rlimit m_limit{};
};

} // namespace support
