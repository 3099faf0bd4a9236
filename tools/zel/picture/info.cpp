// zel image info

#include "command_line/json.h"
#include "picture/commands.h"
#include "picture/picture.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

namespace zel {
namespace {

namespace fs = std::filesystem;

struct InfoOptions {
    std::vector<std::string> files;
    bool json = false;
};

/// A name without an extension is one of those that count as JPEG.
std::string formatOf(std::string const& hostPath) {
    std::string const extension = fs::path("x" + fs::path(hostPath).filename().string()).extension().string();
    std::string format = extension.empty() ? "jpg" : extension.substr(1);
    std::transform(format.begin(), format.end(), format.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return format;
}

/// The lowest and the highest of all pixels; nothing when there are none.
std::optional<std::pair<int, int>> alphaRange(Zel::Image const& image) {
    Zel::Color const* const pixels = image.getData();
    if (pixels == nullptr)
        return std::nullopt;
    auto const [low, high] =
        std::minmax_element(pixels, pixels + std::ptrdiff_t{image.getWidth()} * image.getHeight(),
                            [](Zel::Color const& a, Zel::Color const& b) { return a.a < b.a; });
    return std::pair<int, int>(low->a, high->a);
}

std::string alphaText(std::optional<std::pair<int, int>> const& alpha) {
    if (!alpha)
        return "no pixels";
    if (alpha->first == 255)
        return "opaque";
    if (alpha->second == 0)
        return "transparent";
    return "alpha " + std::to_string(alpha->first) + " to " + std::to_string(alpha->second);
}

Json toJson(std::string const& file, Zel::Image const& image) {
    Json object{{"file", file},
                {"format", formatOf(file)},
                {"width", image.getWidth()},
                {"height", image.getHeight()}};
    if (auto const alpha = alphaRange(image))
        object["alpha"] = {alpha->first, alpha->second};
    return object;
}

void info(InfoOptions const& options, Console& console) {
    Json all = Json::array();
    console.exitCode =
        forEachPicture(options.files, console, [&](std::string const& file, Zel::Image const& image) {
            if (options.json)
                all.push_back(toJson(file, image));
            else
                console.out << printableName(file) << ": " << printableName(formatOf(file)) << ", "
                            << image.getWidth() << " x " << image.getHeight() << ", "
                            << alphaText(alphaRange(image)) << '\n';
        });
    if (options.json)
        printJson(console.out, all);
}

} // namespace

void addImageInfoCommand(CLI::App& image, Console& console) {
    auto const options = std::make_shared<InfoOptions>();
    CLI::App* const command = image.add_subcommand("info", "Tells the format, size and alpha of pictures.");
    command->add_option("FILE", options->files, "pictures: .jpg, .tga, .pcx or .bmp")->required();
    command->add_flag("--json", options->json, "as JSON");
    command->callback([options, &console] { info(*options, console); });
}

} // namespace zel
