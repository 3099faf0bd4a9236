#include "support/library_test.h"

#include "archive/archive_writer.h"
#include "archive/names.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <memory>
#include <numeric>

namespace test {
namespace {

std::vector<std::string> s_messages;

void capture(char const* message) { s_messages.emplace_back(message); }

/// A directory named after the running test.
fs::path scratchOfThisTest() {
    auto const* const info = testing::UnitTest::GetInstance()->current_test_info();
    std::string name =
        zel::toLowerCase(std::string("scratch-") + info->test_suite_name() + "-" + info->name());
    std::replace(name.begin(), name.end(), '/', '-');
    return fs::current_path() / name;
}

void resetSettings() {
    Zel::File::sm_datadir = Zel::Path();
    Zel::File::sm_currentDir = Zel::Path();
    Zel::File::sm_archiveonly = 1;
    Zel::File::sm_uniquepathnames = 1;
    Zel::File::sm_extractedFiles.clear();
    Zel::enableVerbose(false);
    Zel::setVerboseCallback(nullptr);
}

} // namespace

std::string fileContent(fs::path const& file) {
    // The C library reads it: of C++ streams, too, every read is a host call that a test can have fail.
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const stream(std::fopen(file.string().c_str(), "rb"),
                                                                 &std::fclose);
    EXPECT_NE(stream, nullptr) << file;
    std::string content;
    std::array<char, 4096> piece;
    for (std::size_t count = 1; stream != nullptr && count > 0; content.append(piece.data(), count))
        count = std::fread(piece.data(), 1, piece.size(), stream.get());
    return content;
}

LibraryTest::LibraryTest()
    : m_scratch(scratchOfThisTest()),
      m_workingDirectory(fs::current_path()),
      m_descriptors(openDescriptors()) {
    fs::remove_all(m_scratch);
    fs::create_directories(m_scratch);
    resetSettings();
    Zel::File::setDataDir(libraryPath(m_scratch));
}

LibraryTest::~LibraryTest() {
    EXPECT_TRUE(Zel::Archive::sm_vecArchives.empty()) << "an archive is still registered";
    EXPECT_LE(openDescriptors(), m_descriptors) << "a stream is still open";
    resetSettings();
    fs::current_path(m_workingDirectory);
    fs::remove_all(m_scratch);
}

void LibraryTest::writeFile(std::string const& name, std::string const& content) const {
    fs::create_directories(path(name).parent_path());
    std::ofstream stream(path(name), std::ios::binary);
    stream << content;
    ASSERT_TRUE(stream.flush()) << name;
}

std::string LibraryTest::packArchive(std::string const& name, Entries const& entries) const {
    zel::ArchiveWriter writer;
    for (auto const& [entryName, content] : entries)
        writer.add(entryName, content);
    std::ofstream stream(path(name), std::ios::binary);
    writer.write(stream);
    EXPECT_TRUE(stream.flush()) << name;
    return libraryPath(path(name));
}

std::string LibraryTest::key(std::string const& name) const {
    return zel::toLowerCase(libraryPath(m_scratch)) + "\\" + name;
}

std::vector<std::string> treeOf(fs::path const& directory) {
    std::vector<std::string> names;
    for (auto const& entry : fs::recursive_directory_iterator(directory))
        names.push_back(entry.path().lexically_relative(directory).generic_string());
    std::sort(names.begin(), names.end());
    return names;
}

LogCapture::LogCapture() {
    s_messages.clear();
    Zel::setVerboseCallback(capture);
}

LogCapture::~LogCapture() { Zel::setVerboseCallback(nullptr); }

std::vector<std::string> const& LogCapture::messages() const { return s_messages; }

std::string LogCapture::text() const {
    return std::accumulate(s_messages.begin(), s_messages.end(), std::string());
}

std::string readThroughLibrary(std::string const& name) {
    Zel::File file(name, Zel::File::READ);
    std::string content(static_cast<std::size_t>(file.getSize()), '\0');
    file.read(content.data(), file.getSize());
    return content;
}

} // namespace test
