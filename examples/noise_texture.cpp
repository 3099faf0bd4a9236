// Makes a marble texture of noise and saves it.
//
//   noise_texture FILE
//
// FILE is relative to the working directory and ends in .tga or .bmp.

#include <cmath>
#include <cstdio>
#include <zel/zel.h>

namespace {

constexpr int kSize = 256;

/// Veins that run from corner to corner, bent by turbulence.
Zel::FColor marble(float x, float y) {
    float const bent = x + y + 1.5F * Zel::turbulence(Zel::Vector3Template<float>(3 * x, 3 * y, 0.5F), 32.0F);
    float const vein = Zel::bias(std::abs(std::sin(6.0F * bent)), 0.8F);
    Zel::FColor color;
    Zel::FColor::interpolate(color, Zel::FColor(0.25F, 0.2F, 0.3F, 1), vein,
                             Zel::FColor(0.95F, 0.93F, 0.9F, 1));
    return color;
}

std::uint8_t channel(float value) { return static_cast<std::uint8_t>(std::lround(value * 255.0F)); }

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: noise_texture FILE\n", stderr);
        return 2;
    }
    try {
        Zel::Zel_Init const init;
        Zel::Image texture(kSize, kSize);
        for (int y = 0; y < kSize; ++y) {
            for (int x = 0; x < kSize; ++x) {
                Zel::FColor const color = marble(static_cast<float>(x) / static_cast<float>(kSize),
                                                 static_cast<float>(y) / static_cast<float>(kSize));
                texture(x, y) = Zel::Color(channel(color.r), channel(color.g), channel(color.b), 255);
            }
        }
        Zel::Path path(Zel::File::getCurrentDir());
        path.append(argv[1]);
        texture.save(path.str());
        std::printf("open %s to see it\n", argv[1]);
        return 0;
    } catch (Zel::Exception const& exception) {
        std::fprintf(stderr, "noise_texture: %s\n", exception.getError());
        return 3;
    }
}
