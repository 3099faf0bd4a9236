// BMP files of 24 bits a pixel.
#pragma once

#include <string>
#include <zel/image.h>

namespace Zel {

class BMPLoader {
public:
    virtual ~BMPLoader() = default;
    void load(Image& image, std::string const& fileName);
};

class BMPSaver {
public:
    virtual ~BMPSaver() = default;
    void save(Image const& image, std::string const& fileName);
};

} // namespace Zel
