// Pictures by their host paths.
#pragma once

#include "command_line/commands.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>
#include <zel/image.h>

namespace zel {

struct PictureSize {
    int width = 0;
    int height = 0;
};

/// Reads "WIDTHxHEIGHT", both from 1 on; nothing when the text is none.
std::optional<PictureSize> parseSize(std::string const& text);

/// Loads a picture. Throws Failure where the library has no words for what is wrong, else its exceptions.
Zel::Image loadPicture(std::string const& hostPath);

/// Calls `use` with each picture that can be loaded and says what is wrong with the others. Returns the worst
/// exit code.
ExitCode forEachPicture(std::vector<std::string> const& hostPaths, Console const& console,
                        std::function<void(std::string const& hostPath, Zel::Image const& image)> const& use);

/// Throws Failure unless the library saves pictures under such a name.
void requireWriter(std::string const& hostPath);

/// Saves a picture as ".bmp" or ".tga". Until it is complete nothing stands under its name but what stood
/// there before. The name is one that has a writer. Throws Failure or the library's exceptions.
void savePicture(Zel::Image const& image, std::string const& hostPath);

} // namespace zel
