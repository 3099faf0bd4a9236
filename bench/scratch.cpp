// What the benchmarks share: files and archives, made once and removed at the end.

#include "scratch.h"

#include "archive/archive_writer.h"

#include <fstream>
#include <random>
#include <zel/zel.h>

namespace bench {

namespace fs = std::filesystem;

namespace {

struct Scratch {
    fs::path directory =
        fs::temp_directory_path() / ("bvsystem-bench-" + std::to_string(std::random_device()()));

    Scratch() {
        fs::create_directories(directory);
        Zel::File::setDataDir(Zel::File::getCurrentDir());
        Zel::File::setDataDir(directory.string());
    }
    ~Scratch() { fs::remove_all(directory); }
};

} // namespace

fs::path const& scratch() {
    static Scratch const s_scratch;
    return s_scratch.directory;
}

std::string content(std::size_t length) {
    std::string text(length, '\0');
    std::minstd_rand random;
    for (char& character : text)
        character = static_cast<char>(random());
    return text;
}

std::string looseFile(std::size_t length) {
    std::string name = "loose" + std::to_string(length);
    if (!fs::exists(scratch() / name))
        std::ofstream(scratch() / name, std::ios::binary) << content(length);
    return name;
}

std::string archive(int count, std::size_t length) {
    fs::path const path =
        scratch() / ("archive" + std::to_string(count) + "-" + std::to_string(length) + ".bva");
    if (!fs::exists(path)) {
        zel::ArchiveWriter writer;
        for (int i = 0; i < count; ++i)
            writer.add(smallEntry(i), "x");
        if (length > 0)
            writer.add(kLargeEntry, content(length));
        std::ofstream stream(path, std::ios::binary);
        writer.write(stream);
    }
    Zel::Path full(Zel::File::getCurrentDir());
    full.append(path.string());
    return full.str();
}

std::string smallEntry(int index) {
    std::string const digits = std::to_string(10'000'000 + index).substr(1);
    return "dir" + digits.substr(0, 3) + "\\file" + digits + ".bin";
}

} // namespace bench
