// Mounts an archive and reads every file of the directory it was packed from through it.
//
//   mount_and_read ARCHIVE DIRECTORY
//
// Each file is asked for under another spelling than its own (capitals, slashes), which the library takes for
// the same name, and compared with the loose file byte for byte. Ends with 0 when all are identical.

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>
#include <zel/zel.h>

namespace fs = std::filesystem;

namespace {

/// What the library writes to its verbose log: here the report of files that nobody has read yet.
int s_unaccessed = 0;

void printReport(char const* message) {
    constexpr int kShown = 3;
    bool const isFile = std::string(message).starts_with("Archived file");
    if (!isFile || ++s_unaccessed <= kShown)
        std::fputs(message, stdout);
    else if (s_unaccessed == kShown + 1)
        std::puts("...");
}

/// Prints the report; returns how many files it names.
int reportUnaccessed() {
    s_unaccessed = 0;
    Zel::Archive::dumpAllUnaccessedFiles();
    return s_unaccessed;
}

/// The same name as somebody else might have written it.
std::string otherSpelling(fs::path const& name) {
    std::string text = name.generic_string();
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char character) { return static_cast<char>(std::toupper(character)); });
    std::replace(text.begin(), text.end(), '/', '\\');
    return text;
}

/// The whole file, through the library: from the archive when one has it.
std::vector<char> readThroughLibrary(std::string const& name) {
    Zel::File file(name, Zel::File::READ);
    std::vector<char> content(static_cast<std::size_t>(file.getSize()));
    file.read(content.data(), file.getSize());
    return content;
}

std::vector<char> readLoose(fs::path const& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// The files below a directory, but for the empty ones: an archive holds none.
std::vector<fs::path> filesBelow(fs::path const& directory) {
    std::vector<fs::path> files;
    for (auto const& entry : fs::recursive_directory_iterator(directory)) {
        if (entry.is_regular_file() && entry.file_size() > 0)
            files.push_back(entry.path().lexically_relative(directory));
    }
    return files;
}

int mountAndRead(std::string const& archivePath, fs::path const& directory) {
    // Names of files are relative to the data directory. Taken from the current directory, host paths of both
    // kinds, full and relative, lead where they lead elsewhere.
    Zel::File::setDataDir(Zel::File::getCurrentDir());
    Zel::File::setDataDir(directory.string());

    Zel::Path fullPath(Zel::File::getCurrentDir());
    fullPath.append(archivePath);
    // The first archive to give a file is g_Archive: as long as it has none, it hides the last of the others.
    Zel::g_Archive->setFileName(fullPath.str());

    Zel::setVerboseCallback(printReport);
    int const before = reportUnaccessed();

    int different = 0;
    double bytes = 0;
    std::chrono::duration<double> reading{};
    std::vector<fs::path> const files = filesBelow(directory);
    for (fs::path const& file : files) {
        auto const start = std::chrono::steady_clock::now();
        std::vector<char> const content = readThroughLibrary(otherSpelling(file));
        reading += std::chrono::steady_clock::now() - start;

        bytes += static_cast<double>(content.size());
        if (content != readLoose(directory / file)) {
            std::printf("DIFFERENT: %s\n", file.string().c_str());
            ++different;
        }
    }

    int const after = reportUnaccessed();
    std::printf("%d files in the archive had not been read before, %d have not been read now.\n", before,
                after);
    std::printf("Read %zu files, %.0f bytes, at %.0f MB/s; the first as \"%s\".\n", files.size(), bytes,
                bytes / 1e6 / std::max(reading.count(), 1e-9),
                files.empty() ? "" : otherSpelling(files.front()).c_str());
    if (different > 0)
        std::printf("%d files are different.\n", different);
    else if (after > 0)
        std::printf("%d files were read from the disk, or not at all.\n", after);
    else
        std::puts("Every file is identical.");
    return different == 0 && after == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: mount_and_read ARCHIVE DIRECTORY\n", stderr);
        return 2;
    }
    try {
        Zel::Zel_Init const init; // before anything else of the library
        return mountAndRead(argv[1], argv[2]);
    } catch (Zel::Exception const& exception) {
        std::fprintf(stderr, "mount_and_read: %s\n", exception.getError());
    } catch (std::exception const& exception) {
        std::fprintf(stderr, "mount_and_read: %s\n", exception.what());
    }
    return 3;
}
