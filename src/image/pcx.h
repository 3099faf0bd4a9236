// PCX files of 256 colours.
#pragma once

#include <string>
#include <zel/image.h>

namespace Zel {

class PCXLoader {
public:
    virtual ~PCXLoader() = default;
    void load(Image& image, std::string const& fileName);
};

} // namespace Zel
