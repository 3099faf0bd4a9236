// The image: its pixels, their lifetime, and copying of parts.

#include "image/dimensions.h"
#include "platform/platform.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>
#include <zel/image.h>

namespace Zel {
namespace {

/// `resize` allocates this many times the pixels.
constexpr std::size_t kResizeFactor = 4;

/// Opaque black pixels. The host is told of their memory before they are set, which touches all of it.
std::unique_ptr<Color[]> makePixels(std::size_t count) {
    static_assert(std::is_trivially_destructible_v<Color>); // so delete[] finds what new[] has given
    void* const memory = ::operator new[](count * sizeof(Color));
    platform::expectUse(memory, count * sizeof(Color));
    return std::unique_ptr<Color[]>(new (memory) Color[count]);
}

} // namespace

Image::Image() { initializeMembers(); }

Image::Image(int width, int height) : Image() { allocate(width, height, 1); }

Image::Image(std::string const& fileName) : Image() { load(fileName); }

Image::Image(Image const& other) : Image() { *this = other; }

Image& Image::operator=(Image const& other) {
    if (this == &other)
        return *this;
    initializeMembers();
    if (other.m_data != nullptr) {
        allocate(other.m_width, other.m_height, 1);
        std::copy_n(other.getData(), pixelCount(m_width, m_height), getData());
    }
    m_width = other.m_width;
    m_height = other.m_height;
    return *this;
}

Image::~Image() { initializeMembers(); }

void Image::initializeMembers() {
    m_width = 0;
    m_height = 0;
    m_data.reset();
}

void Image::swap(Image& other) noexcept {
    std::swap(m_width, other.m_width);
    std::swap(m_height, other.m_height);
    m_data.swap(other.m_data);
}

/// When memory runs out, the image is empty.
void Image::allocate(int width, int height, std::size_t factor) {
    std::size_t const pixels = pixelCount(width, height);
    initializeMembers();
    if (pixels > 0)
        m_data = makePixels(pixels * factor);
    m_width = width;
    m_height = height;
}

void Image::resize(int width, int height) { allocate(width, height, kResizeFactor); }

void Image::clear() {
    if (m_data != nullptr)
        std::memset(static_cast<void*>(getData()), 0, pixelCount(m_width, m_height) * sizeof(Color));
}

void Image::copy(int dstX, int dstY, Image const* src, int srcX, int srcY, int w, int h) {
    if (w < 1)
        return;
    for (int row = 0; row < h; ++row) // rows of one image may overlap
        std::memmove(&(*this)(dstX, dstY + row), &(*src)(srcX, srcY + row),
                     static_cast<std::size_t>(w) * sizeof(Color));
}

} // namespace Zel
