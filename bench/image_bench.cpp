// Loading and saving pictures of 1024 x 1024 pixels. Peers give what the library gives: four bytes a pixel,
// blue first. Limits: the file's bytes read, and memory for four times the pixels taken and set, as
// Image::resize does; for JPEG, libjpeg-turbo straight to four bytes a pixel.

#include "pictures.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>
#include <vector>
#include <zel/zel.h>

#include <jpeglib.h>

#if __has_include(<SDL2/SDL_image.h>)
#include <SDL2/SDL_image.h>
#define BENCH_SDL2
#endif
#if __has_include(<stb/stb_image.h>)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#pragma GCC diagnostic ignored "-Wunused-function"
#include <stb/stb_image.h>
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>
#pragma GCC diagnostic pop
#define BENCH_STB
#endif

namespace {

using bench::kSide;
using bench::PictureFormat;

constexpr std::size_t kPixels = std::size_t{kSide} * kSide;

/// The path as the library takes it: below the data directory for all formats but JPEG.
std::string libraryName(PictureFormat format) {
    std::string const path = bench::pictureFile(format);
    return format == PictureFormat::Jpeg ? path : std::filesystem::path(path).filename().string();
}

void load(benchmark::State& state, PictureFormat format) {
    std::string const name = libraryName(format);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(Zel::Image(name).getData());
}

void loadLimit(benchmark::State& state, PictureFormat format) {
    std::string const path = bench::pictureFile(format);
    std::vector<char> bytes(std::filesystem::file_size(path));
    for ([[maybe_unused]] auto _ : state) {
        std::FILE* const file = std::fopen(path.c_str(), "rb");
        benchmark::DoNotOptimize(std::fread(bytes.data(), 1, bytes.size(), file));
        std::fclose(file);
        auto const pixels = std::make_unique<std::uint32_t[]>(4 * kPixels);
        std::fill_n(pixels.get(), 4 * kPixels, 0xFF000000U);
        benchmark::DoNotOptimize(pixels.get());
        benchmark::ClobberMemory();
    }
}

void loadJpegTurbo(benchmark::State& state) {
    std::string const path = bench::pictureFile(PictureFormat::Jpeg);
    for ([[maybe_unused]] auto _ : state) {
        std::FILE* const file = std::fopen(path.c_str(), "rb");
        jpeg_error_mgr errors{};
        jpeg_decompress_struct decoder{};
        decoder.err = jpeg_std_error(&errors);
        jpeg_create_decompress(&decoder);
        jpeg_stdio_src(&decoder, file);
        jpeg_read_header(&decoder, TRUE);
        decoder.out_color_space = JCS_EXT_BGRA;
        jpeg_start_decompress(&decoder);
        auto const pixels = std::make_unique<JSAMPLE[]>(4 * kPixels);
        while (decoder.output_scanline < decoder.output_height) {
            JSAMPROW row = pixels.get() + std::size_t{decoder.output_scanline} * 4 * kSide;
            jpeg_read_scanlines(&decoder, &row, 1);
        }
        jpeg_finish_decompress(&decoder);
        jpeg_destroy_decompress(&decoder);
        std::fclose(file);
        benchmark::DoNotOptimize(pixels.get());
    }
}

void saveJpegTurbo(benchmark::State& state) {
    constexpr int kQuality = 75; // the encoder's default
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(bench::encodedJpeg(kQuality).data());
}

#ifdef BENCH_SDL2
void loadSdl2(benchmark::State& state, PictureFormat format) {
    std::string const path = bench::pictureFile(format);
    for ([[maybe_unused]] auto _ : state) {
        SDL_Surface* const picture = IMG_Load(path.c_str());
        SDL_Surface* const pixels = SDL_ConvertSurfaceFormat(picture, SDL_PIXELFORMAT_BGRA32, 0);
        benchmark::DoNotOptimize(pixels);
        SDL_FreeSurface(pixels);
        SDL_FreeSurface(picture);
    }
}

void saveBmpSdl2(benchmark::State& state) {
    SDL_Surface* const pixels = SDL_CreateRGBSurfaceWithFormatFrom(
        const_cast<Zel::Color*>(bench::photograph().getData()), kSide, kSide, 32, 4 * kSide,
        SDL_PIXELFORMAT_RGB888); // blue first in memory
    std::string const path = (bench::scratch() / "sdl2.bmp").string();
    for ([[maybe_unused]] auto _ : state)
        SDL_SaveBMP(pixels, path.c_str());
    SDL_FreeSurface(pixels);
}
#endif

#ifdef BENCH_STB
void loadStb(benchmark::State& state, PictureFormat format) {
    std::string const path = bench::pictureFile(format);
    for ([[maybe_unused]] auto _ : state) {
        int width = 0;
        int height = 0;
        int channels = 0;
        stbi_uc* const pixels = stbi_load(path.c_str(), &width, &height, &channels, 4); // red first
        benchmark::DoNotOptimize(pixels);
        stbi_image_free(pixels);
    }
}

/// `write` has the signature of stbi_write_bmp; it gets packed pixels, which it writes without alpha.
template <class Write>
void saveStb(benchmark::State& state, Write write, char const* name) {
    std::vector<unsigned char> pixels;
    for (std::size_t i = 0; i < kPixels; ++i) {
        Zel::Color const& pixel = bench::photograph()[static_cast<int>(i)];
        pixels.insert(pixels.end(), {pixel.r, pixel.g, pixel.b});
    }
    std::string const path = (bench::scratch() / name).string();
    stbi_write_tga_with_rle = 0;
    for ([[maybe_unused]] auto _ : state)
        write(path.c_str(), kSide, kSide, 3, pixels.data());
}

int writeJpeg(char const* path, int width, int height, int channels, void const* pixels) {
    constexpr int kQuality = 75; // the default of the others
    return stbi_write_jpg(path, width, height, channels, pixels, kQuality);
}
#endif

void save(benchmark::State& state, char const* name) {
    Zel::Image const& image = bench::photograph();
    for ([[maybe_unused]] auto _ : state)
        image.save(name);
}

/// The bytes that a picture comes to, ready to be written.
void saveLimit(benchmark::State& state, char const* name) {
    std::vector<char> const bytes(3 * kPixels);
    std::string const path = (bench::scratch() / name).string();
    for ([[maybe_unused]] auto _ : state) {
        std::FILE* const file = std::fopen(path.c_str(), "wb");
        benchmark::DoNotOptimize(std::fwrite(bytes.data(), 1, bytes.size(), file));
        std::fclose(file);
    }
}

struct NamedFormat {
    char const* name;
    PictureFormat format;
};

void add(std::string const& job, char const* part, void (*measure)(benchmark::State&, PictureFormat),
         PictureFormat format) {
    benchmark::RegisterBenchmark((job + "/" + part).c_str(), measure, format)->Unit(benchmark::kMicrosecond);
}

[[maybe_unused]] bool const s_registered = [] {
    for (auto const& [name, format] :
         {NamedFormat{"tga_raw", PictureFormat::Tga}, NamedFormat{"tga_runs", PictureFormat::TgaRunLength},
          NamedFormat{"bmp", PictureFormat::Bmp}, NamedFormat{"pcx", PictureFormat::Pcx},
          NamedFormat{"jpeg", PictureFormat::Jpeg}}) {
        add("load", name, load, format);
        if (format != PictureFormat::Jpeg)
            add("load_limit_read_and_fourfold_pixels", name, loadLimit, format);
#ifdef BENCH_SDL2
        add("load_peer_sdl2_image", name, loadSdl2, format);
#endif
#ifdef BENCH_STB
        if (format != PictureFormat::Pcx)
            add("load_peer_stb_image", name, loadStb, format);
#endif
    }
    return true;
}();

BENCHMARK(loadJpegTurbo)->Name("load_limit_libjpeg_turbo/jpeg")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(save, tga, "ours.tga")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(save, bmp, "ours.bmp")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(save, jpeg, "ours.jpg")->Unit(benchmark::kMicrosecond); // encodes, and writes no file
BENCHMARK(saveJpegTurbo)->Name("save_limit_libjpeg_turbo/jpeg")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(saveLimit, tga, "limit.tga")->Name("save_limit_fwrite/tga")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(saveLimit, bmp, "limit.bmp")->Name("save_limit_fwrite/bmp")->Unit(benchmark::kMicrosecond);
#ifdef BENCH_SDL2
BENCHMARK(saveBmpSdl2)->Name("save_peer_sdl2/bmp")->Unit(benchmark::kMicrosecond);
#endif
#ifdef BENCH_STB
BENCHMARK_CAPTURE(saveStb, tga, stbi_write_tga, "stb.tga")
    ->Name("save_peer_stb_image_write/tga")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(saveStb, bmp, stbi_write_bmp, "stb.bmp")
    ->Name("save_peer_stb_image_write/bmp")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(saveStb, jpeg, writeJpeg, "stb.jpg")
    ->Name("save_peer_stb_image_write/jpeg")
    ->Unit(benchmark::kMicrosecond);
#endif

} // namespace
