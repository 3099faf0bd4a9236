// Mounting archives and looking names up. Limits: reading, unscrambling and checking the table alone; a bare
// map.

#include "scratch.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>
#include <vector>
#include <zel/zel.h>

namespace {

void mount(benchmark::State& state) {
    std::string const path = bench::archive(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(Zel::Archive(path));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(mount)->Arg(1'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void mount_limit_table_alone(benchmark::State& state) {
    bench::archive(static_cast<int>(state.range(0)));
    std::string const path =
        (bench::scratch() / ("archive" + std::to_string(state.range(0)) + "-0.bva")).string();
    for ([[maybe_unused]] auto _ : state) {
        std::FILE* const file = std::fopen(path.c_str(), "rb");
        std::uint32_t head[2] = {};
        benchmark::DoNotOptimize(std::fread(head, sizeof head, 1, file));
        std::vector<unsigned char> table(head[1]);
        benchmark::DoNotOptimize(std::fread(table.data(), 1, table.size(), file));
        std::fclose(file);
        Zel::Archive::decrypt(table.data(), static_cast<int>(table.size()));
        benchmark::DoNotOptimize(Zel::crc32(table.data(), table.size()));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(mount_limit_table_alone)->Arg(1'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// Names in an order that does not follow the keys; every other one is missing.
std::vector<std::string> names(int count) {
    std::vector<std::string> result;
    for (std::int64_t i = 0; i < 1000; ++i) {
        std::string name = bench::smallEntry(static_cast<int>(i * 7919 % count));
        std::replace(name.begin(), name.end(), '\\', '/');
        result.push_back(i % 2 == 0 ? name : name + "x");
    }
    return result;
}

std::string keyFor(std::string const& name) {
    Zel::Path path = Zel::File::sm_datadir;
    path.append(name);
    std::string key = path.str();
    std::transform(key.begin(), key.end(), key.begin(),
                   [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
    return key;
}

void look_up(benchmark::State& state) {
    Zel::Archive const archive(bench::archive(static_cast<int>(state.range(0))));
    auto const wanted = names(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        for (std::string const& name : wanted)
            benchmark::DoNotOptimize(Zel::File::exists(name));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(wanted.size()));
}
BENCHMARK(look_up)->Arg(1'000)->Arg(100'000);

void look_up_limit_bare_map(benchmark::State& state) {
    bench::scratch();
    std::map<std::string, Zel::Archive::FileInfo> entries;
    for (int i = 0; i < state.range(0); ++i)
        entries.emplace(keyFor(bench::smallEntry(i)), Zel::Archive::FileInfo());
    auto const wanted = names(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        for (std::string const& name : wanted)
            benchmark::DoNotOptimize(entries.find(keyFor(name)));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(wanted.size()));
}
BENCHMARK(look_up_limit_bare_map)->Arg(1'000)->Arg(100'000);

} // namespace
