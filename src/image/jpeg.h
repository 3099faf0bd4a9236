// JPEG files, coded by the host.
#pragma once

#include <string>
#include <zel/image.h>

namespace Zel {

class JPEGLoader {
public:
    virtual ~JPEGLoader() = default;
    void load(Image& image, std::string const& fileName);
};

class JPEGSaver {
public:
    virtual ~JPEGSaver() = default;
    void save(Image const& image, std::string const& fileName);
};

} // namespace Zel
