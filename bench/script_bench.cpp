// Parsing a script, beside parsers of other configuration languages on the same content: blocks of eight
// variables of every type. Peers that are not installed are left out.

#include "scratch.h"

#include <benchmark/benchmark.h>
#include <bit>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string_view>
#include <vector>
#include <zel/zel.h>

#if __has_include(<nlohmann/json.hpp>)
#include <nlohmann/json.hpp>
#define BENCH_JSON
#endif
#if __has_include(<toml++/toml.h>)
#include <toml++/toml.h>
#define BENCH_TOML
#endif
#if __has_include(<libconfig.h++>)
#include <libconfig.h++>
#define BENCH_LIBCONFIG
#endif

namespace {

constexpr int kBytesPerBlock = 250; // of a script, about

/// The block of that number, in the language of `format`: its first argument is the number.
std::string content(std::int64_t bytes, char const* format, char const* begin = "", char const* end = "") {
    std::string text = begin;
    for (int i = 0; i < bytes / kBytesPerBlock; ++i) {
        char block[512];
        std::snprintf(block, sizeof block, format, i);
        text += i > 0 && *end == '}' ? "," : "";
        text += block;
    }
    return text + end;
}

std::string scriptText(std::int64_t bytes) {
    return content(bytes, "[Block%06d]\nname = \"Texture fill test\";\nloops = 10;\nenabled = TRUE;\n"
                          "scale = 1.525;\nsize = (640,480);\nposition = (0.0,1.0,2.0);\n"
                          "colour = (1.0,0.5,0.25,1.0);\nrange = [0.0,10.0];\n"
                          "// A comment stands here, as people write them.\n\n");
}

/// Hands the text to a parser again and again; the time is per text, the rate in bytes of the script.
template <class Parse>
void measure(benchmark::State& state, std::string const& text, Parse parse) {
    for ([[maybe_unused]] auto _ : state)
        parse(text);
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void script_parse(benchmark::State& state) {
    std::string const name = "bench" + std::to_string(state.range(0)) + ".script";
    std::ofstream(bench::scratch() / name, std::ios::binary) << scriptText(state.range(0));
    measure(state, name,
            [](std::string const& fileName) { benchmark::DoNotOptimize(Zel::Script(fileName)); });
}
BENCHMARK(script_parse)
    ->Arg(50 << 10)
    ->Arg(1 << 20)
    ->Arg(4 << 20)
    ->Arg(8 << 20)
    ->Unit(benchmark::kMicrosecond);

#ifdef BENCH_JSON
std::string jsonText(std::int64_t bytes) {
    return content(bytes,
                   "\"Block%06d\": {\n\"name\": \"Texture fill test\",\n\"loops\": 10,\n\"enabled\": true,\n"
                   "\"scale\": 1.525,\n\"size\": [640,480],\n\"position\": [0.0,1.0,2.0],\n"
                   "\"colour\": [1.0,0.5,0.25,1.0],\n\"range\": [0.0,10.0]}\n"
                   "/* A comment stands here, as people write them. */\n",
                   "{", "}");
}

nlohmann::json parseJson(std::string const& json) { return nlohmann::json::parse(json, nullptr, true, true); }

void script_parse_peer_nlohmann(benchmark::State& state) {
    measure(state, jsonText(state.range(0)),
            [](std::string const& json) { benchmark::DoNotOptimize(parseJson(json)); });
}
BENCHMARK(script_parse_peer_nlohmann)->Arg(50 << 10)->Arg(1 << 20)->Unit(benchmark::kMicrosecond);
#endif

#ifdef BENCH_TOML
void script_parse_peer_toml(benchmark::State& state) {
    std::string const text =
        content(state.range(0), "[Block%06d]\nname = \"Texture fill test\"\nloops = 10\nenabled = true\n"
                                "scale = 1.525\nsize = [640,480]\nposition = [0.0,1.0,2.0]\n"
                                "colour = [1.0,0.5,0.25,1.0]\nrange = [0.0,10.0]\n"
                                "# A comment stands here, as people write them.\n\n");
    measure(state, text, [](std::string const& toml) { benchmark::DoNotOptimize(toml::parse(toml)); });
}
BENCHMARK(script_parse_peer_toml)->Arg(50 << 10)->Arg(1 << 20)->Unit(benchmark::kMicrosecond);
#endif

#ifdef BENCH_LIBCONFIG
void script_parse_peer_libconfig(benchmark::State& state) {
    std::string const text =
        content(state.range(0), "Block%06d: {\nname = \"Texture fill test\";\nloops = 10;\nenabled = true;\n"
                                "scale = 1.525;\nsize = [640,480];\nposition = [0.0,1.0,2.0];\n"
                                "colour = [1.0,0.5,0.25,1.0];\nrange = [0.0,10.0];};\n"
                                "// A comment stands here, as people write them.\n\n");
    measure(state, text, [](std::string const& configuration) {
        libconfig::Config config;
        config.readString(configuration);
    });
}
BENCHMARK(script_parse_peer_libconfig)->Arg(50 << 10)->Unit(benchmark::kMicrosecond);
#endif

/// Parses a script of so many blocks, and seeks as many that are not there.
void measureNames(benchmark::State& state, std::string const& fileName) {
    for ([[maybe_unused]] auto _ : state) {
        Zel::Script const script(fileName);
        for (std::int64_t i = 0; i < state.range(0); ++i)
            benchmark::DoNotOptimize(script.hasBlock("0"));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// Blocks that all have one name.
void script_equal_names(benchmark::State& state) {
    std::ofstream script(bench::scratch() / "equal.script", std::ios::binary);
    for (std::int64_t i = 0; i < state.range(0); ++i)
        script << "[a]";
    script.close();
    measureNames(state, "equal.script");
}
BENCHMARK(script_equal_names)->Arg(100'000)->Arg(200'000)->Unit(benchmark::kMillisecond);

/// Blocks whose names all fall on one slot of a hash table of 1.5 times as many, with those that are sought.
void script_worst_names(benchmark::State& state) {
    auto const count = static_cast<std::size_t>(state.range(0));
    std::size_t const mask = std::bit_ceil(count + count / 2 + 1) - 1;
    auto const slotOf = [mask](std::string const& name) {
        return std::hash<std::string_view>()(name) & mask;
    };
    std::ofstream script(bench::scratch() / "worst.script", std::ios::binary);
    std::size_t found = 0;
    for (std::size_t i = 1; found < count; ++i) {
        std::string const name = std::to_string(i);
        if (slotOf(name) != slotOf("0"))
            continue;
        script << '[' << name << ']';
        ++found;
    }
    script.close();
    measureNames(state, "worst.script");
}
BENCHMARK(script_worst_names)->Arg(4'000)->Arg(8'000)->Unit(benchmark::kMillisecond);

/// Files that include one another in a row.
void script_deep_includes(benchmark::State& state) {
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        std::ofstream file(bench::scratch() / ("d" + std::to_string(i)), std::ios::binary);
        file << (i + 1 < state.range(0) ? "#include d" + std::to_string(i + 1) : "[a]") << "\n\n";
    }
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(Zel::Script("d0"));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(script_deep_includes)->Arg(5'000)->Arg(10'000)->Unit(benchmark::kMillisecond);

/// Variables of one block, each read by its name.
void script_many_variables(benchmark::State& state) {
    std::ofstream file(bench::scratch() / "variables.script", std::ios::binary);
    std::vector<std::string> names;
    file << "[a]\n";
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        names.push_back("variable" + std::to_string(i));
        file << names.back() << " = 1;\n";
    }
    file.close();
    for ([[maybe_unused]] auto _ : state) {
        Zel::Script script("variables.script");
        script.lock("a");
        for (std::string const& name : names)
            benchmark::DoNotOptimize(script.getInt(name));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(script_many_variables)->Arg(100'000)->Arg(200'000)->Unit(benchmark::kMillisecond);

/// Names of blocks in an order that does not follow the text.
std::vector<std::string> blockNames(int count) {
    std::vector<std::string> names;
    for (int i = 0; i < 1000; ++i) {
        char name[16];
        std::snprintf(name, sizeof name, "Block%06d", static_cast<int>(std::int64_t{i} * 7919 % count));
        names.emplace_back(name);
    }
    return names;
}

/// For each of some blocks: go there by name, read four values, and leave.
template <class Query>
void queryBlocks(benchmark::State& state, Query query) {
    auto const names = blockNames(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        for (std::string const& name : names)
            query(name);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(names.size()));
}

void script_queries(benchmark::State& state) {
    std::ofstream(bench::scratch() / "queries.script", std::ios::binary)
        << scriptText(state.range(0) * kBytesPerBlock);
    Zel::Script script("queries.script");
    std::string const loops = "loops";
    std::string const enabled = "enabled";
    std::string const scale = "scale";
    std::string const title = "name";
    queryBlocks(state, [&](std::string const& block) {
        script.lock(block);
        benchmark::DoNotOptimize(script.getInt(loops));
        benchmark::DoNotOptimize(script.getBool(enabled));
        benchmark::DoNotOptimize(script.getFloat(scale));
        benchmark::DoNotOptimize(&script.getString(title));
        script.unlock();
    });
}
BENCHMARK(script_queries)->Arg(150)->Arg(3100)->Unit(benchmark::kMicrosecond);

#ifdef BENCH_JSON
void script_queries_peer_nlohmann(benchmark::State& state) {
    nlohmann::json const json = parseJson(jsonText(state.range(0) * kBytesPerBlock));
    std::string const loops = "loops";
    std::string const enabled = "enabled";
    std::string const scale = "scale";
    std::string const title = "name";
    queryBlocks(state, [&](std::string const& name) {
        nlohmann::json const& block = json.at(name);
        benchmark::DoNotOptimize(block.at(loops).get<int>());
        benchmark::DoNotOptimize(block.at(enabled).get<bool>());
        benchmark::DoNotOptimize(block.at(scale).get<float>());
        benchmark::DoNotOptimize(&block.at(title).get_ref<std::string const&>());
    });
}
BENCHMARK(script_queries_peer_nlohmann)->Arg(150)->Arg(3100)->Unit(benchmark::kMicrosecond);
#endif

} // namespace
