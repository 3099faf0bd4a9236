// JPEG files, coded by the host.
#pragma once

#include "image/codec.h"

namespace Zel {

class JPEGLoader : public ImageLoader {
public:
    void load(Image& image, std::string const& fileName) override;
};

class JPEGSaver : public ImageSaver {
public:
    void save(Image const& image, std::string const& fileName) override;
};

} // namespace Zel
