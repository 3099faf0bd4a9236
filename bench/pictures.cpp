// Pictures made from noise, and encoders for the formats that the library reads only.

#include "pictures.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <vector>
#include <zel/noise.h>

#include <jpeglib.h>

namespace bench {
namespace {

constexpr int kColours = 16;

/// From 0 to 1, smoothly.
float cloud(int x, int y) {
    float const scale = 1.0F / 128.0F;
    float const value =
        Zel::turbulence({static_cast<float>(x) * scale, static_cast<float>(y) * scale, 0.5F}, 4.0F);
    return std::min(value, 0.999F);
}

template <class ColourAt>
Zel::Image paint(ColourAt colourAt) {
    Zel::Image image(kSide, kSide);
    for (int y = 0; y < kSide; ++y)
        for (int x = 0; x < kSide; ++x)
            image(x, y) = colourAt(x, y);
    return image;
}

std::uint8_t colourIndex(int x, int y) { return static_cast<std::uint8_t>(cloud(x, y) * kColours); }

Zel::Color paletteColour(int index) {
    return {static_cast<std::uint8_t>(index * 16), static_cast<std::uint8_t>(255 - index * 8),
            static_cast<std::uint8_t>(index * index), 255};
}

std::array<std::uint8_t, 2> littleEndian(int value) {
    return {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8)};
}

/// Calls `emit` with the start and the length of each run of equal pixels of a row, in runs of at most
/// `longest`.
template <class Emit>
void forEachRun(Zel::Image const& image, int y, int longest, Emit emit) {
    for (int x = 0; x < kSide;) {
        int end = x + 1;
        while (end < kSide && end - x < longest && image(end, y) == image(x, y))
            ++end;
        emit(x, end - x);
        x = end;
    }
}

std::string runLengthTga() {
    auto const [low, high] = littleEndian(kSide);
    std::array<std::uint8_t, 18> const header{0, 0, 10, 0,   0,    0,   0,    0,  0,
                                              0, 0, 0,  low, high, low, high, 24, 32};
    std::string file(header.begin(), header.end());
    for (int y = 0; y < kSide; ++y) {
        forEachRun(poster(), y, 128, [&](int x, int length) {
            Zel::Color const& colour = poster()(x, y);
            file += static_cast<char>(127 + length);
            file += {static_cast<char>(colour.b), static_cast<char>(colour.g), static_cast<char>(colour.r)};
        });
    }
    return file;
}

std::string pcx() {
    auto const [last0, last1] = littleEndian(kSide - 1);
    auto const [side0, side1] = littleEndian(kSide);
    std::string file(128, '\0');
    std::array<std::uint8_t, 12> const start{10, 5, 1, 8, 0, 0, 0, 0, last0, last1, last0, last1};
    std::copy(start.begin(), start.end(), file.begin());
    file[65] = 1;
    file[66] = static_cast<char>(side0);
    file[67] = static_cast<char>(side1);
    for (int y = 0; y < kSide; ++y) {
        forEachRun(poster(), y, 63, [&](int x, int length) {
            file += static_cast<char>(0xC0 + length);
            file += static_cast<char>(colourIndex(x, y));
        });
    }
    file += '\x0C';
    for (int i = 0; i < 256; ++i) {
        Zel::Color const colour = paletteColour(i % kColours);
        file += {static_cast<char>(colour.r), static_cast<char>(colour.g), static_cast<char>(colour.b)};
    }
    return file;
}

void write(std::string const& name, std::string const& content) {
    std::ofstream(scratch() / name, std::ios::binary) << content;
}

void writePicture(PictureFormat format, std::string const& name) {
    switch (format) {
    case PictureFormat::Tga:
    case PictureFormat::Bmp:
        return photograph().save(name);
    case PictureFormat::TgaRunLength:
        return write(name, runLengthTga());
    case PictureFormat::Pcx:
        return write(name, pcx());
    case PictureFormat::Jpeg:
        return write(name, encodedJpeg(85));
    }
}

char const* nameOf(PictureFormat format) {
    switch (format) {
    case PictureFormat::Tga:
        return "raw.tga";
    case PictureFormat::TgaRunLength:
        return "runs.tga";
    case PictureFormat::Bmp:
        return "raw.bmp";
    case PictureFormat::Pcx:
        return "runs.pcx";
    case PictureFormat::Jpeg:
        return "photograph.jpg";
    }
    return nullptr;
}

} // namespace

Zel::Image const& photograph() {
    static Zel::Image const s_image = [] {
        std::minstd_rand random;
        return paint([&](int x, int y) {
            float const value = cloud(x, y);
            auto const channel = [&](float weight) {
                return static_cast<std::uint8_t>(value * weight + static_cast<float>(random() % 12));
            };
            return Zel::Color(channel(240), channel(160), channel(90), 255);
        });
    }();
    return s_image;
}

Zel::Image const& poster() {
    static Zel::Image const s_image = paint([](int x, int y) { return paletteColour(colourIndex(x, y)); });
    return s_image;
}

std::string encodedJpeg(int quality) {
    jpeg_error_mgr errors{};
    jpeg_compress_struct state{};
    state.err = jpeg_std_error(&errors);
    jpeg_create_compress(&state);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&state, &bytes, &size);
    state.image_width = kSide;
    state.image_height = kSide;
    state.input_components = 4;
    state.in_color_space = JCS_EXT_BGRA;
    jpeg_set_defaults(&state);
    jpeg_set_quality(&state, quality, TRUE);
    jpeg_start_compress(&state, TRUE);
    std::vector<Zel::Color> row(kSide);
    while (state.next_scanline < kSide) {
        std::copy_n(&photograph()(0, static_cast<int>(state.next_scanline)), kSide, row.begin());
        auto* samples = reinterpret_cast<JSAMPROW>(row.data());
        jpeg_write_scanlines(&state, &samples, 1);
    }
    jpeg_finish_compress(&state);
    jpeg_destroy_compress(&state);
    std::string file(reinterpret_cast<char const*>(bytes), size);
    std::free(bytes);
    return file;
}

std::string pictureFile(PictureFormat format) {
    std::string const name = nameOf(format);
    if (!std::filesystem::exists(scratch() / name))
        writePicture(format, name);
    return (scratch() / name).string();
}

} // namespace bench
