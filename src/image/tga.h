// Truevision TGA files: grey, palette and true-colour pictures, raw or run-length encoded.
#pragma once

#include <string>
#include <zel/image.h>

namespace Zel {

class TGALoader {
public:
    virtual ~TGALoader() = default;
    void load(Image& image, std::string const& fileName);
};

class TGASaver {
public:
    virtual ~TGASaver() = default;
    void save(Image const& image, std::string const& fileName);
};

} // namespace Zel
