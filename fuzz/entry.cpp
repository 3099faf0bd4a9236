// One archived entry through its streams. The first half of the input tells the operations, a byte each with
// the next one as its argument; the rest is the entry.

#include "archive/archive_writer.h"
#include "host_file.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <zel/zel.h>

namespace {

void operate(Zel::BinaryFile& file, std::uint8_t operation, std::uint8_t argument) {
    std::array<char, 256> buffer;
    int number = 0;
    short half = 0;
    std::string text;
    switch (operation % 6) {
    case 0:
        file.read(buffer.data(), argument);
        break;
    case 1:
        file.setPosition(argument - 16);
        break;
    case 2:
        file >> number;
        break;
    case 3:
        file >> half;
        break;
    case 4:
        file >> text;
        break;
    default:
        file.write(buffer.data(), argument);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::size_t const operations = size / 2;
    zel::ArchiveWriter writer;
    writer.add("entry",
               std::string(reinterpret_cast<char const*>(data) + operations, size - operations) + " ");
    std::ostringstream archive;
    writer.write(archive);
    Zel::Archive const mounted(fuzz::hostFile(archive.str()));
    Zel::BinaryFile file("entry", Zel::File::READ, Zel::BinaryFile::BYTEORDER_SWAPPED);
    for (std::size_t i = 0; i + 1 < operations; i += 2) {
        try {
            operate(file, data[i], data[i + 1]);
        } catch (Zel::FileException const&) {
        }
    }
    return 0;
}
