// ZIP files, written by libzip.

#include "zip.h"

#ifdef BENCH_ZIP

#include <algorithm>
#include <cstdlib>
#include <zip.h>

namespace bench {
namespace {

void add(zip_t* file, std::string const& name, std::string const& content) {
    zip_source_t* const source = zip_source_buffer(file, content.data(), content.size(), 0);
    zip_int64_t const index = zip_file_add(file, zipEntry(name).c_str(), source, 0);
    if (index < 0)
        std::abort();
    zip_set_file_compression(file, static_cast<zip_uint64_t>(index), ZIP_CM_STORE, 0);
}

} // namespace

std::string zipFile(int count, std::size_t length) {
    std::string const path =
        (scratch() / ("archive" + std::to_string(count) + "-" + std::to_string(length) + ".zip")).string();
    if (std::filesystem::exists(path))
        return path;
    std::string const small = "x";
    std::string const large = content(length);
    zip_t* const file = zip_open(path.c_str(), ZIP_CREATE, nullptr);
    for (int i = 0; i < count; ++i)
        add(file, smallEntry(i), small);
    if (length > 0)
        add(file, kLargeEntry, large);
    if (zip_close(file) != 0)
        std::abort();
    return path;
}

std::string zipEntry(std::string name) {
    std::replace(name.begin(), name.end(), '\\', '/');
    return name;
}

} // namespace bench

#endif
