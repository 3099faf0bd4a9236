// The shape of every image codec: constructed for one call, loads into an image or saves from one. A new
// format is one more of these and one more line in formats.cpp.
#pragma once

#include <string>
#include <zel/image.h>

namespace Zel {

class ImageLoader {
public:
    virtual ~ImageLoader() = default;
    /// Replaces the image by the picture in the file.
    virtual void load(Image& image, std::string const& fileName) = 0;
};

class ImageSaver {
public:
    virtual ~ImageSaver() = default;
    /// Writes the file, and tells when the disk refuses it.
    virtual void save(Image const& image, std::string const& fileName) = 0;
};

} // namespace Zel
