// The clocks of the host, under a test's control; one file a platform.
#pragma once

#include <cstdint>

namespace test {

/// While it lives, all clocks that the library reads stand where they are set, first one million seconds
/// after the start of 1970. The performance counter has 10^9 units a second.
class StoppedClock {
public:
    StoppedClock();
    ~StoppedClock();
    StoppedClock(StoppedClock const&) = delete;
    StoppedClock& operator=(StoppedClock const&) = delete;

    void set(std::int64_t milliseconds);
    void advance(std::int64_t milliseconds);
};

} // namespace test
