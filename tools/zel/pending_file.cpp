// Writing beside the target, and renaming at the end.

#include "pending_file.h"

#include "failure.h"
#include "printable_text.h"

#include <cerrno>
#include <chrono>
#include <system_error>
#include <utility>

namespace zel {
namespace {

[[noreturn]] void throwCannotWrite(std::filesystem::path const& target, std::error_code reason) {
    throw Failure(kOperatingFailure, "cannot write " + printableName(target.string()) + ": " + reason.message());
}

std::error_code lastError() { return {errno, std::generic_category()}; }

/// A name beside the target that nothing has yet.
std::filesystem::path temporaryBeside(std::filesystem::path const& target) {
    auto number = std::chrono::steady_clock::now().time_since_epoch().count();
    std::filesystem::path candidate;
    do {
        candidate = target;
        candidate.replace_extension(".tmp" + std::to_string(number++));
        candidate += target.extension();
    } while (std::filesystem::exists(candidate));
    return candidate;
}

} // namespace

PendingFile::PendingFile(std::filesystem::path target)
    : m_target(std::move(target)), m_temporary(temporaryBeside(m_target)) {
    if (std::filesystem::is_directory(m_target))
        throwCannotWrite(m_target, std::make_error_code(std::errc::is_a_directory));
    m_stream.open(m_temporary, std::ios::binary | std::ios::trunc);
    if (!m_stream)
        throwCannotWrite(m_target, lastError());
}

PendingFile::~PendingFile() {
    m_stream.close();
    std::error_code ignored; // after a commit there is nothing left to remove
    std::filesystem::remove(m_temporary, ignored);
}

void PendingFile::commit() {
    m_stream.close();
    if (!m_stream)
        throwCannotWrite(m_target, lastError());
    std::error_code error;
    std::filesystem::rename(m_temporary, m_target, error);
    if (error)
        throwCannotWrite(m_target, error);
}

} // namespace zel
