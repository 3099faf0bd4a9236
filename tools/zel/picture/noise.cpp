// zel noise

#include "command_line/commands.h"
#include "picture/picture.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <memory>
#include <zel/noise.h>

namespace zel {
namespace {

struct NoiseOptions {
    std::string out;
    std::string size;
    std::string kind = "noise";
    float frequency = 8.0F;
};

constexpr float kDepth = 0.37F; ///< no whole number, so that lattice points are not all of one value

/// From 0 to about 1, for a place from 0 to 1.
float valueAt(NoiseOptions const& options, float x, float y) {
    if (options.kind == "noise")
        return Zel::noise(Zel::Vector3Template<float>(x * options.frequency, y * options.frequency, kDepth));
    constexpr float kCells = 4.0F; // of the coarsest octave, which gives most of the sum
    return 2.0F *
           Zel::turbulence(Zel::Vector3Template<float>(x * kCells, y * kCells, kDepth), options.frequency);
}

void drawNoise(NoiseOptions const& options) {
    requireWriter(options.out);
    auto const size = parseSize(options.size);
    if (!size)
        throw Failure(kUsage, "--size " + printableName(options.size) + ": give it as WIDTHxHEIGHT");
    if (std::isnan(options.frequency)) // which passes for a number within any range
        throw Failure(kUsage, "--freq: give it as a number");
    Zel::Image image(size->width, size->height);
    auto const side = static_cast<float>(std::max(size->width, size->height));
    for (int y = 0; y < size->height; ++y) {
        for (int x = 0; x < size->width; ++x) {
            float const value = valueAt(options, static_cast<float>(x) / side, static_cast<float>(y) / side);
            auto const grey = static_cast<std::uint8_t>(std::clamp(value, 0.0F, 1.0F) * 255.0F);
            image(x, y) = Zel::Color(grey, grey, grey, 255);
        }
    }
    savePicture(image, options.out);
}

} // namespace

void addNoiseCommand(CLI::App& program) {
    auto const options = std::make_shared<NoiseOptions>();
    CLI::App* const command = program.add_subcommand("noise", "Saves a picture of a noise function.");
    command->add_option("OUT", options->out, "the file to write: .tga or .bmp")->required();
    command->add_option("--size", options->size, "WIDTHxHEIGHT")->required();
    command->add_option("--kind", options->kind, "noise (smooth) or turbulence (billowing); noise by default")
        ->check(CLI::IsMember({"noise", "turbulence"}));
    command
        ->add_option("--freq", options->frequency,
                     "noise: cells across the longer side; turbulence: how much finer the finest octave is "
                     "than the coarsest; 8 by default")
        ->check(CLI::Range(1.0F, 4096.0F));
    command->callback([options] { drawNoise(*options); });
}

} // namespace zel
