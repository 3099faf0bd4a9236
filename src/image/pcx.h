// PCX files of 256 colours.
#pragma once

#include "image/codec.h"

namespace Zel {

class PCXLoader : public ImageLoader {
public:
    void load(Image& image, std::string const& fileName) override;
};

} // namespace Zel
