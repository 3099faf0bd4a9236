// Opening and reading whole files, loose and archived, and typed values one at a time. Limits: the C library
// for loose files; for an entry, the same steps written straight on a descriptor: read, unscramble and check
// in one pass, then read and unscramble for the caller. Peers: entries of a ZIP file of as many.

#include "zip.h"

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>
#include <zel/zel.h>

#ifdef __unix__
#include <fcntl.h>
#include <unistd.h>
#endif
#ifdef BENCH_ZIP
#include <zip.h>
#endif
#if __has_include(<physfs.h>) && defined(BENCH_ZIP)
#include <physfs.h>
#define BENCH_PHYSFS
#endif

namespace {

constexpr int kEntries = 100'000;

constexpr unsigned char kScrambleKey = 0x3B;

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

void sizes(benchmark::internal::Benchmark* job) { job->Arg(4 << 10)->Arg(64 << 10)->Arg(4 << 20); }

void read_archived(benchmark::State& state) {
    Zel::Archive const archive(bench::archive(kEntries, static_cast<std::size_t>(state.range(0))));
    std::vector<char> buffer(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state)
        readWhole(bench::kLargeEntry, buffer);
}
BENCHMARK(read_archived)->Apply(sizes);

#ifdef __unix__
std::array<std::uint32_t, 256> const& crcTable() {
    static std::array<std::uint32_t, 256> const s_table = [] {
        std::array<std::uint32_t, 256> table{};
        for (std::uint32_t i = 0; i < 256; ++i) {
            table[i] = i;
            for (int bit = 0; bit < 8; ++bit)
                table[i] = table[i] >> 1 ^ ((table[i] & 1U) != 0 ? 0xEDB88320U : 0U);
        }
        return table;
    }();
    return s_table;
}

void read_archived_limit_same_steps(benchmark::State& state) {
    auto const length = static_cast<std::size_t>(state.range(0));
    std::string const path =
        (bench::scratch() / ("archive" + std::to_string(kEntries) + "-" + std::to_string(length) + ".bva"))
            .string();
    bench::archive(kEntries, length);
    auto const offset = static_cast<off_t>(std::filesystem::file_size(path) - length);
    std::vector<unsigned char> buffer(length);
    std::vector<unsigned char> piece(16384);
    auto const& table = crcTable();
    for ([[maybe_unused]] auto _ : state) {
        int const file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        std::uint32_t crc = ~0U;
        for (std::size_t done = 0; done < length;) {
            auto const count =
                static_cast<std::size_t>(pread(file, piece.data(), std::min(piece.size(), length - done),
                                               offset + static_cast<off_t>(done)));
            for (std::size_t i = 0; i < count; ++i)
                crc = table[(crc ^ piece[i] ^ kScrambleKey) & 0xFFU] ^ crc >> 8;
            done += count;
        }
        benchmark::DoNotOptimize(crc);
        benchmark::DoNotOptimize(pread(file, buffer.data(), length, offset));
        for (unsigned char& byte : buffer)
            byte ^= kScrambleKey;
        benchmark::DoNotOptimize(buffer.data());
        benchmark::ClobberMemory();
        close(file);
    }
}
BENCHMARK(read_archived_limit_same_steps)->Apply(sizes);
#endif

#ifdef BENCH_PHYSFS
void read_archived_peer_physfs(benchmark::State& state) {
    PHYSFS_init(nullptr);
    PHYSFS_mount(bench::zipFile(kEntries, static_cast<std::size_t>(state.range(0))).c_str(), nullptr, 1);
    std::vector<char> buffer(static_cast<std::size_t>(state.range(0)));
    std::string const name = bench::zipEntry(bench::kLargeEntry);
    for ([[maybe_unused]] auto _ : state) {
        PHYSFS_File* const file = PHYSFS_openRead(name.c_str());
        PHYSFS_readBytes(file, buffer.data(), buffer.size());
        PHYSFS_close(file);
    }
    PHYSFS_deinit();
}
BENCHMARK(read_archived_peer_physfs)->Apply(sizes);
#endif

#ifdef BENCH_ZIP
void read_archived_peer_libzip(benchmark::State& state) {
    zip_t* const archive = zip_open(
        bench::zipFile(kEntries, static_cast<std::size_t>(state.range(0))).c_str(), ZIP_RDONLY, nullptr);
    std::vector<char> buffer(static_cast<std::size_t>(state.range(0)));
    std::string const name = bench::zipEntry(bench::kLargeEntry);
    for ([[maybe_unused]] auto _ : state) {
        zip_file_t* const file = zip_fopen(archive, name.c_str(), 0);
        zip_fread(file, buffer.data(), buffer.size());
        zip_fclose(file);
    }
    zip_discard(archive);
}
BENCHMARK(read_archived_peer_libzip)->Apply(sizes);
#endif

/// All integers of an open file, one at a time.
void readIntegers(benchmark::State& state, std::string const& name) {
    Zel::BinaryFile file(name, Zel::File::READ, Zel::BinaryFile::BYTEORDER_NATIVE);
    for ([[maybe_unused]] auto _ : state) {
        file.setPosition(0);
        int value = 0;
        int sum = 0;
        while (!file.endReached()) {
            file >> value;
            sum ^= value;
        }
        benchmark::DoNotOptimize(sum);
    }
}

void typed_integers(benchmark::State& state) { readIntegers(state, bench::looseFile(4 << 20)); }
BENCHMARK(typed_integers)->Name("typed_integers/loose");

void typed_integers_archived(benchmark::State& state) {
    Zel::Archive const archive(bench::archive(1, 4 << 20));
    readIntegers(state, bench::kLargeEntry);
}
BENCHMARK(typed_integers_archived)->Name("typed_integers/archived");

/// The same with a function of the C library, which has the signature of fread.
template <class Read>
void readIntegersWith(benchmark::State& state, Read read) {
    std::string const path = (bench::scratch() / bench::looseFile(4 << 20)).string();
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    for ([[maybe_unused]] auto _ : state) {
        std::fseek(file, 0, SEEK_SET);
        int value = 0;
        int sum = 0;
        while (read(&value, sizeof value, 1, file) == 1)
            sum ^= value;
        benchmark::DoNotOptimize(sum);
    }
    std::fclose(file);
}

void typed_integers_limit_fread(benchmark::State& state) { readIntegersWith(state, std::fread); }
BENCHMARK(typed_integers_limit_fread);

#ifdef __GLIBC__
void typed_integers_limit_fread_unlocked(benchmark::State& state) { readIntegersWith(state, fread_unlocked); }
BENCHMARK(typed_integers_limit_fread_unlocked);
#endif

} // namespace
