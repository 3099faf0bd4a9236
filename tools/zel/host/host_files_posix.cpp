// Files on POSIX hosts.

#include "host/host_files.h"

#include "command_line/failure.h"
#include "command_line/printable_text.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace zel {
namespace {

std::error_code lastError() { return {errno, std::generic_category()}; }

int descriptorOf(std::intptr_t handle) { return static_cast<int>(handle); }

[[noreturn]] void throwCannotRead(std::filesystem::path const& path, std::string const& reason) {
    throw Failure(kOperatingFailure, "cannot read " + printableName(path.string()) + ": " + reason);
}

std::error_code sync(int descriptor) {
    bool const isSynced = fsync(descriptor) == 0 || errno == EINVAL; // EINVAL: there is no disk below
    std::error_code const error = isSynced ? std::error_code() : lastError();
    close(descriptor);
    return error;
}

} // namespace

SourceFile::SourceFile(std::filesystem::path path)
    : m_path(std::move(path)), m_handle(open(m_path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)) {
    if (m_handle < 0)
        throwCannotRead(m_path, lastError().message());
    struct stat status = {};
    bool const isRegular = fstat(descriptorOf(m_handle), &status) == 0 && S_ISREG(status.st_mode);
    if (!isRegular) {
        close(descriptorOf(m_handle));
        throwCannotRead(m_path, "it is no regular file");
    }
}

SourceFile::~SourceFile() { close(descriptorOf(m_handle)); }

std::size_t SourceFile::read(char* buffer, std::size_t size) {
    ssize_t count = 0;
    do
        count = ::read(descriptorOf(m_handle), buffer, size);
    while (count < 0 && errno == EINTR);
    if (count < 0)
        throwCannotRead(m_path, lastError().message());
    return static_cast<std::size_t>(count);
}

bool namesKeepTheirBytes() { return true; }

std::error_code bringToDisk(std::filesystem::path const& file) {
    int const descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    return descriptor < 0 ? lastError() : sync(descriptor);
}

std::error_code replaceOnDisk(std::filesystem::path const& file, std::filesystem::path const& other) {
    if (std::rename(file.c_str(), other.c_str()) != 0)
        return lastError();
    std::filesystem::path const directory = other.has_parent_path() ? other.parent_path() : ".";
    int const descriptor = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    bool const mayNotBeRead = descriptor < 0; // its host brings it to the disk in its own time
    return mayNotBeRead ? std::error_code() : sync(descriptor);
}

} // namespace zel
