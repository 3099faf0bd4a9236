#include "support/clock.h"
#include "support/library_test.h"

#include <cmath>
#include <limits>

namespace {

using Zel::Timer;

class TimerTest : public testing::TestWithParam<Timer::Type> {
protected:
    TimerTest() { Timer::sm_iPerformanceFreq = Timer::sm_iRefCount = 0; }
    ~TimerTest() override { Timer::sm_iPerformanceFreq = Timer::sm_iRefCount = 0; }

    test::StoppedClock m_clock;
};

INSTANTIATE_TEST_SUITE_P(EveryClock, TimerTest,
                         testing::Values(Timer::SYSTEM_TIME, Timer::MULTIMEDIA_TIME,
                                         Timer::PERFORMANCE_COUNTER));

TEST_P(TimerTest, TellsTheTimeSinceItsStartAndSinceTheSampleBefore) {
    Timer timer(GetParam());
    EXPECT_EQ(timer.getType(), GetParam());
    EXPECT_EQ(timer.get(), 0.0F);
    m_clock.advance(2500);
    EXPECT_EQ(timer.get(), 2.5F);
    EXPECT_EQ(timer.sample(), 2.5F);
    m_clock.advance(250);
    EXPECT_EQ(timer.sample(), 0.25F);
    EXPECT_EQ(timer.get(), 2.75F);

    timer.set(5.0F);
    EXPECT_EQ(timer.get(), 5.0F);
    m_clock.advance(500);
    EXPECT_EQ(timer.sample(), 0.5F);

    timer.reset();
    m_clock.advance(125);
    EXPECT_EQ(timer.sample(), 0.125F);

    timer.set(-5.0F);
    m_clock.advance(7000);
    EXPECT_EQ(timer.get(), 2.0F);
}

TEST_F(TimerTest, SetTakesTheNearestStartThatTheClockCanHold) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    using enum Timer::Type;
    struct Case {
        Timer::Type type;
        float seconds, told;
    };
    for (auto const& [type, seconds, told] :
         {Case{SYSTEM_TIME, -5.0F, 1.8446744e12F}, Case{SYSTEM_TIME, NAN, 0.0F},
          // Longer ago than the first time of day there is, which is in 1601.
          Case{SYSTEM_TIME, 2e10F, 2e10F}, Case{SYSTEM_TIME, 1e30F, 1.16454736e10F},
          Case{MULTIMEDIA_TIME, -5.0F, 4294962.296F}, Case{MULTIMEDIA_TIME, -1e30F, 1000000.001F},
          // Before the clock's own zero.
          Case{MULTIMEDIA_TIME, 2e6F, 2e6F}, Case{MULTIMEDIA_TIME, 1e30F, 1e6F},
          Case{PERFORMANCE_COUNTER, -5.0F, -5.0F}, Case{PERFORMANCE_COUNTER, kInfinity, 9.2233720e9F},
          Case{PERFORMANCE_COUNTER, -1e30F, -9.2223720e9F}, Case{PERFORMANCE_COUNTER, NAN, 0.0F},
          // Products of single precision: in double precision each of these came out otherwise.
          Case{SYSTEM_TIME, 107.374191F, 107.374199F}, Case{MULTIMEDIA_TIME, 10000.0996F, 10000.1F},
          Case{PERFORMANCE_COUNTER, 100.100067F, 100.10006F}}) {
        Timer timer(type);
        timer.set(seconds);
        EXPECT_EQ(timer.get(), told) << "type " << type << " set to " << seconds;
    }

    Timer longAgo(Timer::PERFORMANCE_COUNTER);
    longAgo.set(kInfinity);
    m_clock.advance(1000);
    EXPECT_EQ(longAgo.get(), 9.2233720e9F) << "no more than there is";
}

TEST_F(TimerTest, DifferencesWrapAsTheUnitsOfTheClockDo) {
    m_clock.set((std::int64_t(1) << 32) - 1000);
    Timer const multimedia;
    Timer const system(Timer::SYSTEM_TIME);
    Timer const counter(Timer::PERFORMANCE_COUNTER);
    m_clock.advance(3000);
    EXPECT_EQ(multimedia.get(), 3.0F);
    m_clock.advance(-4000); // before the start
    EXPECT_EQ(multimedia.get(), 4294966.296F);
    EXPECT_EQ(system.get(), 1.8446744e12F);
    EXPECT_EQ(counter.get(), -1.0F);
}

TEST_F(TimerTest, CountsTheTimersOfMultimediaTimeButNotTheirCopies) {
    {
        Timer const first;
        EXPECT_EQ(first.getType(), Timer::MULTIMEDIA_TIME);
        Timer const other(Timer::SYSTEM_TIME);
        Timer const another(Timer::PERFORMANCE_COUNTER);
        EXPECT_EQ(Timer::sm_iRefCount, 1);
        { Timer const copy(first); } // NOLINT(performance-unnecessary-copy-initialization)
        EXPECT_EQ(Timer::sm_iRefCount, 0);
    }
    EXPECT_EQ(Timer::sm_iRefCount, -1);
}

TEST_F(TimerTest, AsksForTheFrequencyOnce) {
    Timer const first(Timer::PERFORMANCE_COUNTER);
    EXPECT_EQ(Timer::sm_iPerformanceFreq, 1'000'000'000);
    Timer::sm_iPerformanceFreq = 500'000'000;
    Timer const second(Timer::PERFORMANCE_COUNTER);
    m_clock.advance(1000);
    EXPECT_EQ(second.get(), 2.0F);
}

TEST_F(TimerTest, AnyOtherTypeTellsNothing) {
    Timer timer(static_cast<Timer::Type>(7));
    timer.set(5.0F);
    EXPECT_EQ(timer.get(), 0.0F);
    EXPECT_EQ(timer.sample(), -5.0F);
}

} // namespace
