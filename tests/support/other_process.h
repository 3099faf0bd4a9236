// Somebody else on this host, on POSIX hosts: a process that meddles while a test runs.
#pragma once

#include <atomic>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sched.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace test {

/// Exchanges what has two names, over and over, while it runs. It waits at first.
class Swapper {
public:
    Swapper(std::filesystem::path const& one, std::filesystem::path const& other)
        : m_rounds(static_cast<Rounds*>(
              mmap(nullptr, sizeof(Rounds), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))),
          m_process(fork()) {
        if (m_process == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            for (;; ++*m_rounds)
                renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE);
        }
        wait();
    }
    Swapper(Swapper const&) = delete;
    Swapper& operator=(Swapper const&) = delete;
    ~Swapper() {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
        munmap(m_rounds, sizeof(Rounds));
    }

    /// Returns when the other process is at it: on a busy machine that may take its time.
    void run() const {
        long const before = *m_rounds;
        kill(m_process, SIGCONT);
        while (*m_rounds == before)
            sched_yield();
    }
    void wait() const {
        kill(m_process, SIGSTOP);
        waitpid(m_process, nullptr, WUNTRACED);
    }

private:
    using Rounds = std::atomic<long>;

    Rounds* m_rounds; ///< shared by both processes
    pid_t m_process;
};

} // namespace test
