// Reading a timer, beside one call of the clock that it stands on.

#include <benchmark/benchmark.h>
#include <ctime>
#include <zel/timer.h>

namespace {

void timer_get(benchmark::State& state, Zel::Timer::Type type) {
    Zel::Timer const timer(type);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(timer.get());
}
BENCHMARK_CAPTURE(timer_get, system_time, Zel::Timer::SYSTEM_TIME);
BENCHMARK_CAPTURE(timer_get, multimedia_time, Zel::Timer::MULTIMEDIA_TIME);
BENCHMARK_CAPTURE(timer_get, performance_counter, Zel::Timer::PERFORMANCE_COUNTER);

void timer_get_limit_clock_gettime(benchmark::State& state, clockid_t clock) {
    timespec now{};
    for ([[maybe_unused]] auto _ : state) {
        clock_gettime(clock, &now);
        benchmark::DoNotOptimize(now);
    }
}
BENCHMARK_CAPTURE(timer_get_limit_clock_gettime, system_time, CLOCK_REALTIME);
BENCHMARK_CAPTURE(timer_get_limit_clock_gettime, multimedia_time, CLOCK_MONOTONIC);
BENCHMARK_CAPTURE(timer_get_limit_clock_gettime, performance_counter, CLOCK_MONOTONIC);

} // namespace
