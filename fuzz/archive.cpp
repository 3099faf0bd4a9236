// Archives: the input is the unscrambled table and what follows it; its length and checksum are made right,
// so that the walk over the records is what is tried. Every entry that loads is opened through File.

#include "archive/table.h"
#include "host_file.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>
#include <zel/zel.h>

namespace {

void appendNumber(std::string& bytes, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(value >> shift & 0xFF);
}

std::string archiveWithTable(std::string table, std::string const& rest) {
    std::string checksum;
    appendNumber(checksum, static_cast<std::uint32_t>(Zel::crc32(table.data(), table.size())));
    std::string archive;
    appendNumber(archive, 44);
    appendNumber(archive, static_cast<std::uint32_t>(table.size()));
    Zel::Archive::decrypt(table.data(), static_cast<int>(table.size()));
    Zel::Archive::decrypt(checksum.data(), 4);
    return archive + table + checksum + rest;
}

/// Throws what loading the archive would.
void readTable(std::string const& archive) {
    std::size_t at = 0;
    Zel::EntryTable const table(
        archive.size(),
        [&](void* to, std::size_t count) {
            std::copy_n(archive.begin() + static_cast<std::ptrdiff_t>(at), count, static_cast<char*>(to));
            at += count;
        },
        "fuzz");
}

void openEveryEntry(Zel::Archive const& archive) {
    std::string key;
    Zel::Archive::FileInfo info;
    for (bool found = archive.findFirstSubstring("", key, info); found;
         found = archive.findNextSubstring("", key, key, info)) {
        try {
            Zel::MemoryFile const file(key);
        } catch (Zel::FileException const&) { // not to be had by its name, or damaged
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size == 0)
        return 0;
    std::string const input(reinterpret_cast<char const*>(data) + 1, size - 1);
    std::size_t const tableLength = input.size() * data[0] / 255; // the first byte tells how much is table
    std::string const bytes = archiveWithTable(input.substr(0, tableLength), input.substr(tableLength));
    try {
        readTable(bytes); // without a file, which most inputs are not worth
        Zel::Archive const archive(fuzz::hostFile(bytes));
        openEveryEntry(archive);
    } catch (Zel::Exception const&) {
    }
    return 0;
}
