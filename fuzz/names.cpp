// Paths and names: each line of the input is appended to a path and taken apart.

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <zel/zel.h>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::istringstream lines(std::string(reinterpret_cast<char const*>(data), size));
    Zel::Path path;
    for (std::string line; std::getline(lines, line);) {
        try {
            path.append(line);
        } catch (Zel::FileException_DirectoryNotFound const&) {
        }
        Zel::File::stripPath(line);
        Zel::File::stripExtension(line);
        Zel::File::getExtension(line);
        Zel::File::getFileDir(line);
        try {
            Zel::File::getTempName(line);
        } catch (Zel::FileException_GetTempNameFailed const&) {
        }
    }
    return 0;
}
