// Images.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <zel/api.h>
#include <zel/color.h>
#include <zel/exception.h>
#include <zel/vector.h>

namespace Zel {

/// The family of all failures of images.
class ZEL_API ImageException : public Exception {};

/// A file name whose ending no codec knows, or a file whose kind its codec does not know.
ZEL_DECLARE_EXCEPTION(ImageException_UnknownImageFormat, ImageException, char const* fileName);
/// A size that no image can have. The name is empty when no file is concerned.
ZEL_DECLARE_EXCEPTION(ImageException_IllegalDimensions, ImageException, char const* fileName, int width,
                      int height);
/// Part of the vocabulary; no operation of the library throws it.
class ZEL_API ImageException_IJLError : public ImageException {};

class ZEL_API BMPLoaderException : public ImageException {};
/// The signature is not "BM".
ZEL_DECLARE_EXCEPTION(BMPLoaderException_NotBMPFile, BMPLoaderException, char const* fileName);
/// Another depth than 24 bits a pixel.
ZEL_DECLARE_EXCEPTION(BMPLoaderException_UnsupportedColorDepth, BMPLoaderException, char const* fileName);

class ZEL_API TGALoaderException : public ImageException {};
ZEL_DECLARE_EXCEPTION(TGALoaderException_MonoNot8Bit, TGALoaderException, char const* fileName);
/// Another depth than 15, 16, 24 or 32. Meant: the message names the last two only.
ZEL_DECLARE_EXCEPTION(TGALoaderException_TruecolorNot24Or32Bit, TGALoaderException, char const* fileName);
/// A colour-mapped image whose colour map type is not 1.
ZEL_DECLARE_EXCEPTION(TGALoaderException_NoPalette, TGALoaderException, char const* fileName);
/// A palette that leads past entry 255.
ZEL_DECLARE_EXCEPTION(TGALoaderException_TooManyColors, TGALoaderException, char const* fileName);
/// A colour map that starts below entry 0, which no file can say: part of the vocabulary.
ZEL_DECLARE_EXCEPTION(TGALoaderException_BadColormapStart, TGALoaderException, char const* fileName);
/// Palette entries of another size than 1 to 4 bytes, or indices too wide to be held.
ZEL_DECLARE_EXCEPTION(TGALoaderException_BadColormapDepth, TGALoaderException, char const* fileName);

class ZEL_API PCXLoaderException : public ImageException {};
ZEL_DECLARE_EXCEPTION(PCXLoaderException_NotPCXFile, PCXLoaderException, char const* fileName);
/// Another version than 5, or more planes than one (24-bit pictures).
ZEL_DECLARE_EXCEPTION(PCXLoaderException_UnsupportedVersion, PCXLoaderException, char const* fileName);
ZEL_DECLARE_EXCEPTION(PCXLoaderException_NoEncoding, PCXLoaderException, char const* fileName);
ZEL_DECLARE_EXCEPTION(PCXLoaderException_NoPalette, PCXLoaderException, char const* fileName);

class ZEL_API JPEGLoaderException : public ImageException {};
/// Neither 24-bit colour nor 8-bit grey.
ZEL_DECLARE_EXCEPTION(JPEGLoaderException_UnsupportedColorSpace, JPEGLoaderException, char const* fileName);
/// Anything else that fails, a missing file included. The message is empty.
class ZEL_API JPEGLoaderException_LoadFailed : public JPEGLoaderException {};

class ZEL_API JPEGSaverException : public ImageException {};
/// Any step that fails. The message is empty.
class ZEL_API JPEGSaverException_SaveFailed : public JPEGSaverException {};

/// A picture in memory: rows of pixels from the top row down. Positions are pixels, with pixel (0, 0) in the
/// top left corner.
///
/// Accessors, `copy` and the samplers trust their arguments. A size of 0 or below is kept and holds no
/// pixels; width x height past 2^31 - 1 throws ImageException_IllegalDimensions wherever a size is given.
/// Distinct images may be used on several threads.
class ZEL_API Image {
public:
    /// 0 x 0, without pixels.
    Image();

    /// Opaque black.
    Image(int width, int height);

    /// Loads a file, see `load`.
    Image(std::string const& fileName);

    Image(Image const& other);
    /// A source without pixels leaves its size, and null pixels.
    Image& operator=(Image const& other);
    virtual ~Image();

    /// Drops the pixels and takes a new size, all opaque black. Meant: memory for four times the pixels is
    /// taken and set, width * height of them being the image; decoders rely on the room behind it.
    void resize(int width, int height);

    /// Meant: sets every byte to 0, alpha included, so the image becomes transparent, unlike a new one.
    void clear();

    int getWidth() const { return m_width; }
    int getHeight() const { return m_height; }

    /// The pixels, owned by the image, row by row; null when there are none.
    Color* getData() { return m_data.get(); }
    Color const* getData() const { return m_data.get(); }

    Color& operator[](int i) { return m_data[static_cast<std::size_t>(i)]; }
    Color const& operator[](int i) const { return m_data[static_cast<std::size_t>(i)]; }

    Color& operator()(int x, int y) { return m_data[indexOf(x, y)]; }
    Color const& operator()(int x, int y) const { return m_data[indexOf(x, y)]; }

    /// Copies w x h pixels from (srcX, srcY) of `src` to (dstX, dstY). Not clipped: both rectangles must lie
    /// inside their images. Nothing happens when h or w is below 1.
    void copy(int dstX, int dstY, Image const* src, int srcX, int srcY, int w, int h);

    /// The nearest pixel; pixel centres are at whole numbers. Positions outside take the nearest border
    /// pixel. Opaque black when there are no pixels.
    Color samplePoint(float x, float y) const;

    /// The blend of the four pixels around the position, alpha included, truncated after each of its three
    /// steps; the border repeats outside. Opaque black when there are no pixels.
    Color sampleBilinear(float x, float y) const;

    /// The average colour under a convex polygon of `count` corners, in coordinates in which the image
    /// reaches from 0 to 1 and repeats. `scale` is the density of the samples for each pixel, both ways; the
    /// samples are blends of four pixels. Alpha is 255. A polygon that covers no sample, and one with a
    /// corner that is not finite, gives opaque black.
    Color areaSample(float scale, Vector2Template<float> const* polygon, int count) const;

    /// Resamples all of `src` to this image's size: each pixel is the average of its part of `src`, with
    /// `scale` samples for each pixel of `src`, both ways. Alpha is 255 everywhere.
    void copyWithScale(Image const* src, float scale);

    /// Gives each pixel whose red, green and blue are those of `key` the average of those of its four
    /// neighbours whose are not, or `key` itself when there are none. One call widens every other area by
    /// one pixel.
    void dilate(Color const& key);

    /// Loads the picture in a file, which replaces this one. The ending of the name, in lower case, tells the
    /// format: ".jpg" (24-bit colour and 8-bit grey), ".tga" (raw and run-length encoded; grey, palette and
    /// true colour), ".pcx" (palette) or ".bmp" (24 bits); any other throws
    /// ImageException_UnknownImageFormat.
    ///
    /// Meant: the ending counts only where it occurs first in the name ("a.bmp.bmp" is unknown), and a name
    /// of exactly three characters counts as ".jpg".
    ///
    /// Files are found as File finds them, in archives too. Meant: all but JPEG, which is read from the disk
    /// alone, by the name as the host knows it; on Windows the calling thread must have initialised COM.
    /// Meant: a grey JPEG leaves its last pixel's grey in pixel (0, 0) and opaque black everywhere else.
    ///
    /// Throws the exceptions of the format, ImageException_IllegalDimensions, and what File throws. After a
    /// failure the picture is the old one, or one of the new size whose pixels are not to be relied on; when
    /// memory runs out it may be empty.
    void load(std::string const& fileName);

    /// Saves the picture as ".tga" or ".bmp", both of 24 bits without alpha; endings as in `load`. A full
    /// disk throws FileException_WriteError. A failure leaves what could be written. Meant: the BMP file ends
    /// with zeros, 4096 bytes of header and zeros in all, and its rows are not padded. Meant: ".jpg" encodes
    /// the picture and writes no file, or throws JPEGSaverException_SaveFailed. Any other ending, ".pcx" too,
    /// is an ImageException_UnknownImageFormat.
    void save(std::string const& fileName) const;

private:
    void initializeMembers();
    void allocate(int width, int height, std::size_t factor);
    std::size_t indexOf(int x, int y) const {
        return static_cast<std::size_t>(std::int64_t{y} * m_width + x);
    }

    std::int32_t m_width;
    std::int32_t m_height;
    std::unique_ptr<Color[]> m_data;
};

} // namespace Zel
