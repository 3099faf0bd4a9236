// What the program asks of the host about files, beyond the standard library; one file a platform.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <system_error>

namespace zel {

/// A regular file, opened to be read once from start to end. Opening what is no regular file fails at once:
/// it does not wait for somebody who writes into a FIFO.
class SourceFile {
public:
    /// Throws Failure, naming the file.
    explicit SourceFile(std::filesystem::path path);
    SourceFile(SourceFile const&) = delete;
    SourceFile& operator=(SourceFile const&) = delete;
    ~SourceFile();

    /// Reads up to `size` bytes and returns how many; 0 at the end. Throws Failure, naming the file.
    std::size_t read(char* buffer, std::size_t size);

private:
    std::filesystem::path m_path;
    std::intptr_t m_handle;
};

/// Whether a name that the standard library tells has the same bytes for the host's calls. On Windows they
/// are UTF-8 for the one and of the process's code page for the others: the same by the manifest of `zel`,
/// from Windows 10 1903 on.
bool namesKeepTheirBytes();

/// Returns when the bytes of a file that is closed are on the disk.
std::error_code bringToDisk(std::filesystem::path const& file);

/// Renames a file over another and returns when that is on the disk. Whatever happens meanwhile, the other is
/// there afterwards, the older one or the new one.
std::error_code replaceOnDisk(std::filesystem::path const& file, std::filesystem::path const& other);

} // namespace zel
