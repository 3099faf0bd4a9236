// Noise and turbulence in three dimensions, beside other implementations of gradient noise: the time is per
// value, over scattered points. Peers that are not installed are left out.

#include <array>
#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <random>
#include <zel/noise.h>

#if __has_include(<stb/stb_perlin.h>)
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wunused-function"
#endif
#define STB_PERLIN_IMPLEMENTATION
#include <stb/stb_perlin.h>
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
#define BENCH_STB_PERLIN
#endif
#if __has_include(<libnoise/noise.h>)

#include <libnoise/noise.h>
#define BENCH_LIBNOISE
#endif

namespace {

using Point = Zel::Vector3Template<float>;

[[maybe_unused]] constexpr int kOctaves = 5; // of the peers that are told them
constexpr float kFrequency = 16.0F;          // as many octaves: 16, 8, 4, 2 and 1

std::array<Point, 1024> const& points() {
    static std::array<Point, 1024> const result = [] {
        std::array<Point, 1024> random;
        std::mt19937 generator(1);
        std::uniform_real_distribution<float> coordinate(0.0F, 100.0F);
        for (Point& point : random)
            point = {coordinate(generator), coordinate(generator), coordinate(generator)};
        return random;
    }();
    return result;
}

template <class Function>
void measure(benchmark::State& state, Function function) {
    std::size_t i = 0;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(function(points()[i++ % points().size()]));
}

void noise_3d(benchmark::State& state) {
    measure(state, [](Point const& point) { return Zel::snoise(point); });
}
BENCHMARK(noise_3d);

void turbulence_3d(benchmark::State& state) {
    measure(state, [](Point const& point) { return Zel::turbulence(point, kFrequency); });
}
BENCHMARK(turbulence_3d);

#ifdef BENCH_STB_PERLIN
void noise_3d_peer_stb_perlin(benchmark::State& state) {
    measure(state, [](Point const& point) { return stb_perlin_noise3(point.x, point.y, point.z, 0, 0, 0); });
}
BENCHMARK(noise_3d_peer_stb_perlin);

void turbulence_3d_peer_stb_perlin(benchmark::State& state) {
    measure(state, [](Point const& point) {
        return stb_perlin_turbulence_noise3(point.x, point.y, point.z, 2.0F, 0.5F, kOctaves);
    });
}
BENCHMARK(turbulence_3d_peer_stb_perlin);
#endif

#ifdef BENCH_LIBNOISE
void noise_3d_peer_libnoise(benchmark::State& state) {
    measure(state, [](Point const& point) {
        return ::noise::GradientCoherentNoise3D(static_cast<double>(point.x), static_cast<double>(point.y),
                                                static_cast<double>(point.z));
    });
}
BENCHMARK(noise_3d_peer_libnoise);

void turbulence_3d_peer_libnoise(benchmark::State& state) {
    ::noise::module::Billow billow;
    billow.SetOctaveCount(kOctaves);
    measure(state, [&billow](Point const& point) {
        return billow.GetValue(static_cast<double>(point.x), static_cast<double>(point.y),
                               static_cast<double>(point.z));
    });
}
BENCHMARK(turbulence_3d_peer_libnoise);
#endif

} // namespace
