// Which codec takes which file name.
//
// A codec is a class for each direction, made for one call: a loader's `load` replaces the image by the
// picture in the file, a saver's `save` writes the file and throws when the disk refuses it. A new format is
// one more file with these and one more line of the table.

#include "image/bmp.h"
#include "image/jpeg.h"
#include "image/pcx.h"
#include "image/tga.h"

#include <array>

namespace Zel {
namespace {

template <class Loader>
void loadWith(Image& image, std::string const& fileName) {
    Loader().load(image, fileName);
}

template <class Saver>
void saveWith(Image const& image, std::string const& fileName) {
    Saver().save(image, fileName);
}

struct Format {
    char const* extension;
    void (*load)(Image& image, std::string const& fileName);
    void (*save)(Image const& image, std::string const& fileName); ///< null: there is no writer
};

/// In the order in which they are tried.
constexpr std::array<Format, 4> kFormats{{
    {".jpg", loadWith<JPEGLoader>, saveWith<JPEGSaver>},
    {".tga", loadWith<TGALoader>, saveWith<TGASaver>},
    {".pcx", loadWith<PCXLoader>, nullptr},
    {".bmp", loadWith<BMPLoader>, saveWith<BMPSaver>},
}};

/// Meant: only the first occurrence counts, so "a.bmp.bmp" is no BMP file. Meant: a name of three characters,
/// like "abc", matches every extension: its length less 4 is the largest unsigned number, which is also what
/// `find` returns for "not found".
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
