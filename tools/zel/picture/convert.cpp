// zel image convert

#include "picture/commands.h"
#include "picture/picture.h"
#include "picture/resample.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace zel {
namespace {

struct ConvertOptions {
    std::string in;
    std::string out;
    std::string size;
};

void convert(ConvertOptions const& options) {
    requireWriter(options.out);
    auto const size = parseSize(options.size);
    if (!options.size.empty() && !size)
        throw Failure(kUsage, "--size " + printableName(options.size) + ": give it as WIDTHxHEIGHT");
    Zel::Image const image = loadPicture(options.in);
    if (image.getData() == nullptr)
        throw Failure(kFinding, printableName(options.in) + " has no pixels");
    savePicture(size ? resampled(image, size->width, size->height) : image, options.out);
}

} // namespace

void addImageConvertCommand(CLI::App& image) {
    auto const options = std::make_shared<ConvertOptions>();
    CLI::App* const command = image.add_subcommand(
        "convert", "Saves a picture in another format, and in another size if asked to.");
    command->add_option("IN", options->in, "the picture: .jpg, .tga, .pcx or .bmp")->required();
    command->add_option("OUT", options->out, "the file to write: .tga or .bmp")->required();
    command->add_option("--size", options->size, "WIDTHxHEIGHT of the result; alpha becomes 255");
    command->callback([options] { convert(*options); });
}

} // namespace zel
