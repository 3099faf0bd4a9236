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

/// The base of all exceptions of images.
class ZEL_API ImageException : public Exception {};

/// No codec takes the ending of the file name, or the codec does not know this kind of file.
ZEL_DECLARE_EXCEPTION(ImageException_UnknownImageFormat, ImageException, char const* fileName);
/// No image can have this size. The name is empty when the size does not come from a file.
ZEL_DECLARE_EXCEPTION(ImageException_IllegalDimensions, ImageException, char const* fileName, int width,
                      int height);
/// The library never throws it.
class ZEL_API ImageException_IJLError : public ImageException {};

class ZEL_API BMPLoaderException : public ImageException {};
/// The signature is not "BM".
ZEL_DECLARE_EXCEPTION(BMPLoaderException_NotBMPFile, BMPLoaderException, char const* fileName);
/// The depth is not 24 bits a pixel.
ZEL_DECLARE_EXCEPTION(BMPLoaderException_UnsupportedColorDepth, BMPLoaderException, char const* fileName);

class ZEL_API TGALoaderException : public ImageException {};
/// The depth of a grey image is not 8 bits a pixel.
ZEL_DECLARE_EXCEPTION(TGALoaderException_MonoNot8Bit, TGALoaderException, char const* fileName);
/// The depth of a true-colour image is not 15, 16, 24 or 32 bits a pixel. Meant: the message names only 24
/// and 32.
ZEL_DECLARE_EXCEPTION(TGALoaderException_TruecolorNot24Or32Bit, TGALoaderException, char const* fileName);
/// The colour map type of a colour-mapped image is not 1.
ZEL_DECLARE_EXCEPTION(TGALoaderException_NoPalette, TGALoaderException, char const* fileName);
/// The palette goes past entry 255.
ZEL_DECLARE_EXCEPTION(TGALoaderException_TooManyColors, TGALoaderException, char const* fileName);
/// The palette starts below entry 0. No file can say so: the number is unsigned.
ZEL_DECLARE_EXCEPTION(TGALoaderException_BadColormapStart, TGALoaderException, char const* fileName);
/// The size of a palette entry is not 1 to 4 bytes, or that of an index is above 16 bytes.
ZEL_DECLARE_EXCEPTION(TGALoaderException_BadColormapDepth, TGALoaderException, char const* fileName);

class ZEL_API PCXLoaderException : public ImageException {};
/// The first byte is not 10.
ZEL_DECLARE_EXCEPTION(PCXLoaderException_NotPCXFile, PCXLoaderException, char const* fileName);
/// The version is not 5, or the number of planes is not 1: 24-bit pictures have three.
ZEL_DECLARE_EXCEPTION(PCXLoaderException_UnsupportedVersion, PCXLoaderException, char const* fileName);
/// The pixels are not run-length encoded.
ZEL_DECLARE_EXCEPTION(PCXLoaderException_NoEncoding, PCXLoaderException, char const* fileName);
/// The file does not end with a palette of 256 colours.
ZEL_DECLARE_EXCEPTION(PCXLoaderException_NoPalette, PCXLoaderException, char const* fileName);

class ZEL_API JPEGLoaderException : public ImageException {};
/// The picture is neither 24-bit colour nor 8-bit grey.
ZEL_DECLARE_EXCEPTION(JPEGLoaderException_UnsupportedColorSpace, JPEGLoaderException, char const* fileName);
/// Loading fails for any other reason, such as a missing file. The message is empty.
class ZEL_API JPEGLoaderException_LoadFailed : public JPEGLoaderException {};

class ZEL_API JPEGSaverException : public ImageException {};
/// The host cannot encode the picture. The message is empty.
class ZEL_API JPEGSaverException_SaveFailed : public JPEGSaverException {};

/// A picture in memory: rows of pixels, the top row first. Pixel (0, 0) is the top left one.
///
/// A width or height of 0 or below is kept, and such an image has no pixels. Whatever is given a size throws
/// ImageException_IllegalDimensions when width * height is above 2^31 - 1, and std::bad_alloc when memory
/// runs out. Accessors and `copy` do not check positions: they must lie inside the image.
///
/// Several threads may read an image. While one changes it, no other may use it.
class ZEL_API Image {
public:
    /// 0 x 0 pixels.
    Image();

    /// Opaque black.
    Image(int width, int height);

    /// Loads a file, as `load` does.
    Image(std::string const& fileName);

    /// A copy owns its pixels. A copy of an image without pixels has its size and no pixels. When memory runs
    /// out, an assignment and `resize` leave this image empty.
    Image(Image const& other);
    Image& operator=(Image const& other);
    virtual ~Image();

    /// Takes a new size. The old pixels are lost, the new ones are opaque black. Meant: memory for four times
    /// width * height pixels is allocated and set to opaque black; only the first width * height of them are
    /// the image. Decoders rely on the room behind it.
    void resize(int width, int height);

    /// Sets every byte of the pixels to 0. Meant: alpha too, so the image becomes transparent; a new one is
    /// opaque.
    void clear();

    int getWidth() const { return m_width; }
    int getHeight() const { return m_height; }

    /// The pixels, row by row; null when there are none. They belong to the image, and are valid until its
    /// size changes, it is assigned or loaded, or it is destroyed.
    Color* getData() { return m_data.get(); }
    Color const* getData() const { return m_data.get(); }

    /// Pixel i, counted row by row: i = y * width + x.
    Color& operator[](int i) { return m_data[static_cast<std::size_t>(i)]; }
    Color const& operator[](int i) const { return m_data[static_cast<std::size_t>(i)]; }

    /// The pixel in column x of row y.
    Color& operator()(int x, int y) { return m_data[indexOf(x, y)]; }
    Color const& operator()(int x, int y) const { return m_data[indexOf(x, y)]; }

    /// Copies w x h pixels of `src`, from (srcX, srcY) on, to (dstX, dstY). Not clipped: both rectangles must
    /// lie inside their images. `src` may be this image: rows are copied from the top down, so
    /// copy upwards where they overlap. Does nothing when w or h is below 1.
    void copy(int dstX, int dstY, Image const* src, int srcX, int srcY, int w, int h);

    /// The pixel nearest to a position in pixels; pixel centres are at whole numbers. On a 4 x 4 image,
    /// (1.49, 0) gives pixel (1, 0), and (1.5, 0) pixel (2, 0). Outside, the nearest pixel is one of the
    /// border. NaN counts as 0. Opaque black when the image has no pixels.
    Color samplePoint(float x, float y) const;

    /// The blend of the four pixels around a position, alpha included: along x in the upper and in the lower
    /// row, then along y. Each of the three results is truncated to whole numbers. Outside, the pixels of the
    /// border repeat. NaN counts as 0. Opaque black when the image has no pixels.
    Color sampleBilinear(float x, float y) const;

    /// The average colour under a convex polygon of `count` corners. In the coordinates of the corners the
    /// image reaches from 0 to 1, and it repeats beyond. `scale` samples are taken for each pixel along x and
    /// along y; each is a blend of four pixels. Alpha is 255. Opaque black when count is below 3, the polygon
    /// covers no sample, a corner or `scale` is not finite, or `scale` is not above 0.
    Color areaSample(float scale, Vector2Template<float> const* polygon, int count) const;

    /// Resamples all of `src` to this image's size: each pixel becomes the `areaSample` of the part of `src`
    /// that it covers. Alpha is 255 everywhere. `src` must be another image.
    /// For a picture of 8 x 8 pixels: Image small(4, 4); small.copyWithScale(&picture, 1);
    void copyWithScale(Image const* src, float scale);

    /// Replaces each key-coloured pixel by the average of its neighbours that are not key-coloured (left,
    /// upper, right, lower), alpha included. With no such neighbour the pixel becomes `key`. A pixel is
    /// key-coloured when its red, green and blue are those of `key`, whatever its alpha. One call widens the
    /// other areas by one pixel.
    void dilate(Color const& key);

    /// Replaces this picture by the one in a file. The ending of the name, in lower case, tells the format:
    /// ".jpg" (24-bit colour, 8-bit grey), ".tga" (raw or run-length encoded; grey, palette or true colour),
    /// ".pcx" (palette) or ".bmp" (24 bits). Any other ending throws ImageException_UnknownImageFormat.
    ///
    /// Meant: the ending counts only where it occurs first in the name: load("a.bmp.bmp") throws
    /// ImageException_UnknownImageFormat. Meant: a name of exactly three characters counts as ".jpg":
    /// load("abc") tries to read a JPEG file named "abc".
    ///
    /// The file is found as File finds it, in archives too. Meant: JPEG files are not. They are read from the
    /// disk alone, by the name as the host knows it. On Windows the calling thread must have initialised COM,
    /// or JPEGLoaderException_LoadFailed is thrown. Meant: a grey JPEG leaves its last pixel's grey in pixel
    /// (0, 0), and opaque black everywhere else.
    ///
    /// Throws the exceptions of the format, ImageException_IllegalDimensions, and what File throws. After a
    /// failure the image is as before, or has the new size and any pixels. When memory runs out it may be
    /// empty.
    void load(std::string const& fileName);

    /// Saves the picture in a file; the ending of the name tells the format, as in `load`. ".tga" and ".bmp"
    /// get 24 bits a pixel, without alpha. Meant: the rows of a BMP file are not padded, and zeros follow
    /// them, so that the file has 4096 bytes beside its pixels. Meant: ".jpg", and so a name of three
    /// characters, encodes the picture and writes no file. Any other ending, ".pcx" too, throws
    /// ImageException_UnknownImageFormat.
    ///
    /// Throws what File throws, FileException_WriteError for a full disk, and JPEGSaverException_SaveFailed.
    /// After a failure the file holds what could be written.
    void save(std::string const& fileName) const;

private:
    friend class JPEGLoader;

    void initializeMembers();
    void swap(Image& other) noexcept;
    void allocate(int width, int height, std::size_t factor);
    std::size_t indexOf(int x, int y) const {
        return static_cast<std::size_t>(std::int64_t{y} * m_width + x);
    }

    std::int32_t m_width;
    std::int32_t m_height;
    std::unique_ptr<Color[]> m_data;
};

} // namespace Zel
