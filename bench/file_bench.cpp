// Opening and reading whole files, loose and archived, and typed values one at a time. Limits: the C library
// for loose files; for an entry, the same steps (read and check, read and unscramble) written straight on a
// stream.

#include "scratch.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>
#include <vector>
#include <zel/zel.h>

namespace {

constexpr int kEntries = 100'000;

void readWhole(std::string const& name, std::vector<char>& buffer) {
    Zel::File file(name, Zel::File::READ);
    file.read(buffer.data(), file.getSize());
    benchmark::DoNotOptimize(buffer.data());
}

void read_loose(benchmark::State& state) {
    std::string const name = bench::looseFile(static_cast<std::size_t>(state.range(0)));
    std::vector<char> buffer(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state)
        readWhole(name, buffer);
}
BENCHMARK(read_loose)->Arg(4 << 10)->Arg(4 << 20);

void read_loose_limit_fopen_fread(benchmark::State& state) {
    bench::looseFile(static_cast<std::size_t>(state.range(0)));
    std::string const path =
        (bench::scratch() / bench::looseFile(static_cast<std::size_t>(state.range(0)))).string();
    std::vector<char> buffer(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        std::FILE* const file = std::fopen(path.c_str(), "rb");
        benchmark::DoNotOptimize(std::fread(buffer.data(), 1, buffer.size(), file));
        std::fclose(file);
    }
}
BENCHMARK(read_loose_limit_fopen_fread)->Arg(4 << 10)->Arg(4 << 20);

void read_archived(benchmark::State& state) {
    Zel::Archive const archive(bench::archive(kEntries, static_cast<std::size_t>(state.range(0))));
    std::vector<char> buffer(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state)
        readWhole(bench::kLargeEntry, buffer);
}
BENCHMARK(read_archived)->Arg(4 << 10)->Arg(64 << 10)->Arg(4 << 20);

void read_archived_limit_same_steps(benchmark::State& state) {
    auto const length = static_cast<std::size_t>(state.range(0));
    std::string const path =
        (bench::scratch() / ("archive" + std::to_string(kEntries) + "-" + std::to_string(length) + ".bva"))
            .string();
    bench::archive(kEntries, length);
    long const offset = static_cast<long>(std::filesystem::file_size(path) - length);
    std::vector<char> buffer(length);
    for ([[maybe_unused]] auto _ : state) {
        std::FILE* const file = std::fopen(path.c_str(), "rb");
        for (int pass = 0; pass < 2; ++pass) { // once for the check, once for the caller
            std::fseek(file, offset, SEEK_SET);
            benchmark::DoNotOptimize(std::fread(buffer.data(), 1, length, file));
            Zel::Archive::decrypt(buffer.data(), static_cast<int>(length));
            if (pass == 0)
                benchmark::DoNotOptimize(Zel::crc32(buffer.data(), length));
        }
        std::fclose(file);
    }
}
BENCHMARK(read_archived_limit_same_steps)->Arg(4 << 10)->Arg(64 << 10)->Arg(4 << 20);

/// One integer at a time to the end of the file.
void readIntegers(std::string const& name) {
    Zel::BinaryFile file(name, Zel::File::READ, Zel::BinaryFile::BYTEORDER_NATIVE);
    int value = 0;
    int sum = 0;
    while (!file.endReached()) {
        file >> value;
        sum ^= value;
    }
    benchmark::DoNotOptimize(sum);
}

void typed_integers(benchmark::State& state) {
    std::string const name = bench::looseFile(4 << 20);
    for ([[maybe_unused]] auto _ : state)
        readIntegers(name);
}
BENCHMARK(typed_integers);

void typed_integers_archived(benchmark::State& state) {
    Zel::Archive const archive(bench::archive(1, 4 << 20));
    for ([[maybe_unused]] auto _ : state)
        readIntegers(bench::kLargeEntry);
}
BENCHMARK(typed_integers_archived);

/// The same with a function of the C library, which has the signature of fread.
template <class Read>
void readIntegersWith(benchmark::State& state, Read read) {
    std::string const path = (bench::scratch() / bench::looseFile(4 << 20)).string();
    for ([[maybe_unused]] auto _ : state) {
        std::FILE* const file = std::fopen(path.c_str(), "rb");
        int value = 0;
        int sum = 0;
        while (read(&value, sizeof value, 1, file) == 1)
            sum ^= value;
        std::fclose(file);
        benchmark::DoNotOptimize(sum);
    }
}

void typed_integers_limit_fread(benchmark::State& state) { readIntegersWith(state, std::fread); }
BENCHMARK(typed_integers_limit_fread);

#ifdef __GLIBC__
void typed_integers_limit_fread_unlocked(benchmark::State& state) { readIntegersWith(state, fread_unlocked); }
BENCHMARK(typed_integers_limit_fread_unlocked);
#endif

} // namespace
