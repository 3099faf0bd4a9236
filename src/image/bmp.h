// BMP files of 24 bits a pixel.
#pragma once

#include "image/codec.h"

namespace Zel {

class BMPLoader : public ImageLoader {
public:
    void load(Image& image, std::string const& fileName) override;
};

class BMPSaver : public ImageSaver {
public:
    void save(Image const& image, std::string const& fileName) override;
};

} // namespace Zel
