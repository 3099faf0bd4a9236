// Files on Windows.

#include "host/host_files.h"

#include "command_line/failure.h"
#include "command_line/printable_text.h"

#include <algorithm>
#include <utility>
#include <windows.h>

namespace zel {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::error_code lastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

HANDLE handleOf(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

std::intptr_t openExisting(std::filesystem::path const& path, DWORD access) {
    return reinterpret_cast<std::intptr_t>(
        CreateFileW(path.c_str(), access, kShareAll, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool isOpen(std::intptr_t handle) { return handleOf(handle) != INVALID_HANDLE_VALUE; }

[[noreturn]] void throwCannotRead(std::filesystem::path const& path, std::string const& reason) {
    throw Failure(kOperatingFailure, "cannot read " + printableName(path.string()) + ": " + reason);
}

} // namespace

SourceFile::SourceFile(std::filesystem::path path)
    : m_path(std::move(path)), m_handle(openExisting(m_path, GENERIC_READ)) {
    if (!isOpen(m_handle))
        throwCannotRead(m_path, lastError().message());
    if (GetFileType(handleOf(m_handle)) != FILE_TYPE_DISK) {
        CloseHandle(handleOf(m_handle));
        throwCannotRead(m_path, "it is no regular file");
    }
}

SourceFile::~SourceFile() { CloseHandle(handleOf(m_handle)); }

std::size_t SourceFile::read(char* buffer, std::size_t size) {
    constexpr std::size_t kMost = 1U << 30U;
    DWORD count = 0;
    if (ReadFile(handleOf(m_handle), buffer, static_cast<DWORD>(std::min(size, kMost)), &count, nullptr) == 0)
        throwCannotRead(m_path, lastError().message());
    return count;
}

bool namesKeepTheirBytes() { return GetACP() == CP_UTF8; }

std::error_code bringToDisk(std::filesystem::path const& file) {
    std::intptr_t const handle = openExisting(file, GENERIC_WRITE);
    if (!isOpen(handle))
        return lastError();
    std::error_code const error = FlushFileBuffers(handleOf(handle)) != 0 ? std::error_code() : lastError();
    CloseHandle(handleOf(handle));
    return error;
}

std::error_code replaceOnDisk(std::filesystem::path const& file, std::filesystem::path const& other) {
    DWORD const flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    return MoveFileExW(file.c_str(), other.c_str(), flags) != 0 ? std::error_code() : lastError();
}

} // namespace zel
