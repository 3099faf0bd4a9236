// Names of files: resolving them, and taking them apart without looking at the disk.

#include "file/names.h"

#include <algorithm>
#include <cctype>
#include <utility>
#include <zel/file.h>

namespace Zel {
namespace {

/// What follows the last `separator`; the text itself when there is none.
std::string afterLast(std::string const& text, char separator) {
    std::size_t const position = text.rfind(separator);
    if (position == std::string::npos)
        return text;
    // Meant: at most length - 2 characters are kept, so "/abc" gives "ab".
    return text.substr(position + 1, std::max<std::size_t>(text.size(), 2) - 2);
}

} // namespace

std::string toLowerCase(std::string text) {
    // Small letters, and what is no letter of ASCII, stay as they are in every locale: no branch for each of
    // them, so that several are looked at at once.
    unsigned char others = 0;
    for (char const character : text) {
        auto const byte = static_cast<unsigned char>(character);
        others |=
            static_cast<unsigned char>((byte & 0x80U) | static_cast<unsigned>(byte >= 'A' && byte <= 'Z'));
    }
    if (others != 0)
        std::transform(text.begin(), text.end(), text.begin(),
                       [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
    return text;
}

std::string withBackslashes(std::string text) {
    std::replace(text.begin(), text.end(), '/', '\\');
    return text;
}

std::string withFinalSeparator(std::string path) {
    if (!path.empty() && path.back() != '\\')
        path += '\\';
    return path;
}

std::string resolveName(std::string const& name) {
    std::string const& directory = File::sm_datadir.str();
    std::string text;
    text.reserve(directory.size() + 1 + name.size());
    text = directory;
    Path path(std::move(text));
    path.append(name);
    return toLowerCase(std::move(path).str());
}

std::string pathToOpen(std::string const& name) {
    std::string path = resolveName(name);
    if (hasZeroByte(name))
        throw FileException_OpenFailed(name.c_str());
    return path;
}

std::string File::stripPath(std::string const& name) { return afterLast(afterLast(name, '/'), '\\'); }

std::string File::stripExtension(std::string const& name) { return name.substr(0, name.rfind('.')); }

std::string File::getExtension(std::string const& name) {
    constexpr std::size_t kComponentLimit = 255; // the limit of each part that a path is split into
    std::string const text = name.substr(0, name.find('\0')); // a name ends at its first zero byte
    std::size_t const driveEnd = text.size() > 1 && text[1] == ':' ? 2 : 0;
    std::size_t const stemStart = std::max(driveEnd, text.find_last_of("/\\") + 1); // 0 without a separator
    std::size_t const dot = text.rfind('.');
    if (dot == std::string::npos || dot < stemStart)
        return {};
    if (stemStart - driveEnd > kComponentLimit || dot - stemStart > kComponentLimit ||
        text.size() - dot > kComponentLimit)
        return {};
    return text.substr(dot + 1);
}

std::string File::getFileDir(std::string const& name) {
    return name.substr(0, name.find_last_of("/\\") + 1); // 0 characters when there is no separator
}

} // namespace Zel
