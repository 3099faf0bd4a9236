// Which codec takes which file name.

#include "image/bmp.h"
#include "image/codec.h"
#include "image/jpeg.h"
#include "image/pcx.h"
#include "image/tga.h"

#include <array>

namespace Zel {
namespace {

template <ImageLoader Loader>
void loadWith(Image& image, std::string const& fileName) {
    Loader().load(image, fileName);
}

template <ImageSaver Saver>
void saveWith(Image const& image, std::string const& fileName) {
    Saver().save(image, fileName);
}

struct Format {
    char const* extension;
    void (*load)(Image& image, std::string const& fileName);
    void (*save)(Image const& image, std::string const& fileName); ///< null: there is no writer
};

/// The first that matches is taken.
constexpr std::array<Format, 4> kFormats{{
    {".jpg", loadWith<JPEGLoader>, saveWith<JPEGSaver>},
    {".tga", loadWith<TGALoader>, saveWith<TGASaver>},
    {".pcx", loadWith<PCXLoader>, nullptr},
    {".bmp", loadWith<BMPLoader>, saveWith<BMPSaver>},
}};

/// Meant: only the first occurrence counts, so "a.bmp.bmp" is not a BMP file. Meant: "not found" (the largest
/// unsigned number) equals the length less 4 of a name of three characters, which so matches anything.
bool hasExtension(std::string const& fileName, char const* extension) {
    return fileName.find(extension) == fileName.size() - 4;
}

} // namespace

void Image::load(std::string const& fileName) {
    for (Format const& format : kFormats)
        if (hasExtension(fileName, format.extension))
            return format.load(*this, fileName);
    throw ImageException_UnknownImageFormat(fileName.c_str());
}

void Image::save(std::string const& fileName) const {
    for (Format const& format : kFormats)
        if (format.save != nullptr && hasExtension(fileName, format.extension))
            return format.save(*this, fileName);
    throw ImageException_UnknownImageFormat(fileName.c_str());
}

} // namespace Zel
