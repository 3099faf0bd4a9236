// Folders, names and clocks of the machine on POSIX hosts.

#include "platform/path_parts.h"
#include "platform/platform.h"
#include "platform/posix/paths.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Zel::platform {
namespace {

std::string environment(char const* name) {
    char const* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string withoutFinalSlash(std::string path) {
    if (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
    return path;
}

/// Empty when there is no working directory that a relative path could lead from.
std::string absolute(std::string const& hostPath) {
    std::error_code error;
    return withoutFinalSlash(std::filesystem::absolute(hostPath, error).lexically_normal().string());
}

/// The machine-wide data folder, as the host is told it; empty when nothing tells it.
std::string chosenDataFolder() {
    if (std::string chosen = environment("ZEL_COMMON_DATA"); !chosen.empty())
        return chosen;
    if (geteuid() == 0)
        return "/var/lib";
    if (std::string state = environment("XDG_STATE_HOME"); !state.empty())
        return state;
    std::string const home = environment("HOME");
    return home.empty() ? "" : home + "/.local/state";
}

/// Makes the data folder itself and what is missing above it.
bool makeDataFolder(std::string const& hostPath) {
    if (matchIgnoringCase(hostPath))
        return true;
    std::size_t const separator = hostPath.find_last_of('/');
    if (separator != std::string::npos && separator > 0 && !makeDataFolder(hostPath.substr(0, separator)))
        return false;
    auto const place = placeIgnoringCase(hostPath);
    return place && (mkdir(place->c_str(), S_IRWXU | S_IRWXG | S_IRWXO) == 0 || errno == EEXIST);
}

/// Makes the directories of a path below the data folder that are missing, each from the one above.
bool makeBelow(std::string const& dataFolder, std::string const& subFolder) {
    Tree tree(dataFolder, Tree::Private);
    for (PathParts parts(subFolder); parts.next();)
        if (tree.makeDirectory(std::string(parts.upToHere())) == Making::Failed)
            return false;
    return true;
}

constexpr std::uint64_t kNanosecondsPerSecond = 1'000'000'000;

template <std::uint64_t unitsPerSecond>
std::uint64_t timeOf(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * unitsPerSecond +
           static_cast<std::uint64_t>(now.tv_nsec) / (kNanosecondsPerSecond / unitsPerSecond);
}

} // namespace

mode_t directoryMode(std::string const& hostPath) {
    std::string const chosen = chosenDataFolder();
    std::string const root = chosen.empty() ? chosen : absolute(chosen);
    bool const isBelow = !root.empty() && absolute(hostPath).starts_with(root == "/" ? root : root + "/");
    return isBelow ? S_IRWXU : S_IRWXU | S_IRWXG | S_IRWXO;
}

std::optional<std::string> startupDirectory() {
    char program[PATH_MAX];
    ssize_t const length = readlink("/proc/self/exe", program, sizeof program);
    if (length <= 0 || static_cast<std::size_t>(length) == sizeof program)
        return std::nullopt;
    auto const path = fromHostPath(std::string(program, static_cast<std::size_t>(length)));
    return path ? std::optional(path->substr(0, path->rfind('\\') + 1)) : std::nullopt;
}

std::optional<std::string> commonDataFolder(std::string const& subFolder, FolderQuery query) {
    std::string const chosen = chosenDataFolder();
    std::string const hostPath = chosen.empty() ? chosen : absolute(chosen);
    auto const folder = hostPath.empty() ? std::nullopt : fromHostPath(hostPath);
    if (!folder)
        return std::nullopt;
    std::string const below = subFolder.substr(0, subFolder.find_last_not_of('\\') + 1);
    if (query == FolderQuery::Create && !(makeDataFolder(hostPath) && makeBelow(*folder, below)))
        return std::nullopt;
    return *folder + (folder->ends_with('\\') ? "" : "\\") + below;
}

std::optional<std::string> computerName() {
    char name[HOST_NAME_MAX + 1];
    if (gethostname(name, sizeof name) != 0)
        return std::nullopt;
    return name;
}

std::uint64_t systemTime() {
    constexpr std::uint64_t kUnitsFrom1601To1970 = 116'444'736'000'000'000;
    return timeOf<10'000'000>(CLOCK_REALTIME) + kUnitsFrom1601To1970;
}

std::uint32_t milliseconds() { return static_cast<std::uint32_t>(timeOf<1000>(CLOCK_MONOTONIC)); }

bool beginMillisecondTicks() { return true; } // the clock is finer than that at all times
void endMillisecondTicks() {}

std::uint64_t performanceCounter() { return timeOf<kNanosecondsPerSecond>(CLOCK_MONOTONIC); }

std::optional<std::int64_t> performanceFrequency() { return kNanosecondsPerSecond; }

/// Pages of 2 MiB instead of 4 KiB, where the host has some left.
void expectUse(void* memory, std::size_t size) {
#ifdef MADV_HUGEPAGE
    constexpr std::size_t kLargePage = std::size_t{2} << 20;
    if (size < kLargePage)
        return;
    auto const page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    auto const begin = reinterpret_cast<std::uintptr_t>(memory);
    std::uintptr_t const skipped = (page - begin % page) % page;
    std::uintptr_t const whole = (size - skipped) / page * page;
    madvise(static_cast<char*>(memory) + skipped, whole, MADV_HUGEPAGE);
#endif
}

} // namespace Zel::platform
