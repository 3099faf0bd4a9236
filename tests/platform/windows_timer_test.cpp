// What timers ask of Windows, and what they make of a refusal. The calls are counted where the library makes
// them: Wine tells the same resolution whatever programs ask for.

#include "support/imports_windows.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <mmsystem.h>
#include <string>
#include <zel/zel.h>

namespace {

using test::ReplacedImport;
using Zel::Timer;

std::string s_calls;

MMRESULT __stdcall begin(UINT period) {
    s_calls += "begin " + std::to_string(period) + ";";
    return timeBeginPeriod(period);
}

MMRESULT __stdcall end(UINT period) {
    s_calls += "end " + std::to_string(period) + ";";
    return timeEndPeriod(period);
}

MMRESULT __stdcall refuse(UINT /*period*/) { return TIMERR_NOCANDO; }
BOOL __stdcall noFrequency(LARGE_INTEGER* /*frequency*/) { return FALSE; }
BOOL __stdcall noFileTime(SYSTEMTIME const* /*time*/, FILETIME* /*fileTime*/) { return FALSE; }

class WindowsTimerTest : public testing::Test {
protected:
    ~WindowsTimerTest() override {
        Timer::sm_iPerformanceFreq = 0;
        Timer::sm_iRefCount = 0;
    }
};

TEST_F(WindowsTimerTest, TwoTimersRaiseTheResolutionAndRestoreItOnce) {
    ReplacedImport const countedBegin("timeBeginPeriod", begin);
    ReplacedImport const countedEnd("timeEndPeriod", end);
    s_calls.clear();
    {
        Timer const first;
        EXPECT_EQ(s_calls, "begin 1;");
        Timer const second;
        Timer const third(Timer::SYSTEM_TIME);
        Timer const fourth(Timer::PERFORMANCE_COUNTER);
        EXPECT_EQ(s_calls, "begin 1;");
    }
    EXPECT_EQ(s_calls, "begin 1;end 1;");
    {
        Timer const original;
        { Timer const copy(original); } // NOLINT(performance-unnecessary-copy-initialization)
        EXPECT_EQ(s_calls, "begin 1;end 1;begin 1;end 1;");
    }
    EXPECT_EQ(Timer::sm_iRefCount, -1);
    { Timer const later; } // from -1 to 0 and back
    EXPECT_EQ(s_calls, "begin 1;end 1;begin 1;end 1;") << "a count below 0 asks for nothing";
}

TEST_F(WindowsTimerTest, ARefusedResolutionThrowsAndStaysCounted) {
    ReplacedImport const refused("timeBeginPeriod", refuse);
    EXPECT_THROW(Timer(), Zel::Exception_NoTimerHardware);
    EXPECT_EQ(Timer::sm_iRefCount, 1);
    EXPECT_NO_THROW(Timer()) << "only the first one asks";
}

TEST_F(WindowsTimerTest, ACounterWithoutFrequencyThrows) {
    Timer::sm_iPerformanceFreq = 0;
    ReplacedImport const failing("QueryPerformanceFrequency", noFrequency);
    EXPECT_THROW(Timer{Timer::PERFORMANCE_COUNTER}, Zel::Exception_NoTimerHardware);
}

TEST_F(WindowsTimerTest, ATimeOfDayThatIsNoNumberThrows) {
    Timer timer(Timer::SYSTEM_TIME);
    ReplacedImport const failing("SystemTimeToFileTime", noFileTime);
    EXPECT_THROW(timer.get(), Zel::Exception_SystemTimeConversionFailed);
    EXPECT_THROW(timer.set(1.0F), Zel::Exception_SystemTimeConversionFailed);
    EXPECT_THROW(Timer{Timer::SYSTEM_TIME}, Zel::Exception_SystemTimeConversionFailed);
}

} // namespace
