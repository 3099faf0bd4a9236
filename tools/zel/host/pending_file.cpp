// Writing beside the target, and renaming at the end.

#include "host/pending_file.h"

#include "command_line/failure.h"
#include "command_line/printable_text.h"
#include "host/host_files.h"

#include <cerrno>
#include <chrono>
#include <system_error>
#include <utility>

namespace zel {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void throwCannotWrite(fs::path const& target, std::string const& reason) {
    throw Failure(kOperatingFailure, "cannot write " + printableName(target.string()) + ": " + reason);
}

[[noreturn]] void throwCannotWrite(fs::path const& target, std::error_code reason) {
    throwCannotWrite(target, reason.message());
}

void requireSuccess(fs::path const& target, std::error_code error) {
    if (error)
        throwCannotWrite(target, error);
}

std::error_code lastError() { return {errno, std::generic_category()}; }

/// A name beside the target that nothing has yet: a short one, as the target's may be as long as the host
/// allows.
fs::path temporaryBeside(fs::path const& target) {
    auto number = std::chrono::steady_clock::now().time_since_epoch().count();
    fs::path candidate;
    do {
        candidate = target.parent_path() / (".zel-" + std::to_string(number++));
        candidate += target.extension();
    } while (fs::exists(candidate));
    return candidate;
}

} // namespace

fs::path outputFile(fs::path path) {
    std::error_code error;
    fs::file_status const status = fs::status(path, error);
    if (status.type() == fs::file_type::none) // links in a circle, for one
        throwCannotWrite(path, error);
    if (fs::exists(status) && !fs::is_regular_file(status))
        throwCannotWrite(path, "it is no regular file");
    while (fs::is_symlink(fs::symlink_status(path, error)))
        path = path.parent_path() / fs::read_symlink(path);
    return path;
}

PendingFile::PendingFile(fs::path target)
    : m_target(std::move(target)), m_temporary(temporaryBeside(m_target)), m_removed(m_temporary) {
    if (fs::is_directory(m_target))
        throwCannotWrite(m_target, std::make_error_code(std::errc::is_a_directory));
    m_stream.open(m_temporary, std::ios::binary | std::ios::trunc);
    if (!m_stream)
        throwCannotWrite(m_target, lastError());
}

PendingFile::~PendingFile() {
    m_stream.close();
    std::error_code ignored; // after a commit there is nothing left to remove
    fs::remove(m_temporary, ignored);
}

void PendingFile::commit() {
    m_stream.close();
    if (!m_stream)
        throwCannotWrite(m_target, lastError());
    requireSuccess(m_target, bringToDisk(m_temporary));
    requireSuccess(m_target, replaceOnDisk(m_temporary, m_target));
}

} // namespace zel
