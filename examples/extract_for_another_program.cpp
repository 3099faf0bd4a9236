// Hands an archived file to another program, which needs a real path.
//
//   extract_for_another_program ARCHIVE DIRECTORY NAME COMMAND
//
// DIRECTORY is the one that the archive was packed from. COMMAND is run with the path of a temporary copy of
// the file behind it; afterwards, nothing is left of that.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <zel/zel.h>

namespace {

/// Removes the temporary copies, however the work ends.
struct Cleanup {
    Cleanup() = default;
    Cleanup(Cleanup const&) = delete;
    Cleanup& operator=(Cleanup const&) = delete;
    ~Cleanup() { Zel::File::cleanup(); }
};

/// A path of the library's as other programs take it: on hosts with slashes the drive "z:" is the root.
std::string hostPath(std::string path) {
    if (std::filesystem::path::preferred_separator == '/') {
        path.erase(0, 2);
        std::replace(path.begin(), path.end(), '\\', '/');
    }
    return path;
}

int handOver(std::string const& name, std::string const& command) {
    Cleanup const cleanup;
    std::string copy = name;
    if (!Zel::File::extractFile(copy)) { // on success the name becomes the path
        std::fprintf(stderr, "no archive has %s\n", name.c_str());
        return 1;
    }
    std::string const line = command + " \"" + hostPath(copy) + "\"";
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
    // The command is the user's own, for the shell.
    bool const done = std::system(line.c_str()) == 0; // NOLINT(cert-env33-c,concurrency-mt-unsafe)
    return done ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        std::fputs("usage: extract_for_another_program ARCHIVE DIRECTORY NAME COMMAND\n", stderr);
        return 2;
    }
    try {
        Zel::Zel_Init const init;
        Zel::Path fullPath(Zel::File::getCurrentDir());
        fullPath.append(argv[1]);
        Zel::File::setDataDir(Zel::File::getCurrentDir());
        Zel::File::setDataDir(argv[2]);
        Zel::g_Archive->setFileName(fullPath.str());
        return handOver(argv[3], argv[4]);
    } catch (Zel::Exception const& exception) {
        std::fprintf(stderr, "extract_for_another_program: %s\n", exception.getError());
        return 3;
    }
}
