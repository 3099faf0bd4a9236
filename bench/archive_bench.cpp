// Mounting archives and looking names up. Limits: reading, unscrambling and checking the table alone; a bare
// map. Peers: ZIP files of the same entries.

#include "archive/archive_writer.h"
#include "zip.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <map>
#include <string_view>
#include <vector>
#include <zel/zel.h>

#ifdef BENCH_ZIP
#include <zip.h>
#endif
#if __has_include(<physfs.h>) && defined(BENCH_ZIP)
#include <physfs.h>
#define BENCH_PHYSFS
#endif

namespace {

#ifdef BENCH_PHYSFS
/// A ZIP file in PhysicsFS while it lives.
class PhysfsMount {
public:
    explicit PhysfsMount(std::string const& path) {
        PHYSFS_init(nullptr);
        if (PHYSFS_mount(path.c_str(), nullptr, 1) == 0)
            std::abort();
    }
    PhysfsMount(PhysfsMount const&) = delete;
    PhysfsMount& operator=(PhysfsMount const&) = delete;
    ~PhysfsMount() { PHYSFS_deinit(); }
};
#endif

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

#ifdef BENCH_PHYSFS
void mount_peer_physfs(benchmark::State& state) {
    std::string const path = bench::zipFile(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state)
        PhysfsMount const mounted(path);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(mount_peer_physfs)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
#endif

#ifdef BENCH_ZIP
void mount_peer_libzip(benchmark::State& state) {
    std::string const path = bench::zipFile(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state)
        zip_discard(zip_open(path.c_str(), ZIP_RDONLY, nullptr));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(mount_peer_libzip)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
#endif

/// Mounts an archive of names that all fall on one slot of a hash table of 1.5 times as many.
void mountCollidingNames(benchmark::State& state) {
    auto const count = static_cast<std::size_t>(state.range(0));
    std::size_t const slots = std::bit_ceil(count + count / 2 + 1);
    std::vector<zel::ArchiveRecord> records;
    for (std::size_t i = 0; records.size() < count; ++i) {
        std::string name = std::to_string(i);
        if (std::hash<std::string_view>()(name) % slots < 4)
            records.push_back({std::move(name), 1, 8, 0});
    }
    std::string const name = "worst" + std::to_string(count) + ".bva";
    std::ofstream(bench::scratch() / name, std::ios::binary) << zel::archiveHead(records);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(Zel::Archive(name));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(mountCollidingNames)
    ->Name("mount_worst_names")
    ->Arg(4'000)
    ->Arg(8'000)
    ->Unit(benchmark::kMillisecond);

/// So many that a peer which moves what was found to the front has to search for them as for any other.
constexpr std::int64_t kNames = 20'000;

/// Names in an order that does not follow the keys, all there or all missing.
std::vector<std::string> names(int count, bool present) {
    std::vector<std::string> result;
    for (std::int64_t i = 0; i < kNames; ++i) {
        std::string name = bench::smallEntry(static_cast<int>(i * 7919 % count));
        std::replace(name.begin(), name.end(), '\\', '/');
        result.push_back(present ? name : name + "x");
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

/// Asks for each of the names by `find`.
template <class Find>
void lookUpNames(benchmark::State& state, bool present, Find find) {
    auto const wanted = names(static_cast<int>(state.range(0)), present);
    for ([[maybe_unused]] auto _ : state) {
        for (std::string const& name : wanted)
            benchmark::DoNotOptimize(find(name));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(wanted.size()));
}

template <bool present>
void lookUp(benchmark::State& state) {
    Zel::Archive const archive(bench::archive(static_cast<int>(state.range(0))));
    lookUpNames(state, present, [](std::string const& name) { return Zel::File::exists(name); });
}

template <bool present>
void lookUpInMap(benchmark::State& state) {
    bench::scratch();
    std::map<std::string, Zel::Archive::FileInfo> entries;
    for (int i = 0; i < state.range(0); ++i)
        entries.emplace(keyFor(bench::smallEntry(i)), Zel::Archive::FileInfo());
    lookUpNames(state, present,
                [&entries](std::string const& name) { return entries.find(keyFor(name)) != entries.end(); });
}

#ifdef BENCH_PHYSFS
template <bool present>
void lookUpPhysfs(benchmark::State& state) {
    PhysfsMount const mounted(bench::zipFile(static_cast<int>(state.range(0))));
    lookUpNames(state, present, [](std::string const& name) { return PHYSFS_exists(name.c_str()); });
}
#endif

void counts(benchmark::internal::Benchmark* job) {
    job->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(lookUp<true>)->Name("look_up_hit")->Apply(counts);
BENCHMARK(lookUp<false>)->Name("look_up_miss")->Apply(counts);
BENCHMARK(lookUpInMap<true>)->Name("look_up_hit_limit_bare_map")->Apply(counts);
BENCHMARK(lookUpInMap<false>)->Name("look_up_miss_limit_bare_map")->Apply(counts);
#ifdef BENCH_PHYSFS
BENCHMARK(lookUpPhysfs<true>)->Name("look_up_hit_peer_physfs")->Apply(counts);
BENCHMARK(lookUpPhysfs<false>)->Name("look_up_miss_peer_physfs")->Apply(counts);
#endif

} // namespace
