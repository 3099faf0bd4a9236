// Text files: the first half of the input tells what is read, a byte each; the rest is the text.

#include "host_file.h"

#include <cstddef>
#include <cstdint>
#include <zel/zel.h>

namespace {

template <class Value>
void read(Zel::TextFile& file) {
    Value value{};
    file >> value;
}

void readSome(Zel::TextFile& file, std::uint8_t operation) {
    switch (operation % 11) {
    case 0:
        return read<bool>(file);
    case 1:
        return read<char>(file);
    case 2:
        return read<short>(file);
    case 3:
        return read<int>(file);
    case 4:
        return read<unsigned long>(file);
    case 5:
        return read<float>(file);
    case 6:
        return read<std::string>(file);
    case 7:
        return read<Zel::Vector3Template<float>>(file);
    case 8:
        return read<Zel::FColor>(file);
    case 9:
        return file.setPosition(operation);
    default: {
        std::string line;
        file.readLine(line);
    }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::size_t const operations = size / 2;
    std::string const name =
        fuzz::hostFile({reinterpret_cast<char const*>(data) + operations, size - operations});
    Zel::TextFile file(name, Zel::File::READ_TEXT);
    for (std::size_t i = 0; i < operations; ++i) {
        try {
            readSome(file, data[i]);
        } catch (Zel::FileException const&) {
        }
    }
    return 0;
}
