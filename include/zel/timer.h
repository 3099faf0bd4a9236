// Elapsed time, from one of three clocks of the host.
#pragma once

#include <cstdint>
#include <zel/api.h>
#include <zel/exception.h>

namespace Zel {

/// The host refuses a clock: its counter has no frequency, or its ticks cannot be raised to one a
/// millisecond.
class ZEL_API Exception_NoTimerHardware : public Exception {
public:
    Exception_NoTimerHardware();
};

/// The host's time of day cannot be told as a number.
class ZEL_API Exception_SystemTimeConversionFailed : public Exception {
public:
    Exception_SystemTimeConversionFailed();
};

/// A stopwatch in seconds: it runs from its construction, can be set to any time, and tells the time since
/// the previous sample.
///
/// One thread uses a Timer at a time; those of MULTIMEDIA_TIME are made and destroyed by one thread at a
/// time.
class ZEL_API Timer {
public:
    /// The clock that a timer reads.
    enum Type : std::int32_t {
        SYSTEM_TIME = 0,        ///< the time of day, which the host may set; steps of 1 ms on Windows
        MULTIMEDIA_TIME = 1,    ///< milliseconds; what a timer tells starts again at 0 after 49.7 days
        PERFORMANCE_COUNTER = 2 ///< the host's finest counter
    };

    /// Starts at 0. The first timer of MULTIMEDIA_TIME raises the resolution of the host's ticks to 1 ms.
    /// Throws Exception_NoTimerHardware where the clock is missing, and what reset throws. Meant: a timer
    /// of MULTIMEDIA_TIME whose construction fails stays counted in sm_iRefCount.
    Timer(Type type = MULTIMEDIA_TIME);

    /// Meant: a copy is not counted in sm_iRefCount, but its destruction counts down like any other's.
    Timer(Timer const&) = default;
    Timer& operator=(Timer const&) = default;

    /// The timer of MULTIMEDIA_TIME that counts sm_iRefCount down to exactly 0 gives the resolution back.
    virtual ~Timer();

    /// Seconds since the start; 0 for a type that is none of the three.
    /// Throws Exception_SystemTimeConversionFailed for SYSTEM_TIME, as do all that follow.
    float get() const;

    /// Seconds since the previous sample, set or reset.
    float sample();

    /// Moves the start so that get now returns `seconds`. A negative time has the timer start later: until
    /// then PERFORMANCE_COUNTER tells negative times, and the other two, whose units are unsigned, tell how
    /// far they have come towards the end of their range. For a time beyond that range the start is the
    /// first or the last that there is. Meant: the move is computed in single precision, so get meets large
    /// numbers only about.
    void set(float seconds);

    /// set(0).
    void reset();

    Type getType() const;

    /// Units of the performance counter in a second; 0 until the first timer of PERFORMANCE_COUNTER asks.
    static std::int64_t sm_iPerformanceFreq;
    /// Constructions less destructions of timers of MULTIMEDIA_TIME; copies can take it below 0.
    static int sm_iRefCount;

private:
    void initializeMembers();

    Type m_type;
    std::uint64_t m_systemStart;     // units of 100 ns
    std::uint32_t m_multimediaStart; // milliseconds
    std::int64_t m_counterStart;
    float m_lastSample;
};

} // namespace Zel
