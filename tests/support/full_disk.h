// A disk that fills up, on POSIX hosts.
#pragma once

#include <csignal>
#include <functional>
#include <sys/resource.h>

namespace test {

/// Lets no file grow past so many bytes while `act` runs: writing fails as on a full disk.
inline void withFullDisk(rlim_t bytes, std::function<void()> const& act) {
    rlimit limit = {};
    getrlimit(RLIMIT_FSIZE, &limit);
    rlimit const small = {bytes, limit.rlim_max};
    auto const handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    act();
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, handler);
}

} // namespace test
