// Reading tokens from a text file, loose and archived, beside the streams of the standard library and fscanf.

#include "scratch.h"

#include "archive/archive_writer.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <fstream>
#include <random>
#include <zel/zel.h>

namespace {

constexpr int kTokens = 100'000;

/// Words of two to ten letters, eight in a line.
std::string words() {
    std::minstd_rand random;
    std::string text;
    for (int i = 0; i < kTokens; ++i) {
        for (auto length = 2 + random() % 9; length > 0; --length)
            text += static_cast<char>('a' + random() % 26);
        text += i % 8 == 7 ? '\n' : ' ';
    }
    return text;
}

/// Numbers between -1000 and 1000 with six decimals, three in a line.
std::string floats() {
    std::minstd_rand random;
    std::string text;
    for (int i = 0; i < kTokens; ++i)
        text += std::to_string((static_cast<double>(random() % 2'000'000) - 1e6) / 1000) +
                (i % 3 == 2 ? '\n' : ' ');
    return text;
}

template <class Value>
std::string content();
template <>
std::string content<std::string>() {
    return words();
}
template <>
std::string content<float>() {
    return floats();
}

/// Writes the file, once, and returns its path.
template <class Value>
std::filesystem::path const& textFile() {
    static std::filesystem::path const s_path = [] {
        auto path = bench::scratch() / (sizeof(Value) == sizeof(float) ? "floats.txt" : "words.txt");
        std::ofstream(path, std::ios::binary) << content<Value>();
        return path;
    }();
    return s_path;
}

template <class Value>
void readTokens(std::string const& name) {
    Zel::TextFile file(name, Zel::File::READ_TEXT);
    Value value{};
    while (!file.endReached()) {
        file >> value;
        benchmark::DoNotOptimize(value);
    }
}

template <class Value>
void tokens(benchmark::State& state) {
    std::string const name = textFile<Value>().filename().string();
    for ([[maybe_unused]] auto _ : state)
        readTokens<Value>(name);
    state.SetItemsProcessed(state.iterations() * kTokens);
}
BENCHMARK(tokens<std::string>)->Name("text_words/loose");
BENCHMARK(tokens<float>)->Name("text_floats/loose");

template <class Value>
void archivedTokens(benchmark::State& state) {
    auto const packed = textFile<Value>().string() + ".bva";
    {
        zel::ArchiveWriter writer;
        writer.add("packed.txt", content<Value>());
        std::ofstream stream(packed, std::ios::binary);
        writer.write(stream);
    }
    Zel::Path path(Zel::File::getCurrentDir());
    path.append(packed);
    Zel::Archive const archive(path.str());
    for ([[maybe_unused]] auto _ : state)
        readTokens<Value>("packed.txt");
    state.SetItemsProcessed(state.iterations() * kTokens);
}
BENCHMARK(archivedTokens<std::string>)->Name("text_words/archived");
BENCHMARK(archivedTokens<float>)->Name("text_floats/archived");

template <class Value>
void streamTokens(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        std::ifstream stream(textFile<Value>(), std::ios::binary);
        for (Value value{}; stream >> value;)
            benchmark::DoNotOptimize(value);
    }
    state.SetItemsProcessed(state.iterations() * kTokens);
}
BENCHMARK(streamTokens<std::string>)->Name("text_words_peer_ifstream");
BENCHMARK(streamTokens<float>)->Name("text_floats_peer_ifstream");

void text_words_peer_fscanf(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        std::FILE* const file = std::fopen(textFile<std::string>().string().c_str(), "rb");
        std::array<char, 64> word{};
        while (std::fscanf(file, "%63s", word.data()) == 1) // NOLINT(cert-err34-c): a word is no number
            benchmark::DoNotOptimize(word);
        std::fclose(file);
    }
    state.SetItemsProcessed(state.iterations() * kTokens);
}
BENCHMARK(text_words_peer_fscanf);

void text_floats_peer_fscanf(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        std::FILE* const file = std::fopen(textFile<float>().string().c_str(), "rb");
        float value = 0;
        while (std::fscanf(file, "%f", &value) == 1) // NOLINT(cert-err34-c): so it is usually done
            benchmark::DoNotOptimize(value);
        std::fclose(file);
    }
    state.SetItemsProcessed(state.iterations() * kTokens);
}
BENCHMARK(text_floats_peer_fscanf);

} // namespace
