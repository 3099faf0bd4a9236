#include "support/samples.h"

#include "archive_writer.h"
#include "support/pictures.h"

#include <sstream>
#include <string_view>

namespace test {
namespace {

std::uint32_t checksum(void const* data, std::size_t size) {
    return static_cast<std::uint32_t>(Zel::crc32(data, size));
}

std::uint32_t checksum(std::string const& text) { return checksum(text.data(), text.size()); }

std::uint32_t readPicture(std::string const& fileName) {
    Zel::Image const image(fileName);
    image.samplePoint(1, 1);
    if (image.getWidth() <= 0 || image.getHeight() <= 0)
        return 0;
    auto const pixels =
        static_cast<std::size_t>(image.getWidth()) * static_cast<std::size_t>(image.getHeight());
    return checksum(image.getData(), pixels * sizeof(Zel::Color));
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
    std::string word;
    std::string line;
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

/// A script in pieces: of each, what must go on, and what may end after any of its characters.
std::pair<std::string_view, std::string_view> const kScript[] = {
    {"#define SIZE ", "12\n"},
    {"/", "/ settings\n"},
    {"[Main", "]\ncount "},
    {"= SIZE", ";\nratio "},
    {"= -1.5", ";\non "},
    {"= TRUE", ";\nname "},
    {"= \"a text\\n\"", ";\nplace "},
    {"= (1.0, 2, 3)", ";\nrange "},
    {"= [1.0, 2.0]", ";\n"},
    {"{\n  [Child] /* of Main */\n  deep = 1;\n", "}\n"},
    {"#undef ", "SIZE\n"}};

std::string script() {
    std::string text;
    for (auto const& [goesOn, mayEnd] : kScript)
        text.append(goesOn).append(mayEnd);
    return text;
}

bool isScriptTooShort(std::size_t length) {
    for (auto const& [goesOn, mayEnd] : kScript) {
        if (length <= goesOn.size())
            return length > 0;
        length -= goesOn.size();
        if (length <= mayEnd.size())
            return false;
        length -= mayEnd.size();
    }
    return false;
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

std::string palette() {
    std::string entries;
    for (int i = 0; i < 16; ++i)
        entries += bytes({i, 2 * i, 3 * i});
    return entries;
}

} // namespace

std::vector<Sample> const& samples() {
    static std::vector<Sample> const s_samples{
        {"Archive", "sample.bva", archive(), readArchive, 70, isAlwaysTooShort},
        {"Script", "sample.script", script(), readScript, 1000, isScriptTooShort},
        {"Text", "sample.txt", "\"a word\" 123 4.5e6 and\nthe next line", readText, 1000, isNeverTooShort},
        {"Bmp", "sample.bmp", Bmp{5, 4} + std::string(60, '\x35'), readPicture, 54, isAlwaysTooShort},
        {"TgaRaw", "sample.tga", Tga{2, 4, 4, 32, 0, 0, 0, 0, 0, "id"} + std::string(64, '\x35'), readPicture,
         20, isAlwaysTooShort},
        {"TgaPalette", "sample.tga",
         Tga{9, 9, 2, 8, 32, 1, 3, 16, 24} + (palette() + bytes({0x88, 4, 8, 3, 4, 5, 6, 7, 8, 9, 10, 11})),
         readPicture, 18, isAlwaysTooShort},
        {"TgaGrey", "sample.tga", Tga{11, 4, 3, 8, 0} + bytes({0x85, 200, 5, 1, 2, 3, 4, 5, 6}), readPicture,
         30, isAlwaysTooShort},
        {"Pcx", "sample.pcx", Pcx{1, 1, 6, 4, 6} + bytes({0xC6, 9, 1, 2, 3, 0xC3, 5, 0xCC, 77}), readPicture,
         140, isAlwaysTooShort},
        {"Jpeg", "sample.jpg", testData("colour.jpg"), readHostPicture, 0,
         needsFirstScan(testData("colour.jpg"))},
        {"JpegProgressive", "sample.jpg", testData("progressive.jpg"), readHostPicture, 0,
         needsFirstScan(testData("progressive.jpg"))},
    };
    return s_samples;
}

} // namespace test
