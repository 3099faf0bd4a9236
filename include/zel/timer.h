// Elapsed time, from one of three clocks of the host.
#pragma once

#include <cstdint>
#include <zel/api.h>
#include <zel/exception.h>

namespace Zel {

/// The host lacks a clock: its counter has no frequency, or its ticks cannot be set to 1 ms.
class ZEL_API Exception_NoTimerHardware : public Exception {
public:
    Exception_NoTimerHardware();
};

/// The host cannot tell the time of day as a number.
class ZEL_API Exception_SystemTimeConversionFailed : public Exception {
public:
    Exception_SystemTimeConversionFailed();
};

/// A stopwatch in seconds. It runs from its construction on, can be set to any time, and tells the time since
/// the previous sample.
///
/// One thread uses a Timer at a time. One thread at a time constructs or destroys timers of MULTIMEDIA_TIME.
class ZEL_API Timer {
public:
    /// The clock that a timer reads.
    enum Type : std::int32_t {
        SYSTEM_TIME = 0,        ///< the time of day, which jumps when it is set; steps of 1 ms on Windows
        MULTIMEDIA_TIME = 1,    ///< steps of 1 ms; get starts again at 0 after 2^32 ms (49.7 days)
        PERFORMANCE_COUNTER = 2 ///< the finest counter of the host
    };

    /// Starts at 0. The first timer of MULTIMEDIA_TIME sets the host's ticks to 1 ms.
    /// Throws Exception_NoTimerHardware when the host lacks the clock, and what reset throws. Meant: a timer
    /// of MULTIMEDIA_TIME whose construction fails stays counted in sm_iRefCount.
    Timer(Type type = MULTIMEDIA_TIME);

    /// Meant: a copy does not count sm_iRefCount up, but its destruction counts it down.
    Timer(Timer const&) = default;
    Timer& operator=(Timer const&) = default;

    /// A timer of MULTIMEDIA_TIME counts sm_iRefCount down. At exactly 0 the host's ticks are set back.
    virtual ~Timer();

    /// Seconds since the start; 0 for a type that is none of the three.
    /// A timer of SYSTEM_TIME throws Exception_SystemTimeConversionFailed when the host fails; so do sample,
    /// set and reset.
    float get() const;

    /// Seconds since the previous sample, set or reset, whichever was last.
    float sample();

    /// Moves the start so that get now returns about `seconds`. Meant: the move is computed in single
    /// precision, so the larger the number, the less exact. NaN counts as 0.
    ///
    /// A negative time moves the start into the future. Until then PERFORMANCE_COUNTER returns negative
    /// times. The units of the other two are unsigned and wrap: after set(-5), get of MULTIMEDIA_TIME returns
    /// 4294962.296, which is 2^32 ms less 5 s. A time out of the clock's range moves the start to the nearest
    /// end of the range.
    void set(float seconds);

    /// set(0).
    void reset();

    Type getType() const;

    /// Units of the performance counter in a second; 0 until the first timer of PERFORMANCE_COUNTER is made.
    static std::int64_t sm_iPerformanceFreq;
    /// Timers of MULTIMEDIA_TIME: constructed ones, not counting copies, less destroyed ones. Copies can take
    /// it below 0.
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
