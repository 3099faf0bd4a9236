// The clocks of POSIX: this program's clock_gettime stands before the C library's in the order of look-up.

#include "support/clock.h"

#include <ctime>
#include <optional>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::optional<std::int64_t> s_milliseconds;

} // namespace

extern "C" int clock_gettime(clockid_t clock, timespec* now) noexcept {
    if (!s_milliseconds)
        return static_cast<int>(syscall(SYS_clock_gettime, clock, now));
    now->tv_sec = *s_milliseconds / 1000;
    now->tv_nsec = *s_milliseconds % 1000 * 1'000'000;
    return 0;
}

namespace test {

StoppedClock::StoppedClock() { s_milliseconds = 1'000'000'000; }
StoppedClock::~StoppedClock() { s_milliseconds.reset(); }
void StoppedClock::set(std::int64_t milliseconds) { s_milliseconds = milliseconds; }
void StoppedClock::advance(std::int64_t milliseconds) { *s_milliseconds += milliseconds; }

} // namespace test
