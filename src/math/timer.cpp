// Timers. A start mark has the units and the width of its clock, so both wrap alike, and their difference is
// right even after a wrap.

#include <zel/timer.h>

#include "platform/platform.h"

#include <cmath>
#include <limits>
#include <type_traits>

namespace Zel {
namespace {

std::uint64_t systemTime() {
    std::uint64_t const time = platform::systemTime();
    if (time == 0)
        throw Exception_SystemTimeConversionFailed();
    return time;
}

/// The start mark that lies `units`, truncated, before `now`. NaN counts as 0. For more units than the type
/// can hold, the mark is the smallest or the largest number of the type.
template <class Mark>
Mark markBefore(Mark now, float units) {
    using Limits = std::numeric_limits<Mark>;
    if (std::isnan(units))
        return now;
    float const range = std::ldexp(1.0F, Limits::digits);
    if (units >= range)
        return Limits::min();
    if (units <= -range)
        return Limits::max();
    using Bits = std::make_unsigned_t<Mark>; // wraps as the clock does
    auto const distance = static_cast<Bits>(std::fabs(units));
    return static_cast<Mark>(units < 0 ? static_cast<Bits>(now) + distance
                                       : static_cast<Bits>(now) - distance);
}

std::int64_t counter() { return static_cast<std::int64_t>(platform::performanceCounter()); }

/// The counter less `mark`; the largest number when the difference does not fit.
std::int64_t counterSince(std::int64_t mark) {
    using Limits = std::numeric_limits<std::int64_t>;
    std::int64_t const now = counter();
    bool const fits = mark < 0 ? now <= Limits::max() + mark : now >= Limits::min() + mark;
    return fits ? now - mark : Limits::max();
}

} // namespace

std::int64_t Timer::sm_iPerformanceFreq = 0;
int Timer::sm_iRefCount = 0;

Timer::Timer(Type type) { // NOLINT(cppcoreguidelines-pro-type-member-init)
    initializeMembers();
    m_type = type;
    if (type == PERFORMANCE_COUNTER && sm_iPerformanceFreq == 0) {
        auto const frequency = platform::performanceFrequency();
        if (!frequency)
            throw Exception_NoTimerHardware();
        sm_iPerformanceFreq = *frequency;
    }
    if (type == MULTIMEDIA_TIME && sm_iRefCount++ == 0 && !platform::beginMillisecondTicks())
        throw Exception_NoTimerHardware();
    reset();
}

Timer::~Timer() {
    if (m_type == MULTIMEDIA_TIME && --sm_iRefCount == 0)
        platform::endMillisecondTicks();
    initializeMembers();
}

void Timer::initializeMembers() {
    m_type = PERFORMANCE_COUNTER;
    m_systemStart = 0;
    m_multimediaStart = 0;
    m_counterStart = 0;
    m_lastSample = 0.0F;
}

float Timer::get() const {
    switch (m_type) {
    case SYSTEM_TIME:
        return static_cast<float>(static_cast<double>(systemTime() - m_systemStart) / 10'000'000.0);
    case MULTIMEDIA_TIME:
        // Faster than dividing by 1000, and the same float for every 32-bit number.
        return static_cast<float>((platform::milliseconds() - m_multimediaStart) * 0.001);
    case PERFORMANCE_COUNTER:
        return static_cast<float>(static_cast<double>(counterSince(m_counterStart)) /
                                  static_cast<double>(sm_iPerformanceFreq));
    }
    return 0.0F;
}

float Timer::sample() {
    float const now = get();
    float const elapsed = now - m_lastSample;
    m_lastSample = now;
    return elapsed;
}

void Timer::set(float seconds) {
    switch (m_type) {
    case SYSTEM_TIME:
        m_systemStart = markBefore(systemTime(), seconds * 10'000'000.0F);
        break;
    case MULTIMEDIA_TIME:
        m_multimediaStart = markBefore(platform::milliseconds(), seconds * 1000.0F);
        break;
    case PERFORMANCE_COUNTER:
        m_counterStart = markBefore(counter(), static_cast<float>(sm_iPerformanceFreq) * seconds);
        break;
    }
    get(); // Meant: when the clock fails here, the last sample stays.
    m_lastSample = seconds;
}

void Timer::reset() { set(0.0F); }

Timer::Type Timer::getType() const { return m_type; }

Exception_NoTimerHardware::Exception_NoTimerHardware() { setError("Timer hardware not found."); }

Exception_SystemTimeConversionFailed::Exception_SystemTimeConversionFailed() {
    setError("System time conversion failed.");
}

} // namespace Zel
