// Loading and saving through the library.

#include "picture/picture.h"

#include "host/host_path.h"
#include "host/pending_file.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace zel {
namespace {

namespace fs = std::filesystem;

/// The number that fills the text, from 1 on; 0 when there is none.
int positiveNumber(std::string_view text) {
    int value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() && value > 0 ? value : 0;
}

/// A TGA file has 16 bits for each side, of which the library keeps the lower ones.
void requireSavable(Zel::Image const& image, std::string const& hostPath) {
    constexpr int kLargestSide = 65535;
    if (fs::path(hostPath).extension() == ".tga" &&
        std::max(image.getWidth(), image.getHeight()) > kLargestSide)
        throw Failure(kUsage, "cannot save " + printableName(hostPath) +
                                  ": a .tga file has at most 65535 pixels a side; save as .bmp");
}

} // namespace

void requireWriter(std::string const& hostPath) {
    std::string const extension = fs::path(hostPath).extension().string();
    if (extension == ".jpg")
        throw Failure(kUsage,
                      "cannot save " + printableName(hostPath) + ": JPEG is only read; save as .bmp or .tga");
    if (extension != ".bmp" && extension != ".tga")
        throw Failure(kUsage,
                      "cannot save " + printableName(hostPath) + ": its name must end in .bmp or .tga");
    if (hostPath.find(extension) + extension.size() != hostPath.size())
        throw Failure(kUsage, "cannot save " + printableName(hostPath) + ": " + extension +
                                  " must occur once in its path");
}

std::optional<PictureSize> parseSize(std::string const& text) {
    std::size_t const cross = text.find('x');
    if (cross == std::string::npos)
        return std::nullopt;
    PictureSize const size{positiveNumber(std::string_view(text).substr(0, cross)),
                           positiveNumber(std::string_view(text).substr(cross + 1))};
    if (size.width == 0 || size.height == 0)
        return std::nullopt;
    return size;
}

Zel::Image loadPicture(std::string const& hostPath) {
    if (!fs::exists(hostPath))
        throw Failure(kOperatingFailure,
                      "cannot open " + printableName(hostPath) + ": there is no such file");
    try {
        return whileReading(hostPath, [&hostPath] { return Zel::Image(libraryName(hostPath)); });
    } catch (Zel::JPEGLoaderException_LoadFailed const&) {
        throw Failure(kFinding,
                      "cannot load " + printableName(hostPath) + ": not a JPEG picture that can be decoded");
    }
}

ExitCode
forEachPicture(std::vector<std::string> const& hostPaths, Console const& console,
               std::function<void(std::string const& hostPath, Zel::Image const& image)> const& use) {
    ExitCode worst = kSuccess;
    for (std::string const& hostPath : hostPaths)
        worst = std::max(worst, reportFailures(console, [&] { use(hostPath, loadPicture(hostPath)); }));
    return worst;
}

void savePicture(Zel::Image const& image, std::string const& hostPath) {
    requireSavable(image, hostPath);
    PendingFile file(outputFile(hostPath)); // there already, so the library keeps the case of its name
    try {
        image.save(libraryName(file.temporary().string()));
    } catch (Zel::FileException_WriteError const&) { // which would name the temporary file
        throw Failure(kOperatingFailure, "cannot write " + printableName(hostPath) +
                                             ": the disk is full, or the file would pass 2 GiB");
    }
    file.commit();
}

} // namespace zel
