// JPEG files: the host decodes and encodes, this file moves the pixels.

#include "image/jpeg.h"

#include "image/dimensions.h"
#include "image/packed_pixels.h"
#include "platform/platform.h"

namespace Zel {

/// Meant: the name goes to the host as it is. Archives and the data directory are not searched.
void JPEGLoader::load(Image& image, std::string const& fileName) {
    platform::JpegPicture picture;
    switch (platform::decodeJpeg(fileName, picture)) {
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
    image.resize(picture.width, picture.height);
    if (pixels == 0)
        return;
    if (picture.isGrey) {
        // Meant: every grey value is written to the first pixel, so it keeps the last one. The others stay
        // black.
        unsigned char const grey = picture.bytes[pixels - 1];
        image[0] = Color(grey, grey, grey, 255);
    } else {
        unpackPixels(picture.bytes.get(), pixels, image.getData());
    }
}

/// Meant: the picture is encoded, and no file is written.
void JPEGSaver::save(Image const& image, std::string const& /*fileName*/) {
    platform::JpegPicture picture;
    picture.width = image.getWidth();
    picture.height = image.getHeight();
    std::size_t const pixels = pixelCount(picture.width, picture.height);
    if (pixels > 0)
        picture.allocate();
    packPixels(image.getData(), pixels, picture.bytes.get());
    if (!platform::encodeJpeg(picture))
        throw JPEGSaverException_SaveFailed();
}

} // namespace Zel
