// Loads every picture of a directory, from a mounted archive where it has them, and saves small versions of
// all of them in one.
//
//   contact_sheet ARCHIVE DIRECTORY SHEET
//
// DIRECTORY is the one that the archive was packed from; pictures are sought in its folder Pictures. SHEET is
// the file to write, relative to the working directory; it ends in .tga or .bmp.

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>
#include <zel/zel.h>

namespace fs = std::filesystem;

namespace {

constexpr int kColumns = 3;
constexpr int kCellWidth = 160;
constexpr int kCellHeight = 120;
constexpr int kGap = 16;

/// A picture by its name below the data directory; an empty one when it cannot be loaded.
Zel::Image loadPicture(std::string const& name) {
    // JPEG pictures come from the disk alone, by their full path: the system's own codec opens the file. On
    // Windows it needs what com_windows.cpp does.
    bool const isJpeg = fs::path(name).extension() == ".jpg";
    try {
        return {isJpeg ? Zel::File::getDataDir() + name : name};
    } catch (Zel::JPEGLoaderException_LoadFailed const&) { // which has no message
        std::printf("  %-24s left out: not a JPEG picture that can be decoded\n", name.c_str());
    } catch (Zel::Exception const& exception) {
        std::printf("  %-24s left out: %s\n", name.c_str(), exception.getError());
    }
    return {};
}

/// The picture, made to fit into a cell.
Zel::Image thumbnailOf(Zel::Image const& picture) {
    float const factor = std::min(kCellWidth / static_cast<float>(picture.getWidth()),
                                  kCellHeight / static_cast<float>(picture.getHeight()));
    Zel::Image thumbnail(std::max(1, static_cast<int>(factor * static_cast<float>(picture.getWidth()))),
                         std::max(1, static_cast<int>(factor * static_cast<float>(picture.getHeight()))));
    // Two samples for each pixel of the larger of the two images, both ways: no pixel is left without one.
    thumbnail.copyWithScale(&picture, 2.0F * std::max(1.0F, factor));
    return thumbnail;
}

std::vector<std::string> pictureNames(fs::path const& directory) {
    std::vector<std::string> names;
    for (auto const& entry : fs::directory_iterator(directory / "Pictures"))
        names.push_back("Pictures/" + entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

Zel::Image makeSheet(std::vector<std::string> const& names) {
    int const count = static_cast<int>(names.size());
    int const rows = (count + kColumns - 1) / kColumns;
    Zel::Image sheet(kGap + kColumns * (kCellWidth + kGap), kGap + rows * (kCellHeight + kGap));
    for (int i = 0; i < count; ++i) {
        std::string const& name = names[static_cast<std::size_t>(i)];
        Zel::Image const picture = loadPicture(name);
        if (picture.getData() == nullptr)
            continue;
        std::printf("  %-24s %3d x %3d, from the %s\n", name.c_str(), picture.getWidth(), picture.getHeight(),
                    Zel::File::exists(name) && fs::path(name).extension() != ".jpg" ? "archive" : "disk");
        Zel::Image const thumbnail = thumbnailOf(picture);
        int const x = kGap + i % kColumns * (kCellWidth + kGap);
        int const y = kGap + i / kColumns * (kCellHeight + kGap);
        sheet.copy(x + (kCellWidth - thumbnail.getWidth()) / 2, y + (kCellHeight - thumbnail.getHeight()) / 2,
                   &thumbnail, 0, 0, thumbnail.getWidth(), thumbnail.getHeight());
    }
    return sheet;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fputs("usage: contact_sheet ARCHIVE DIRECTORY SHEET\n", stderr);
        return 2;
    }
    try {
        Zel::Zel_Init const init;
        std::string const workingDirectory = Zel::File::getCurrentDir();
        Zel::Path archive(workingDirectory);
        archive.append(argv[1]);
        Zel::Path sheet(workingDirectory);
        sheet.append(argv[3]);
        Zel::File::setDataDir(workingDirectory);
        Zel::File::setDataDir(argv[2]);
        Zel::g_Archive->setFileName(archive.str());

        makeSheet(pictureNames(argv[2])).save(sheet.str());
        std::printf("open %s to see them all\n", argv[3]);
        return 0;
    } catch (std::exception const& exception) {
        std::fprintf(stderr, "contact_sheet: %s\n", exception.what());
    } catch (Zel::Exception const& exception) {
        std::fprintf(stderr, "contact_sheet: %s\n", exception.getError());
    }
    return 3;
}
