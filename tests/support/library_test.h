// The ground each test stands on: a scratch directory of its own as data directory, the library's settings as
// they are at load, and no archive registered. What a test must leave behind is checked when it ends.
#pragma once

#include "support/host.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <utility>
#include <vector>
#include <zel/zel.h>

namespace fs = std::filesystem; // in every test

namespace test {

/// Names and contents of an archive's entries.
using Entries = std::vector<std::pair<std::string, std::string>>;

/// The bytes of a file, without the library.
std::string fileContent(fs::path const& file);

class LibraryTest : public testing::Test {
protected:
    LibraryTest();
    ~LibraryTest() override;

    /// A path below the scratch directory, which is named in lower case.
    fs::path path(std::string const& name) const { return m_scratch / name; }

    /// Writes a file, and the directories it needs.
    void writeFile(std::string const& name, std::string const& content) const;
    std::string readFile(std::string const& name) const { return fileContent(path(name)); }

    /// Writes an archive file below the scratch directory and returns the full path for the library.
    std::string packArchive(std::string const& name, Entries const& entries) const;

    /// The key of an entry in an archive loaded with the scratch directory as data directory.
    std::string key(std::string const& name) const;

private:
    fs::path m_scratch;
    fs::path m_workingDirectory;
    int m_descriptors;
};

/// The names of everything below a directory, with slashes, in order.
std::vector<std::string> treeOf(fs::path const& directory);

/// What the library logs while this object lives.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(LogCapture const&) = delete;
    LogCapture& operator=(LogCapture const&) = delete;

    std::vector<std::string> const& messages() const;
    std::string text() const;
};

/// The message of the exception that `act` throws, of the type wanted; a note of what happened instead.
template <class Wanted, class Act>
std::string errorOf(Act act) {
    try {
        act();
    } catch (Wanted const& exception) {
        return exception.getError();
    } catch (Zel::Exception const& exception) {
        return std::string("another exception: ") + exception.getError();
    }
    return "no exception";
}

/// The whole of what a File reads.
std::string readThroughLibrary(std::string const& name);

} // namespace test
