#include "support/samples.h"

#include "archive/archive_writer.h"
#include "support/pictures.h"

#include <sstream>
#include <string_view>

namespace test {
namespace {

std::uint32_t checksum(std::string_view text) {
    return static_cast<std::uint32_t>(Zel::crc32(text.data(), text.size()));
}

std::uint32_t readPicture(std::string const& fileName) {
    Zel::Image const image(fileName);
    image.samplePoint(1, 1);
    if (image.getData() == nullptr)
        return 0;
    Colors const pixels = pixelsOf(image);
    return checksum({reinterpret_cast<char const*>(pixels.data()), pixels.size() * sizeof pixels[0]});
}

std::uint32_t readHostPicture(std::string const& fileName) { return readPicture(libraryPath(fileName)); }

std::uint32_t readScript(std::string const& fileName) {
    Zel::Script script(fileName);
    std::uint32_t variables = 0;
    for (int i = 0; i < script.getBlockCount(); ++i) {
        script.lock(i);
        variables = 10 * variables + static_cast<std::uint32_t>(script.getVariables().size());
        script.unlock();
    }
    return variables;
}

std::uint32_t readArchive(std::string const& fileName) {
    Zel::Archive const archive(libraryPath(fileName));
    std::string all;
    for (std::string const name : {"dir\\one.txt", "two.bin"})
        if (Zel::File::exists(name))
            all += readThroughLibrary(name);
    return checksum(all);
}

std::uint32_t readText(std::string const& fileName) {
    Zel::TextFile file(fileName, Zel::File::READ_TEXT);
    std::string word, line;
    int number = 0;
    float real = 0;
    file >> word >> number >> real;
    file.readLine(line);
    return checksum(word + line) + static_cast<std::uint32_t>(number);
}

std::string archive() {
    zel::ArchiveWriter writer;
    writer.add("dir\\one.txt", "the first entry");
    writer.add("two.bin", std::string(200, '\x5A'));
    std::ostringstream bytes;
    writer.write(bytes);
    return bytes.str();
}

/// A script in pieces between bars: of each two, the first must go on, and the other may end after any of its
/// characters.
std::string const kScript =
    "#define SIZE |12\n|/|/ settings\n|[Main|]\ncount |= SIZE|;\nratio |= -1.5|;\non |= TRUE|;\nname |"
    "= \"a text\\n\"|;\nplace |= (1.0, 2, 3)|;\nrange |= [1.0, 2.0]|;\n|"
    "{\n  [Child] /* of Main */\n  deep = 1;\n|}\n|#undef |SIZE\n";

std::string script() {
    std::string text = kScript;
    std::erase(text, '|');
    return text;
}

bool isScriptTooShort(std::size_t length) {
    bool mayEnd = length == 0;
    for (std::size_t i = 0; length > 0; ++i) {
        if (kScript[i] == '|')
            mayEnd = !mayEnd;
        else
            --length;
    }
    return !mayEnd;
}

bool isAlwaysTooShort(std::size_t /*length*/) { return true; }
bool isNeverTooShort(std::size_t /*length*/) { return false; }

/// Of a JPEG picture, the first scan is needed: it ends where the next marker begins.
std::function<bool(std::size_t)> needsFirstScan(std::string const& jpeg) {
    std::size_t end = jpeg.find("\xFF\xDA") + 2;
    do
        end = jpeg.find('\xFF', end) + 1;
    while (jpeg[end] == '\0');
    return [end](std::size_t length) {
        return length < end - 1;
    };
}

} // namespace

std::vector<Sample> const& samples() {
    Tga const raw{.width = 4, .height = 4, .depth = 32, .descriptor = 0, .id = "id"};
    Tga const indexed{.type = 9, .width = 18, .depth = 8, .colormapType = 1, .entries = 4, .entryDepth = 24};
    Tga const grey{.type = 11, .width = 4, .height = 3, .depth = 8, .descriptor = 0};
    Pcx const pcx{.xMin = 1, .yMin = 1, .xMax = 6, .yMax = 4, .bytesPerLine = 6};
    std::string const palette = "blugrnredgry";
    std::string const colour = testData("colour.jpg"), progressive = testData("progressive.jpg");
    static std::vector<Sample> const s_samples{
        {"Archive", "sample.bva", archive(), readArchive, 70, isAlwaysTooShort},
        {"Script", "sample.script", script(), readScript, 1000, isScriptTooShort},
        {"Text", "sample.txt", "\"a word\" 123 4.5e6 and\nthe next line", readText, 1000, isNeverTooShort},
        {"Bmp", "sample.bmp", Bmp{.width = 5, .height = 4} + std::string(60, '5'), readPicture, 54,
         isAlwaysTooShort},
        {"TgaRaw", "sample.tga", raw + std::string(64, '5'), readPicture, 20, isAlwaysTooShort},
        {"TgaPalette", "sample.tga", indexed + (palette + bytes({0x88, 1, 8, 0, 1, 2, 3, 0, 1, 2, 3, 0})),
         readPicture, 18, isAlwaysTooShort},
        {"TgaGrey", "sample.tga", grey + bytes({0x85, 200, 5, 1, 2, 3, 4, 5, 6}), readPicture, 30,
         isAlwaysTooShort},
        {"Pcx", "sample.pcx", pcx + bytes({0xC6, 9, 1, 2, 3, 0xC3, 5, 0xCC, 77}), readPicture, 140,
         isAlwaysTooShort},
        {"Jpeg", "sample.jpg", colour, readHostPicture, 0, needsFirstScan(colour)},
        {"JpegProgressive", "sample.jpg", progressive, readHostPicture, 0, needsFirstScan(progressive)},
    };
    return s_samples;
}

} // namespace test
