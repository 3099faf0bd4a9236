// The messages of the exceptions of images: each stands here and nowhere else.

#include <zel/image.h>

namespace Zel {

ImageException_IllegalDimensions::ImageException_IllegalDimensions(char const* fileName, int width,
                                                                   int height) {
    setError("Image \"%s\" has illegal dimensions %dx%d", fileName, width, height);
}

// The exceptions whose message names the file and nothing else.
#define ZEL_DEFINE_EXCEPTION(Name, message) \
    Name::Name(char const* fileName) { setError(message, fileName); }

ZEL_DEFINE_EXCEPTION(ImageException_UnknownImageFormat, "Unknown image format \"%s\"")

ZEL_DEFINE_EXCEPTION(BMPLoaderException_NotBMPFile, "File %s does not contain a BMP image.")
ZEL_DEFINE_EXCEPTION(BMPLoaderException_UnsupportedColorDepth, "File %s has unsupported color depth.")

ZEL_DEFINE_EXCEPTION(TGALoaderException_MonoNot8Bit, "Mono image \"%s\" is not 8 bits/pixel")
ZEL_DEFINE_EXCEPTION(TGALoaderException_TruecolorNot24Or32Bit,
                     "Truecolor image \"%s\" is not 24/32 bits/pixel")
ZEL_DEFINE_EXCEPTION(TGALoaderException_NoPalette, "Colormapped image \"%s\" has no palette")
ZEL_DEFINE_EXCEPTION(TGALoaderException_TooManyColors, "Colormapped image \"%s\" has too many colors")
ZEL_DEFINE_EXCEPTION(TGALoaderException_BadColormapStart, "Bad colormap start value in \"%s\"")
ZEL_DEFINE_EXCEPTION(TGALoaderException_BadColormapDepth, "Bad colormap depth value in \"%s\"")

ZEL_DEFINE_EXCEPTION(PCXLoaderException_NotPCXFile, "File %s does not contain a pcx image.")
ZEL_DEFINE_EXCEPTION(PCXLoaderException_UnsupportedVersion, "Unsupported pcx version in %s.")
ZEL_DEFINE_EXCEPTION(PCXLoaderException_NoEncoding, "Pcx file %s is not encoded.")
ZEL_DEFINE_EXCEPTION(PCXLoaderException_NoPalette, "Pcx file %s has no palette.")

ZEL_DEFINE_EXCEPTION(JPEGLoaderException_UnsupportedColorSpace, "Unsupported color space in \"%s\"")

} // namespace Zel
