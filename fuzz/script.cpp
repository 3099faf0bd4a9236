// Scripts with includes: the input is a set of files, parted by bytes of value 0xFF, mounted as an archive
// under the names f0, f1 and so on; f0 is parsed.

#include "archive/archive_writer.h"
#include "host_file.h"

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <zel/zel.h>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::istringstream files(std::string(reinterpret_cast<char const*>(data), size));
    zel::ArchiveWriter writer;
    int count = 0;
    for (std::string text; std::getline(files, text, '\xFF'); ++count)
        writer.add("f" + std::to_string(count), text.empty() ? " " : text);
    if (count == 0)
        return 0;
    std::ostringstream archive;
    writer.write(archive);
    Zel::Archive const mounted(fuzz::hostFile(archive.str()));
    try {
        Zel::Script script("f0");
        for (int i = 0; i < script.getBlockCount(); ++i) {
            script.lock(i);
            script.getVariables();
            script.unlock();
        }
    } catch (Zel::Exception const&) {
    }
    return 0;
}
