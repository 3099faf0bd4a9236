// zel image sheet

#include "picture/commands.h"
#include "picture/picture.h"
#include "picture/resample.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <memory>

namespace zel {
namespace {

constexpr int kCell = 160; ///< pictures are fitted into squares of this many pixels
constexpr int kGap = 16;

struct SheetOptions {
    std::string out;
    std::vector<std::string> files;
};

/// Thumbnails in rows on a grey ground.
class Sheet {
public:
    explicit Sheet(int pictures)
        : m_columns(static_cast<int>(std::ceil(std::sqrt(static_cast<float>(pictures))))),
          m_image(pitch(m_columns), pitch((pictures + m_columns - 1) / m_columns)) {
        std::fill_n(m_image.getData(), m_image.getWidth() * m_image.getHeight(), Zel::Color(48, 48, 52, 255));
    }

    /// Puts a picture into the next cell and returns the place, as text.
    std::string add(Zel::Image const& picture) {
        float const factor =
            static_cast<float>(kCell) / static_cast<float>(std::max(picture.getWidth(), picture.getHeight()));
        int const width = fitted(picture.getWidth(), factor);
        int const height = fitted(picture.getHeight(), factor);
        Zel::Image const thumbnail = resampled(picture, width, height);
        int const column = m_next % m_columns;
        int const row = m_next / m_columns;
        ++m_next;
        m_image.copy(pitch(column) + (kCell - width) / 2, pitch(row) + (kCell - height) / 2, &thumbnail, 0, 0,
                     width, height);
        return "row " + std::to_string(row + 1) + ", column " + std::to_string(column + 1);
    }

    Zel::Image const& image() const { return m_image; }

private:
    /// What so many cells take with the gaps before, between and behind them.
    static int pitch(int cells) { return kGap + cells * (kCell + kGap); }

    static int fitted(int side, float factor) {
        return std::clamp(static_cast<int>(std::lround(static_cast<float>(side) * factor)), 1, kCell);
    }

    int m_columns;
    int m_next = 0;
    Zel::Image m_image;
};

void makeSheet(SheetOptions const& options, Console& console) {
    requireWriter(options.out);
    Sheet sheet(static_cast<int>(options.files.size()));
    console.exitCode =
        forEachPicture(options.files, console, [&](std::string const& file, Zel::Image const& picture) {
            if (picture.getData() == nullptr)
                throw Failure(kFinding, printableName(file) + " has no pixels");
            console.out << sheet.add(picture) << ": " << printableName(file) << '\n';
        });
    savePicture(sheet.image(), options.out);
}

} // namespace

void addImageSheetCommand(CLI::App& image, Console& console) {
    auto const options = std::make_shared<SheetOptions>();
    CLI::App* const command = image.add_subcommand("sheet", "Saves small versions of many pictures in one.");
    command->add_option("OUT", options->out, "the file to write: .bmp or .tga")->required();
    command->add_option("FILE", options->files, "the pictures: .jpg, .tga, .pcx or .bmp")->required();
    command->callback([options, &console] { makeSheet(*options, console); });
}

} // namespace zel
