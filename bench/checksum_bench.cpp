// CRC-32 and unscrambling of memory. Limits: the plain byte-table loop, and memcpy. zlib's checksum, which
// uses wider tables, is shown for comparison.

#include "scratch.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstring>
#include <vector>
#include <zel/zel.h>

#if __has_include(<zlib.h>)
#include <zlib.h>
#define BENCH_ZLIB
#endif

namespace {

void sizes(benchmark::internal::Benchmark* job) { job->Arg(64 << 10)->Arg(64 << 20); }

void count(benchmark::State& state) { state.SetBytesProcessed(state.iterations() * state.range(0)); }

void crc32(benchmark::State& state) {
    std::string const text = bench::content(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(Zel::crc32(text.data(), text.size()));
    count(state);
}
BENCHMARK(crc32)->Apply(sizes);

/// The loop that the checksum is defined by, written out.
void crc32_limit_byte_table(benchmark::State& state) {
    std::string const text = bench::content(static_cast<std::size_t>(state.range(0)));
    std::array<std::uint32_t, 256> table;
    for (std::uint32_t i = 0; i < 256; ++i) {
        table[i] = i;
        for (int bit = 0; bit < 8; ++bit)
            table[i] = table[i] >> 1 ^ ((table[i] & 1) != 0 ? 0xEDB88320u : 0u);
    }
    for ([[maybe_unused]] auto _ : state) {
        std::uint32_t value = 0xFFFFFFFF;
        for (char character : text)
            value = table[(value ^ static_cast<unsigned char>(character)) & 0xFF] ^ value >> 8;
        benchmark::DoNotOptimize(value);
    }
    count(state);
}
BENCHMARK(crc32_limit_byte_table)->Apply(sizes);

#ifdef BENCH_ZLIB
void crc32_peer_zlib(benchmark::State& state) {
    std::string const text = bench::content(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(::crc32(0, reinterpret_cast<unsigned char const*>(text.data()),
                                         static_cast<unsigned>(text.size())));
    count(state);
}
BENCHMARK(crc32_peer_zlib)->Apply(sizes);
#endif

void decrypt(benchmark::State& state) {
    std::string text = bench::content(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        Zel::Archive::decrypt(text.data(), static_cast<int>(text.size()));
        benchmark::ClobberMemory();
    }
    count(state);
}
BENCHMARK(decrypt)->Apply(sizes);

void decrypt_limit_memcpy(benchmark::State& state) {
    std::string const text = bench::content(static_cast<std::size_t>(state.range(0)));
    std::vector<char> copy(text.size());
    for ([[maybe_unused]] auto _ : state) {
        std::memcpy(copy.data(), text.data(), text.size());
        benchmark::ClobberMemory();
    }
    count(state);
}
BENCHMARK(decrypt_limit_memcpy)->Apply(sizes);

} // namespace
