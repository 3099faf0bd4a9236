// JPEG files: the host decodes and encodes, this file moves the pixels.

#include "image/jpeg.h"

#include "image/dimensions.h"
#include "image/packed_pixels.h"
#include "platform/platform.h"

#include <algorithm>

namespace Zel {

/// Meant: the name goes to the host as it is. Archives and the data directory are not searched.
void JPEGLoader::load(Image& image, std::string const& fileName) {
    Image loaded; // the image stays as it is until all rows are there
    auto const takeRoom = [&](platform::JpegPicture const& picture) {
        loaded.resize(picture.width, picture.height);
        return reinterpret_cast<unsigned char*>(loaded.getData());
    };
    platform::JpegPicture picture;
    switch (platform::decodeJpeg(fileName, picture, takeRoom)) {
    case platform::JpegResult::Done:
        break;
    case platform::JpegResult::UnsupportedColorSpace:
        throw JPEGLoaderException_UnsupportedColorSpace(fileName.c_str());
    case platform::JpegResult::TooManyPixels:
        throw ImageException_IllegalDimensions(fileName.c_str(), picture.width, picture.height);
    case platform::JpegResult::Failed:
        throw JPEGLoaderException_LoadFailed();
    }

    std::size_t const pixels = pixelCount(picture.width, picture.height);
    auto const* const bytes = reinterpret_cast<unsigned char const*>(loaded.getData());
    if (picture.bytesPerPixel == kPackedPixelSize)
        unpackPixels(bytes, pixels, loaded.getData());
    if (picture.bytesPerPixel == 1 && pixels > 0) {
        // Meant: every grey value is written to the first pixel, so it keeps the last one. The others stay
        // black.
        unsigned char const grey = bytes[pixels - 1];
        std::fill_n(loaded.getData(), pixels, Color());
        loaded[0] = Color(grey, grey, grey, 255);
    }
    image.swap(loaded);
}

/// Meant: the picture is encoded, and no file is written.
void JPEGSaver::save(Image const& image, std::string const& /*fileName*/) {
    platform::JpegPicture picture;
    picture.width = image.getWidth();
    picture.height = image.getHeight();
    std::size_t const pixels = pixelCount(picture.width, picture.height);
    auto const packed = std::make_unique_for_overwrite<unsigned char[]>(pixels * kPackedPixelSize);
    packPixels(image.getData(), pixels, packed.get());
    if (!platform::encodeJpeg(picture, packed.get()))
        throw JPEGSaverException_SaveFailed();
}

} // namespace Zel
