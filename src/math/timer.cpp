// Timers. A start mark and the clock that it is compared with wrap alike, so that only their difference
// counts.

#include <zel/timer.h>

#include "platform/platform.h"

#include <cmath>
#include <limits>

namespace Zel {
namespace {

std::uint64_t systemTime() {
    std::uint64_t const time = platform::systemTime();
    if (time == 0)
        throw Exception_SystemTimeConversionFailed();
    return time;
}

/// The number without its fraction; the nearest that the type can hold, and 0 for what is not a number.
template <class Integer>
Integer truncated(float number) {
    using Limits = std::numeric_limits<Integer>;
    if (std::isnan(number))
        return 0;
    if (number >= std::ldexp(1.0F, Limits::digits))
        return Limits::max();
    if (number <= static_cast<float>(Limits::min()))
        return Limits::min();
    return static_cast<Integer>(number);
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
        // Of every 32-bit number this is the same float as of dividing by 1000, sooner.
        return static_cast<float>((platform::milliseconds() - m_multimediaStart) * 0.001);
    case PERFORMANCE_COUNTER: {
        auto const elapsed = static_cast<std::int64_t>(platform::performanceCounter() -
                                                       static_cast<std::uint64_t>(m_counterStart));
        return static_cast<float>(static_cast<double>(elapsed) / static_cast<double>(sm_iPerformanceFreq));
    }
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
        m_systemStart = systemTime() - truncated<std::uint64_t>(seconds * 10'000'000.0F);
        break;
    case MULTIMEDIA_TIME:
        m_multimediaStart = platform::milliseconds() - truncated<std::uint32_t>(seconds * 1000.0F);
        break;
    case PERFORMANCE_COUNTER: {
        auto const elapsed = truncated<std::int64_t>(static_cast<float>(sm_iPerformanceFreq) * seconds);
        m_counterStart =
            static_cast<std::int64_t>(platform::performanceCounter() - static_cast<std::uint64_t>(elapsed));
        break;
    }
    }
    m_lastSample = seconds;
}

void Timer::reset() { set(0.0F); }

Timer::Type Timer::getType() const { return m_type; }

Exception_NoTimerHardware::Exception_NoTimerHardware() { setError("Timer hardware not found."); }

Exception_SystemTimeConversionFailed::Exception_SystemTimeConversionFailed() {
    setError("System time conversion failed.");
}

} // namespace Zel
