// Loose files whose names differ in case from those asked for, on a host that tells case: opened and read,
// and sought in vain, in directories of so many files and behind eight directories. Limits: a file that is
// there by the exact name.

#ifdef __linux__

#include "scratch.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdint>
#include <fstream>
#include <string>
#include <thread>
#include <vector>
#include <zel/zel.h>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kTinySize = 16;

void addFile(fs::path const& path) { std::ofstream(path, std::ios::binary) << bench::content(kTinySize); }

/// What a directory holds is remembered only when its last change lies a step of the clock back.
void letSettle() { std::this_thread::sleep_for(std::chrono::milliseconds(100)); }

/// Makes a directory of so many files, once, and returns the name to ask for one of them by.
std::string fileAmong(std::int64_t count, bool isExact) {
    std::string const directory = (isExact ? "exact" : "other") + std::to_string(count);
    fs::path const path = bench::scratch() / directory;
    if (fs::create_directory(path)) {
        addFile(path / (isExact ? "tiny.bin" : "Tiny.Bin"));
        for (std::int64_t i = 1; i < count; ++i)
            addFile(path / ("Texture" + std::to_string(i) + ".Bin"));
        letSettle();
    }
    return directory + "/tiny.bin";
}

/// The same of a file in eight directories, one in the other.
std::string fileBehindEight(bool isExact) {
    fs::path path = isExact ? "exact" : "other";
    for (int i = 1; i <= 8; ++i)
        path /= (isExact ? "level" : "Level") + std::to_string(i);
    if (fs::create_directories(bench::scratch() / path)) {
        addFile(bench::scratch() / path / (isExact ? "tiny.bin" : "Tiny.Bin"));
        letSettle();
    }
    return (path / "tiny.bin").string();
}

using Job = void(benchmark::State& state, std::string const& name);

void open(benchmark::State& state, std::string const& name) {
    std::vector<char> buffer(kTinySize);
    for ([[maybe_unused]] auto _ : state) {
        Zel::File file(name, Zel::File::READ);
        file.read(buffer.data(), static_cast<int>(buffer.size()));
        benchmark::DoNotOptimize(buffer.data());
    }
}

void seek(benchmark::State& state, std::string const& name) {
    Zel::File::setArchiveOnly(0);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(Zel::File::exists(name));
    Zel::File::setArchiveOnly(1);
}

void seekInVain(benchmark::State& state, std::string const& name) { seek(state, name + "x"); }

void addRows(std::string const& name, bool isExact, Job* job) {
    for (std::int64_t const count : {1, 1'000, 20'000}) {
        benchmark::RegisterBenchmark((name + "/" + std::to_string(count)).c_str(),
                                     [=](benchmark::State& state) {
                                         job(state, fileAmong(count, isExact));
                                         state.SetItemsProcessed(state.iterations());
                                     });
    }
    benchmark::RegisterBenchmark((name + "/eight_directories").c_str(),
                                 [=](benchmark::State& state) { job(state, fileBehindEight(isExact)); });
}

[[maybe_unused]] bool const s_isAdded = [] {
    addRows("open_other_case", false, open);
    addRows("open_other_case_limit_exact_name", true, open);
    addRows("miss_other_case", false, seekInVain);
    addRows("miss_other_case_limit_exact_name", true, seek);
    return true;
}();

} // namespace

#endif
