// Work on pixels in memory: point and bilinear samples, resampling, dilation. Limits: the plain loop that the
// result is defined by, written out.

#include "pictures.h"

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cmath>
#include <random>
#include <vector>
#include <zel/zel.h>

#if __has_include(<stb/stb_image_resize.h>)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wunused-parameter"
#define STB_IMAGE_RESIZE_IMPLEMENTATION
#include <stb/stb_image_resize.h>
#pragma GCC diagnostic pop
#define BENCH_STB
#endif

namespace {

using bench::kSide;
using Zel::Color;

struct Position {
    float x;
    float y;
};

/// Positions all over the picture, some of them just outside.
std::vector<Position> const& positions() {
    static std::vector<Position> const s_positions = [] {
        std::minstd_rand random;
        std::uniform_real_distribution<float> coordinate(-4.0F, kSide + 4.0F);
        std::vector<Position> result(4096);
        for (Position& position : result)
            position = {coordinate(random), coordinate(random)};
        return result;
    }();
    return s_positions;
}

template <class Sample>
void sampleAll(benchmark::State& state, Sample sample) {
    for ([[maybe_unused]] auto _ : state) {
        for (Position const& position : positions())
            benchmark::DoNotOptimize(sample(position.x, position.y));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(positions().size()));
}

void point_samples(benchmark::State& state) {
    Zel::Image const& image = bench::photograph();
    sampleAll(state, [&](float x, float y) { return image.samplePoint(x, y); });
}
BENCHMARK(point_samples);

void point_samples_limit_plain_loop(benchmark::State& state) {
    Color const* const pixels = bench::photograph().getData();
    sampleAll(state, [&](float x, float y) {
        int const column = std::clamp(static_cast<int>(x + 0.5F), 0, kSide - 1);
        int const row = std::clamp(static_cast<int>(y + 0.5F), 0, kSide - 1);
        return pixels[row * kSide + column];
    });
}
BENCHMARK(point_samples_limit_plain_loop);

void bilinear_samples(benchmark::State& state) {
    Zel::Image const& image = bench::photograph();
    sampleAll(state, [&](float x, float y) { return image.sampleBilinear(x, y); });
}
BENCHMARK(bilinear_samples);

std::uint8_t blend(std::uint8_t a, std::uint8_t b, float t) {
    return static_cast<std::uint8_t>(static_cast<float>(b - a) * t + static_cast<float>(a));
}

void bilinear_samples_limit_plain_loop(benchmark::State& state) {
    Color const* const pixels = bench::photograph().getData();
    sampleAll(state, [&](float x, float y) {
        auto const column = static_cast<int>(std::floor(x));
        auto const row = static_cast<int>(std::floor(y));
        float const fx = x - std::floor(x);
        float const fy = y - std::floor(y);
        auto const at = [&](int i, int j) {
            return pixels[std::clamp(j, 0, kSide - 1) * kSide + std::clamp(i, 0, kSide - 1)];
        };
        std::array<Color, 4> const c{at(column, row), at(column + 1, row), at(column, row + 1),
                                     at(column + 1, row + 1)};
        auto const channel = [&](std::uint8_t Color::*of) {
            return blend(blend(c[0].*of, c[1].*of, fx), blend(c[2].*of, c[3].*of, fx), fy);
        };
        return Color(channel(&Color::r), channel(&Color::g), channel(&Color::b), channel(&Color::a));
    });
}
BENCHMARK(bilinear_samples_limit_plain_loop);

constexpr int kSmallSide = kSide / 4;

void copy_with_scale(benchmark::State& state) {
    Zel::Image small(kSmallSide, kSmallSide);
    for ([[maybe_unused]] auto _ : state) {
        small.copyWithScale(&bench::photograph(), 1.0F);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(copy_with_scale)->Unit(benchmark::kMicrosecond);

#ifdef BENCH_STB
void copy_with_scale_peer_stb_image_resize(benchmark::State& state) {
    auto const* const pixels = reinterpret_cast<unsigned char const*>(bench::photograph().getData());
    std::vector<unsigned char> small(std::size_t{kSmallSide} * kSmallSide * 4);
    for ([[maybe_unused]] auto _ : state) {
        stbir_resize_uint8_generic(pixels, kSide, kSide, 0, small.data(), kSmallSide, kSmallSide, 0, 4,
                                   STBIR_ALPHA_CHANNEL_NONE, 0, STBIR_EDGE_WRAP, STBIR_FILTER_BOX,
                                   STBIR_COLORSPACE_LINEAR, nullptr);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(copy_with_scale_peer_stb_image_resize)->Unit(benchmark::kMicrosecond);
#endif

/// The poster; one of its sixteen colours is the key.
Color const& key() { return bench::poster()[0]; }

void dilate(benchmark::State& state) {
    Zel::Image image(bench::poster());
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        image = bench::poster(); // each pass leaves less of the key colour
        state.ResumeTiming();
        image.dilate(key());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(dilate)->Unit(benchmark::kMicrosecond);

void dilate_limit_plain_loop(benchmark::State& state) {
    Color const* const pixels = bench::poster().getData();
    auto const isKey = [wanted = key()](Color const& colour) {
        return colour.r == wanted.r && colour.g == wanted.g && colour.b == wanted.b;
    };
    for ([[maybe_unused]] auto _ : state) {
        std::vector<Color> grown(std::size_t{kSide} * kSide);
        for (int y = 0; y < kSide; ++y) {
            for (int x = 0; x < kSide; ++x) {
                Color const& pixel = pixels[y * kSide + x];
                Color& to = grown[static_cast<std::size_t>(y * kSide + x)];
                if (!isKey(pixel)) {
                    to = pixel;
                    continue;
                }
                std::array<int, 4> sum{};
                int count = 0;
                auto const add = [&](int i, int j) {
                    if (i < 0 || j < 0 || i >= kSide || j >= kSide || isKey(pixels[j * kSide + i]))
                        return;
                    Color const& neighbour = pixels[j * kSide + i];
                    sum[0] += neighbour.r;
                    sum[1] += neighbour.g;
                    sum[2] += neighbour.b;
                    sum[3] += neighbour.a;
                    ++count;
                };
                add(x - 1, y);
                add(x, y - 1);
                add(x + 1, y);
                add(x, y + 1);
                auto const average = [&](int total) {
                    return static_cast<std::uint8_t>(total / count);
                };
                to = count > 0 ? Color(average(sum[0]), average(sum[1]), average(sum[2]), average(sum[3]))
                               : key();
            }
        }
        benchmark::DoNotOptimize(grown.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(dilate_limit_plain_loop)->Unit(benchmark::kMicrosecond);

} // namespace
